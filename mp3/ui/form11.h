#pragma once
// Form11, "ZOR JUKEBOX - ID3 TAG INFORMATION & DATABASE EDITOR": one song's
// tag and catalogue record edited together, beside the main window. The form
// builds its controls and wires their events; what they do is in
// mp3/ui/tag_editor_ops.h, the rules in mp3/tag_editor.h.
#include "mp3/tag_editor.h"

#include <QWidget>

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTimer;

namespace zor {

class Form1;

class Form11 : public QWidget {
    Q_OBJECT
public:
    // A window of the main window: loaded on first use and kept, hidden
    // when closed, gone with the main window.
    explicit Form11(Form1& f);
    Form1& f;

    QLabel* Label1;
    QGroupBox *Frame1, *Frame3;
    QLineEdit *Text41, *Text42, *Text43, *Text44, *Text45;
    QListWidget* List5;
    QRadioButton* Option1;
    QLineEdit *Text1, *Text2, *Text3;
    QScrollBar *HScroll1, *HScroll2;
    QLabel *Label5, *Label6;
    QCheckBox* Check8;
    QPushButton *Command1, *Command2, *Command3, *Command4, *Command5, *Command6, *Command7, *Command8;
    QPushButton *Command9, *Command11, *Command12, *Command13, *Command14;
    std::array<QCheckBox*, 7> Checks;  // Check1 to Check7
    QTimer* Timer1;

    TagEditorState state;
    // The song the fields were last filled from: a save goes to it only.
    QString LoadedPath;
    bool MoreShown = false;

    // The fields as the window holds them, and shown back. Showing fires the
    // change events, as setting a text box's text always has.
    EditorFields Fields() const;
    void ShowFields(const EditorFields& fields);
    // Empties the five text fields.
    void ClearFields();
    // List5 with the styles 0 to 79, so that an index is a style number.
    void FillStyleList();
    bool Checked(int box) const;  // box 1 to 7
    // The captions and tips in the current language.
    void SetCaptions();
    // Command9: the lower band between its two heights.
    void ShowMoreFunctions(bool more);

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    void BuildFields();
    void BuildChecks();
    void Connect();
    // Runs an event's operation: a run-time error ends only that operation.
    template <typename F>
    void On(F&& operation);
    bool moreUsed_ = false;
};

}  // namespace zor
