#include "playback/ui/lyrics_ops.h"

#include "catalogue/song_grid.h"
#include "playback/companion_files.h"
#include "playback/companion_places.h"
#include "playback/picture_fit.h"
#include "playback/ui/companion_forms.h"
#include "playback/ui/companion_support.h"
#include "playback/ui/companions.h"
#include "shell/ui/form1.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

namespace zor {
namespace {

// Form3 with a text to make or change: half wide, SAVE showing, the edit
// colours, and the keyboard given to the text.
void OpenLyricsEditor(Form1& f, bool keepText) {
    Jukebox& j = f.j;
    LyricsForm& form = CompanionsOf(f).Form3();
    form.ApplySkin(j);
    if (!keepText) form.SetLyrics(QString());
    form.PlaceAndShow(LyricsPlace(j, false));
    form.PlaceCheck1();
    form.Command1->show();
    form.SetEditingLook(true);
    j.companion.LyricsEditing = 1;
    form.activateWindow();
    form.Face()->setFocus();
}

// The text on show, or "" when there is none. The face of the skin is the
// box the user typed in; outside an edit both boxes hold the same text.
QString ShownLyrics(Form1& f) {
    QWidget* made = CompanionsOf(f).Made(3);
    return made ? static_cast<LyricsForm*>(made)->Face()->toPlainText() : QString();
}

// The end of a save: the button goes and the edit is over.
void EndLyricsEdit(Form1& f) {
    f.j.companion.LyricsEditing = 0;
    if (QWidget* made = CompanionsOf(f).Made(3)) {
        auto* form = static_cast<LyricsForm*>(made);
        form->Command1->hide();
        form->SetEditingLook(false);
    }
}

// Form4 with a picture the user asked for, where the artist picture goes.
void ShowInPictureWindow(Form1& f, const QImage& picture) {
    Jukebox& j = f.j;
    ArtistPictureForm& form = CompanionsOf(f).Form4();
    form.ApplySkin(j);
    form.PlaceAndShow(j.settings.MaximizePicture != 0 ? FullScreenPlace(j) : PicturePlace(j));
    FitPictureToWindow(form, picture);
    j.platform.events.DoEvents();
}

}  // namespace

void ShowLyricsOfSong(Form1& f) {
    f.j.companion.ScrollHold = 0;
    ShowLyrics(f, CurrentGrid(f));
}

void MakeNewLyrics(Form1& f) { OpenLyricsEditor(f, false); }

void EditLyrics(Form1& f) { OpenLyricsEditor(f, true); }

void CopyLyricsToClipboard(Form1& f) { QGuiApplication::clipboard()->setText(ShownLyrics(f)); }

void SaveLyrics(Form1& f) {
    Jukebox& j = f.j;
    const QString text = ShownLyrics(f);
    SongGrid& grid = CurrentGrid(f);
    const QString name = HasSongRow(grid) ? LyricsSaveName(CellsOf(grid).Path) : QString();
    // An empty window has nothing to save, and must not blank a file that
    // holds a song's text.
    if (!name.isEmpty() && !text.isEmpty()) WriteLyricsFile(SettingsDir(j, j.settings.LyricsPath) + u'/' + name, text);
    EndLyricsEdit(f);
}

void SaveLyricsAs(Form1& f) {
    Jukebox& j = f.j;
    const QString text = ShownLyrics(f);
    if (text.isEmpty()) return;
    CommonDialog& dialog = j.platform.dialog;
    dialog.Filter = QStringLiteral("All Files (*.*)|*.*");
    dialog.InitDir = SettingsDir(j, j.settings.LyricsPath);
    dialog.FileName.clear();
    dialog.ShowSave();
    if (dialog.FileName.isEmpty()) return;
    WriteLyricsFile(dialog.FileName, text);
    EndLyricsEdit(f);
}

void ShowSelectedArtistPicture(Form1& f) {
    f.j.companion.ScrollHold = 0;
    ShowArtistPicture(f, CurrentGrid(f));
}

void ShowPictureByPathName(Form1& f) {
    Jukebox& j = f.j;
    j.companion.ScrollHold = 0;
    SongGrid& grid = CurrentGrid(f);
    if (j.companion.LyricsEditing != 0 || j.engine.MixerOpen != 0 || !HasSongRow(grid)) return;
    QString name = SongFileStem(CellsOf(grid).Path);
    if (name.endsWith(u'.')) name.chop(1);
    if (name.isEmpty()) return;
    const QString file = FindPicture(j.platform.files, SettingsDir(j, j.settings.PicturesPath), name);
    if (file.isEmpty()) return;
    const QImage picture = LoadPicture(file);
    if (!picture.isNull()) ShowInPictureWindow(f, picture);
}

void LyricsTextSizeClick(Form1& f) {
    Jukebox& j = f.j;
    LyricsForm& form = CompanionsOf(f).Form3();
    form.resize(LyricsWidthForCheck(j, form.Check1->isChecked()), form.height());
    form.ApplyFont(j);
}

void TakeOverCompanions(Form1& f) {
    Jukebox& j = f.j;
    HideCompanion(f, 18);
    HideCompanion(f, 19);
    j.companion.ScrollHold = 1;
    if (j.companion.LyricsEditing == 0) {
        HideCompanion(f, 3);
        HideCompanion(f, 4);
    }
}

void PictureListClick(Form1& f, int entry) {
    Jukebox& j = f.j;
    ArtistPictureForm& form = CompanionsOf(f).Form4();
    form.List1->hide();
    switch (entry) {
        case ArtistPictureForm::Maximize:
            j.companion.TrueSizePicture = 0;
            j.settings.MaximizePicture = 1;
            form.setGeometry(FullScreenPlace(j));
            break;
        case ArtistPictureForm::Normal:
            j.companion.TrueSizePicture = 0;
            j.settings.MaximizePicture = 0;
            break;
        case ArtistPictureForm::TrueSizeEntry:
            j.companion.TrueSizePicture = 1;
            form.setGeometry(FullScreenPlace(j));
            break;
        case ArtistPictureForm::Hide:
            form.hide();
            return;
        default:
            return;
    }
    form.TrueSize = j.companion.TrueSizePicture == 1;
    form.Redraw();
}

}  // namespace zor
