#include "playback/ui/companions.h"

#include "catalogue/song_grid.h"
#include "catalogue/ui/song_grid_view.h"
#include "platform/file_system.h"
#include "playback/companion_files.h"
#include "playback/companion_places.h"
#include "playback/picture_fit.h"
#include "playback/ui/companion_forms.h"
#include "playback/ui/companion_support.h"
#include "playback/ui/lyrics_ops.h"
#include "shell/ui/form1.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextCursor>

namespace zor {
namespace {

// The seams of the Jukebox that these windows answer. A seam knows its
// owner, so that a Companions going away with an old main window leaves
// the seams of the new one alone.
struct Seam {
    Companions* owner;
    void (*operation)(Companions&);
    void operator()() const { operation(*owner); }
};

void ClearSeam(std::function<void()>& seam, const Companions* owner) {
    if (const Seam* s = seam.target<Seam>(); s && s->owner == owner) seam = nullptr;
}

void PlaceStartPicture(Companions& c, Form1& f) {
    Jukebox& j = f.j;
    const QString file = j.ProgramFile(QStringLiteral("ZORjuke1.jpg"));
    if (!j.platform.files.FileExists(file)) return;
    ArtistPictureForm& form = c.Form4();
    form.ApplySkin(j);
    form.PlaceAndShow(StartPicturePlace(j));
    FitPictureToWindow(form, file);
    j.platform.events.DoEvents();
    form.show();
}

// What keeps every picture away: an edit of the lyrics, the user's hold,
// the mixer, a minimized main window, or pictures turned off.
bool PicturesMayShow(Form1& f) {
    const Jukebox& j = f.j;
    if (j.companion.LyricsEditing != 0 || j.companion.ScrollHold != 0 || j.engine.MixerOpen != 0) return false;
    return !f.isMinimized() && j.settings.ShowPictureAtPlay != 0;
}

// The number text of the random draw, counting the artist's pictures only
// when the flag says they are not counted yet.
QString RandomNumberText(Companions& c, Jukebox& j, const QString& dir, const QString& artist) {
    if (!c.RandomCountKnown || c.RandomArtist != artist) {
        c.RandomCount = CountArtistPictures(j.platform.files, dir, artist);
        c.RandomArtist = artist;
        c.RandomCountKnown = true;
    }
    return DrawPictureNumberText(c.RandomCount, c.PictureRandom, float(j.platform.clock.Timer()));
}

void ShowAlbumPicture(Form1& f, SongGrid& grid, PictureForm& form, int16_t wanted, const QString& dir) {
    Jukebox& j = f.j;
    // Missing until shown, so that the turn of the pictures shows the
    // artist instead whenever this one stays away.
    j.companion.PictureMissing = 1;
    if (!PicturesMayShow(f) || wanted == 0 || !HasSongRow(grid)) return;
    const QString album = CellsOf(grid).Album;
    if (album.isEmpty()) return;
    const QString file = FindPicture(j.platform.files, dir, album);
    if (file.isEmpty()) return;
    const QImage picture = LoadPicture(file);
    if (picture.isNull()) return;
    form.ApplySkin(j);
    form.PlaceAndShow(PicturePlace(j));
    FitPictureToWindow(form, picture);
    j.platform.events.DoEvents();
    j.companion.PictureMissing = 0;
}

}  // namespace

Companions::Companions(Form1& f) : f_(f) {
    f.j.HidePictureForms = Seam{this, [](Companions& c) { c.HideAll(); }};
    f.j.ShowStartPicture = Seam{this, [](Companions& c) { PlaceStartPicture(c, c.f_); }};
    f.j.HideStartPicture = Seam{this, [](Companions& c) {
                                    if (c.form4_) c.form4_->hide();
                                }};
}

Companions::~Companions() {
    ClearSeam(f_.j.HidePictureForms, this);
    ClearSeam(f_.j.ShowStartPicture, this);
    ClearSeam(f_.j.HideStartPicture, this);
}

LyricsForm& Companions::Form3() {
    if (!form3_) form3_ = std::make_unique<LyricsForm>(f_);
    return *form3_;
}

ArtistPictureForm& Companions::Form4() {
    if (!form4_) form4_ = std::make_unique<ArtistPictureForm>(f_);
    return *form4_;
}

PictureForm& Companions::Form18() {
    if (!form18_) {
        form18_ = std::make_unique<PictureForm>(f_, "Form18", "ZOR JUKEBOX ALBUM COVER");
        QObject::connect(form18_.get(), &PictureForm::PictureClicked, form18_.get(), [this] { f_.Run(TakeOverCompanions); });
    }
    return *form18_;
}

PictureForm& Companions::Form19() {
    if (!form19_) {
        form19_ = std::make_unique<PictureForm>(f_, "Form19", "ZOR JUKEBOX ALBUM BACK");
        QObject::connect(form19_.get(), &PictureForm::PictureClicked, form19_.get(), [this] { f_.Run(TakeOverCompanions); });
    }
    return *form19_;
}

QWidget* Companions::Made(int formNumber) const {
    switch (formNumber) {
        case 3: return form3_.get();
        case 4: return form4_.get();
        case 18: return form18_.get();
        case 19: return form19_.get();
        default: return nullptr;
    }
}

void Companions::HideAll() {
    for (int n : {3, 4, 18, 19})
        if (QWidget* w = Made(n)) w->hide();
}

bool FitPictureToWindow(PictureForm& form, const QString& file) {
    const QImage picture = LoadPicture(file);
    if (picture.isNull()) return false;
    FitPictureToWindow(form, picture);
    return true;
}

void FitPictureToWindow(PictureForm& form, const QImage& picture) {
    form.PicClip1 = picture;
    form.TrueSize = dynamic_cast<ArtistPictureForm*>(&form) && form.f.j.companion.TrueSizePicture == 1;
    form.Redraw();
}

void ShowLyrics(Form1& f, SongGrid& grid) {
    Jukebox& j = f.j;
    j.companion.LyricsLineCount = 0;
    if (f.isMinimized() || j.settings.ShowLyricsAtPlay == 0 || !HasSongRow(grid)) return;
    const QString file = FindLyricsFile(j.platform.files, SettingsDir(j, j.settings.LyricsPath), CellsOf(grid),
                                        j.platform.environment.HomeDirectory());
    if (file.isEmpty() || j.companion.ScrollHold != 0) return;
    // A file that is no text (or can't be read) counts as no lyrics.
    const LyricsText lyrics = ReadLyricsFile(file);
    if (!lyrics.readable) return;
    LyricsForm& form = CompanionsOf(f).Form3();
    form.ApplySkin(j);
    form.SetEditingLook(false);
    if (!form.Check1->isChecked()) form.ApplyFont(j);
    form.PlaceAndShow(LyricsPlace(j, form.Check1->isChecked()));
    form.PlaceCheck1();
    form.Command1->hide();
    form.SetLyrics(lyrics.text);
    j.companion.LyricsLineCount = lyrics.lineFeeds;
}

void ShowArtistPicture(Form1& f, SongGrid& grid) {
    Jukebox& j = f.j;
    if (!PicturesMayShow(f) || !HasSongRow(grid)) return;
    Companions& c = CompanionsOf(f);
    const QString artist = CellsOf(grid).Artist;
    if (artist.isEmpty()) return;
    const QString dir = SettingsDir(j, j.settings.PicturesPath);
    // The plain turn runs over the numbers below 10; a turn that ended on
    // 9 starts the next one from the picture without a number.
    if (j.companion.PictureNumber < 0 || j.companion.PictureNumber >= 10) j.companion.PictureNumber = 0;
    QImage picture;
    for (;;) {
        QString number = j.companion.PictureNumber == 0 ? QString() : QString::number(j.companion.PictureNumber);
        if (j.settings.RandomPictures == 1) number = RandomNumberText(c, j, dir, artist);
        // A file that is no picture counts as a miss.
        if (const QString file = FindPicture(j.platform.files, dir, artist + number); !file.isEmpty())
            picture = LoadPicture(file);
        if (!picture.isNull()) break;
        if (++j.companion.PictureNumber >= 10) {
            j.companion.PictureNumber = 0;
            return;
        }
    }
    ArtistPictureForm& form = c.Form4();
    form.ApplySkin(j);
    if (j.settings.MaximizePicture == 0) form.PlaceAndShow(PicturePlace(j));
    else if (j.companion.TrueSizePicture != 1) form.PlaceAndShow(FullScreenPlace(j));
    FitPictureToWindow(form, picture);
    form.show();
    j.platform.events.DoEvents();
    ++j.companion.PictureNumber;
}

void ShowAlbumCover(Form1& f, SongGrid& grid) {
    Jukebox& j = f.j;
    ShowAlbumPicture(f, grid, CompanionsOf(f).Form18(), j.settings.ShowAlbumCover,
                     SettingsDir(j, j.settings.AlbumCoverPath));
}

void ShowAlbumBack(Form1& f, SongGrid& grid) {
    Jukebox& j = f.j;
    ShowAlbumPicture(f, grid, CompanionsOf(f).Form19(), j.settings.ShowAlbumBack,
                     SettingsDir(j, j.settings.AlbumBackPath));
}

void HideCompanion(Form1& f, int formNumber) {
    if (QWidget* w = CompanionsOf(f).Made(formNumber)) w->hide();
}

void ShowLyricsWindow(Form1& f) { CompanionsOf(f).Form3().show(); }

void ScrollLyricsDown(Form1& f) {
    QPlainTextEdit* face = CompanionsOf(f).Form3().Face();
    QTextCursor caret = face->textCursor();
    caret.movePosition(QTextCursor::Down);
    face->setTextCursor(caret);
    face->ensureCursorVisible();
}

bool CompanionVisible(Form1& f, int formNumber) {
    const QWidget* w = CompanionsOf(f).Made(formNumber);
    return w && w->isVisible();
}

int CompanionWidthTwips(Form1& f, int formNumber) {
    Companions& c = CompanionsOf(f);
    QWidget* w = c.Made(formNumber);
    if (!w) {
        switch (formNumber) {
            case 3: w = &c.Form3(); break;
            case 4: w = &c.Form4(); break;
            case 18: w = &c.Form18(); break;
            case 19: w = &c.Form19(); break;
            default: return 0;
        }
    }
    return PxToTwips(w->width());
}

void ClearRandomPictureFlag(Form1& f) { CompanionsOf(f).RandomCountKnown = false; }

}  // namespace zor
