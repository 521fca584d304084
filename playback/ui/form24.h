#pragma once
// Form24, "ZOR JUKEBOX - LOGFILE": the play log shown 23 lines at a time in
// Text1, VScroll1 moving through it. The pages are read from the file each
// time, so a log that grows while the window is open shows its new lines.
#include <QByteArray>
#include <QWidget>

class QPlainTextEdit;
class QScrollBar;

namespace zor {

class Form1;

class Form24 : public QWidget {
    Q_OBJECT
public:
    // A window of the main window: it goes when the main window goes, and
    // is deleted when it is closed.
    explicit Form24(Form1& f);
    Form1& f;
    QPlainTextEdit* Text1;
    QScrollBar* VScroll1;

    // Load: the missing-log text, the full-log box, or the first page.
    void Load();
    // The 23 lines from VScroll1's value on.
    void ShowPage();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString LogPath() const;
    // The record buffer, kept from read to read: reads past the end of the
    // log show what it last held.
    QByteArray buffer_;
};

// Slog1, "Show LOG file": opens the viewer, or brings it forward when it
// is open already.
void ShowLogFile(Form1& f);

}  // namespace zor
