#pragma once
// The four companion windows. They are top-level windows that stay on top
// of the main window and come up without taking the focus from it. Their
// events call the operations of companions.cpp and lyrics_ops.cpp.
#include <QColor>
#include <QImage>
#include <QWidget>

class QCheckBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace zor {

class Form1;
struct Jukebox;

// A companion window: topmost, shown without activation, with its title.
class CompanionWindow : public QWidget {
    Q_OBJECT
public:
    CompanionWindow(Form1& f, const char* name, const char* title);
    Form1& f;
    // Places the window on the screen, in pixels, and shows it.
    void PlaceAndShow(const QRect& place);
    // The skin's background: black in the artistic skin, (200, 200, 200)
    // on a screen at least 1024 pixels wide, else the toolkit's own.
    void ApplySkin(const Jukebox& j);
    QColor Background() const;
};

// Form3, "ZOR JUKEBOX LYRICS". Text1 is the face of the normal skin, Text2 of
// the artistic skin; both carry the same lyrics and the other one is hidden.
class LyricsForm : public CompanionWindow {
    Q_OBJECT
public:
    explicit LyricsForm(Form1& f);
    QPlainTextEdit* Text1;
    QPlainTextEdit* Text2;
    QCheckBox* Check1;
    QPushButton* Command1;

    // The box the user sees in this skin.
    QPlainTextEdit* Face() const;
    // Both boxes get the text.
    void SetLyrics(const QString& text);
    // The skin's face, its colours and the captions of the language.
    void ApplySkin(const Jukebox& j);
    // Editing: the face turns (255, 200, 120) with dark text; otherwise the
    // lyrics stand in their font colour on black.
    void SetEditingLook(bool editing);
    // The lyrics font of the settings, or "MS Sans Serif" while Check1 is on.
    void ApplyFont(const Jukebox& j);
    // Check1 at the window's right edge: its left 700 twips short of it.
    void PlaceCheck1();

protected:
    void resizeEvent(QResizeEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QColor textColour_;
};

// Form18, "ZOR JUKEBOX ALBUM COVER", and Form19, "ZOR JUKEBOX ALBUM BACK";
// the base of Form4. Picture1 shows the picture held in PicClip1 at the
// window's size.
class PictureForm : public CompanionWindow {
    Q_OBJECT
public:
    PictureForm(Form1& f, const char* name, const char* title);
    QLabel* Picture1;
    QImage PicClip1;
    // Shows PicClip1 unscaled instead of fitted to the window.
    bool TrueSize = false;
    // Draws PicClip1 into Picture1 at the window's present size.
    void Redraw();

signals:
    void PictureClicked();

protected:
    void resizeEvent(QResizeEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// Form4, "ZOR JUKEBOX PICTURE": the artist's picture, and List1, which comes
// up when the picture is clicked.
class ArtistPictureForm : public PictureForm {
    Q_OBJECT
public:
    explicit ArtistPictureForm(Form1& f);
    QListWidget* List1;
    // The entries in the order they stand in List1.
    enum Entry { Maximize, Normal, TrueSizeEntry, Hide };
};

}  // namespace zor
