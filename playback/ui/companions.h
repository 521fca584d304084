#pragma once
// The lyrics and picture windows that stand over the main window while a
// song plays: Form3 (lyrics), Form4 (artist picture), Form18 (album cover)
// and Form19 (album back). Form1 owns one Companions, which makes each window
// on first use and only hides it after that.
//
// Each show operation reads the current row of the grid it is given
// (MFGrid1, or MFgrid2 in the playlist mode); the two grids differ in nothing
// else.
#include "platform/vb.h"

#include <QImage>
#include <QString>

#include <memory>

class QWidget;

namespace zor {

class Form1;
class SongGrid;
class LyricsForm;
class PictureForm;
class ArtistPictureForm;

class Companions {
public:
    explicit Companions(Form1& f);
    ~Companions();
    Companions(const Companions&) = delete;
    Companions& operator=(const Companions&) = delete;

    // The windows, made when first asked for.
    LyricsForm& Form3();
    ArtistPictureForm& Form4();
    PictureForm& Form18();
    PictureForm& Form19();
    // A window by its number (3, 4, 18, 19) if it has been made; nullptr for
    // one not made yet or a number that names none.
    QWidget* Made(int formNumber) const;
    // Hides the four windows, which stay on top of everything else.
    void HideAll();

    // The random draw counts an artist's numbered pictures once per song:
    // the count stands until the play engine clears the flag at the start of
    // the next song (or the artist changes).
    bool RandomCountKnown = false;
    int RandomCount = 0;
    QString RandomArtist;
    vb::Random PictureRandom;

private:
    Form1& f_;
    std::unique_ptr<LyricsForm> form3_;
    std::unique_ptr<ArtistPictureForm> form4_;
    std::unique_ptr<PictureForm> form18_;
    std::unique_ptr<PictureForm> form19_;
};

// Finds and shows the lyrics of the grid's current row in Form3.
void ShowLyrics(Form1& f, SongGrid& grid);
// Finds and shows the next, or a random, picture of the row's artist in Form4.
void ShowArtistPicture(Form1& f, SongGrid& grid);
// Find and show the album's front and back in Form18 and Form19; each sets
// PictureMissing to 1 when it shows nothing.
void ShowAlbumCover(Form1& f, SongGrid& grid);
void ShowAlbumBack(Form1& f, SongGrid& grid);

// Hides Form3, Form4, Form18 or Form19; any other number does nothing.
void HideCompanion(Form1& f, int formNumber);
// Form3.Show: the lyrics window comes up where it was, without taking focus.
void ShowLyricsWindow(Form1& f);
// What the key Down does to the lyrics text: the caret one line down, the
// text scrolling once the caret reaches the bottom.
void ScrollLyricsDown(Form1& f);
// False for a window not made yet.
bool CompanionVisible(Form1& f, int formNumber);
// The window's width in twips (15 to the pixel).
int CompanionWidthTwips(Form1& f, int formNumber);
// Lets the next artist picture count the artist's pictures afresh.
void ClearRandomPictureFlag(Form1& f);

// Loads a picture into the window's PicClip1 and draws it at the window's
// size, its proportions kept (Form4 unscaled while TrueSizePicture is 1).
// False, with the window left as it was, when the file is no picture.
bool FitPictureToWindow(PictureForm& form, const QString& file);
void FitPictureToWindow(PictureForm& form, const QImage& picture);

}  // namespace zor
