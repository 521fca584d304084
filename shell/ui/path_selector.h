#pragma once
// Frame3, the path and file selector: a drive list, a directory list and a
// file list, as the import, the copies and Browse1 use them. On this system
// the "drives" are the places a music collection lives: the file system's
// root, the home directory and the mounted media.
#include <QFrame>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace zor {

class FileSystem;
class Form1;

// Browse1: the selector, showing every file, for finding a file name.
void Browse(Form1& f);
// Insert1 (and the selector's Command15): the chosen file's path, or the
// directory's when no file is chosen, into the grid cell chosen before.
void InsertChosenPath(Form1& f);

class PathSelector : public QFrame {
    Q_OBJECT
public:
    // Lists through `files`, as every other walk of the disk does.
    PathSelector(FileSystem& files, QWidget* parent);

    QComboBox* drvList;
    QListWidget* dirList;
    QListWidget* filList;
    QLineEdit* txtSearchSpec;  // the file list's pattern
    QLabel* Label10;           // the current directory
    QPushButton* Command11;    // closes the panel
    QPushButton* Command15;    // puts the chosen path into the grid (Insert1)
    QPushButton* Command16;    // starts the work the panel was opened for

    // The directory the lists show, and the file chosen in the file list
    // ("" when none).
    QString Path() const { return path_; }
    void SetPath(const QString& directory);
    QString FileName() const;
    // The pattern of the file list, "*.*" or "*.mp3"; "*.*" means every file.
    void SetPattern(const QString& pattern);
    // Fills the drive list anew; `home` is the user's home directory.
    void FillDrives(const QString& home);

private:
    void Fill();
    FileSystem& files_;
    QString path_;
};

}  // namespace zor
