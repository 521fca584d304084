#include "playlists/ui/playlist_mode.h"

#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/song_grid_view.h"
#include "shell/ui/button_bar.h"
#include "shell/ui/form1.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <vector>

namespace zor {
namespace {

const char* const kPlaylistHeadings[kGridCols] = {"",     "PLAYLIST: SONG", "ARTIST",  "ALBUM",   "YEAR", "STYLE", "PATH",
                                                  "ID3",  "LYRICS",         "PICTURE", "EXECUTE", "RES",  "#"};

struct ModeText {
    const char* playlistEnglish;
    const char* playlistDutch;
    const char* catalogueEnglish;
    const char* catalogueDutch;
};

const ModeText kSelectArtistCaption = {
    "Play all songs by this artist at random", "Speel alle songs van deze artiest in willekeurige volgorde",
    "Select all songs by this &Artist", "Selecteer alle songs van deze &Artiest"};

const ModeText kRepeatTip = {
    "Skip further playing of this song from the playlist", "Sla het afspelen van de rest van deze song over",
    "First select a field in the grid then press 'Insert ' to insert the text below into the database",
    "Wijs eerst het veld aan in het database raster en klik dan op INVOEG om onderstaande tekst in dat veld in te "
    "voegen"};

struct ButtonTip {
    QPushButton* Form1::*button;
    ModeText text;
};

const ButtonTip kButtonTips[] = {
    {&Form1::Command3,
     {"Open an earlier saved Playlist", "Open een eerder bewaarde Playlist", "Open a Database", "Open een Database"}},
    {&Form1::Command4,
     {"Save this Playlist as", "Bewaar deze Playlist als", "Save the current Database As",
      "Bewaar de huidige Database Als"}},
    {&Form1::Command6,
     {"Play the songs by this artist in random order",
      "Speel de songs van deze artiest in willekeurige volgorde af",
      "Make a Playlist with all the songs by the selected Artist",
      "Maak een Playlist met alle songs van de geselecteerde Artiest"}},
    {&Form1::Command7,
     {"Press this button to go back to normal operation of the Database!",
      "Druk op deze knop om terug te gaan naar de Database!",
      "First select the Song(s) you wish to play (click left column in row); For other playlist functions: use "
      "'Playlist' in the Menu!",
      "Selecteer eerst de Song(s) die u wilt spelen (klik op de linker kolom van de betreffende regel)"}},
    {&Form1::Command8, kRepeatTip},
};

QString Text(const Form1& f, const ModeText& t, bool playlist) {
    return playlist ? f.j.Lang(QString::fromLatin1(t.playlistEnglish), QString::fromLatin1(t.playlistDutch))
                    : f.j.Lang(QString::fromLatin1(t.catalogueEnglish), QString::fromLatin1(t.catalogueDutch));
}

// A tip shows only while the help is switched on; the help's switch sets
// them all.
void SetTip(Form1& f, QPushButton& button, const ModeText& t, bool playlist) {
    button.setToolTip(f.j.shell.DirectHelp ? Text(f, t, playlist) : QString());
}

void SetModeTexts(Form1& f, bool playlist) {
    for (const ButtonTip& t : kButtonTips) SetTip(f, *(f.*t.button), t.text, playlist);
    if (auto* selectArtist = f.findChild<QAction*>(QStringLiteral("SelArt1")))
        selectArtist->setText(Text(f, kSelectArtistCaption, playlist));
}

// The transport needs all three buttons, also where the catalogue's roles
// of some are not there and their buttons stand disabled.
void TurnBarToPlaylist(Form1& f) {
    PlaylistState& s = f.playlist;
    if (!s.turned) {
        s.backEnabled = f.Command1->isEnabled();
        s.repeatEnabled = f.Command8->isEnabled();
        s.nextEnabled = f.Command9->isEnabled();
        s.turned = true;
    }
    ShowPlaylistBar(f);
    for (QPushButton* b : {f.Command1, f.Command8, f.Command9}) b->setEnabled(true);
}

void TurnBarToCatalogue(Form1& f) {
    PlaylistState& s = f.playlist;
    ShowCatalogueBar(f);
    if (s.turned) {
        f.Command1->setEnabled(s.backEnabled);
        f.Command8->setEnabled(s.repeatEnabled);
        f.Command9->setEnabled(s.nextEnabled);
        s.turned = false;
    }
}

// The forms place in twips, 15 to the pixel, from the screen's size. The
// grids keep the top and height the window's layout gave them, which follow
// its bar and skin.
QRect GridRect(const Form1& f, int leftTwips, int widthTwips) {
    const QRect now = f.MFGrid1View->geometry();
    return QRect(TwipsToPx(leftTwips), now.y(), std::max(TwipsToPx(widthTwips), 1), now.height());
}

void LayOutSideBySide(Form1& f) {
    const int w = f.j.shell.ScreenWidthPx;
    const int half = (w / 2) * 15;
    const QRect right = GridRect(f, half + 50, half - 170);
    const QRect left = GridRect(f, 120, half - 170);
    f.MFGrid1View->setGeometry(right);
    f.MFgrid2View->setGeometry(left);
}

void CopyFont(Form1& f) {
    const SongGrid& from = f.MFGrid1;
    SongGrid& to = f.MFgrid2;
    to.ForeColor = from.ForeColor;
    to.FontName = from.FontName;
    to.FontSize = from.FontSize;
    to.FontBold = from.FontBold;
    to.FontItalic = from.FontItalic;
    to.FontUnderline = from.FontUnderline;
    to.FontStrikethru = from.FontStrikethru;
    to.AppearanceChanged();
}

void WriteHeadings(Form1& f) {
    f.MFGrid1.SetTextMatrix(0, 1, QStringLiteral("DATABASE: SONG"));
    if (f.MFgrid2.Rows() < 1) f.MFgrid2.SetRows(1);
    for (int c = 1; c < kGridCols; ++c) f.MFgrid2.SetTextMatrix(0, c, QString::fromLatin1(kPlaylistHeadings[c]));
}

void ShowNoPlaylistBox(Jukebox& j) {
    j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
    j.AddMessageLine(j.Lang(QStringLiteral("No Playlist compiled!"),
                            QStringLiteral("U heeft geen Playlist samengesteld!             ")) +
                     u'\n');
    static const char* const kLines[][2] = {
        {"Please first mark the files you want to         ", "Markeer eerst de regels die u wilt spelen       "},
        {"play by clicking the left (green) column, or    ", "door in de linker (groene) kolom te klikken of  "},
        {"by selecting a number of lines with the mouse      ", "door met muis meerdere regels te selecteren en  "},
        {"and then pressing the RIGHT mouse button!       ", "dan op de RECHTER muisknop te drukken.          "},
        {"Finally, press the PLAYLIST button.             ", "Druk tenslotte op de PLAYLIST knop              "},
    };
    for (const auto& line : kLines) j.AddMessageLine(j.Lang(QString::fromLatin1(line[0]), QString::fromLatin1(line[1])));
    j.ShowMessageBuffer(vbCritical | vbOKOnly);
}

// The marked rows, moved to the top of the catalogue by its sort, become
// the playlist's rows.
void CopyMarkedRows(Form1& f) {
    const int marked = std::clamp(f.j.PlaylistEnd - 1, 0, f.MFGrid1.Rows() - 1);
    std::vector<GridRow> rows;
    rows.reserve(size_t(f.j.PlaylistEnd));
    rows.push_back(f.MFgrid2.RowCells(0));
    for (int i = 1; i <= marked; ++i) rows.push_back(f.MFGrid1.RowCells(i));
    // Marks counted beyond the catalogue's rows leave empty rows, as a
    // grid raised to PlaylistEnd rows has them.
    rows.resize(size_t(std::max(f.j.PlaylistEnd, 1)));
    f.MFgrid2.SetAllRows(std::move(rows));
}

}  // namespace

void EnterPlaylistMode(Form1& f) {
    Jukebox& j = f.j;
    SongGrid& catalogue = f.MFGrid1;
    SongGrid& list = f.MFgrid2;
    // A new playlist starts a new random history.
    f.playlist.random = {};
    // From here on the window is in the playlist mode, also when there turns
    // out to be nothing to play.
    ShowPlaylistGrids(f);
    // Nothing marked: the window stays split with the catalogue's bar, and
    // Command7 is the way out.
    if (j.PlaylistEnd <= 1) {
        if (j.HidePictureForms) j.HidePictureForms();
        ShowNoPlaylistBox(j);
        return;
    }
    // The bar turns; the catalogue's current column goes to the marks, the
    // key of the sorts below.
    SetTip(f, *f.Command8, kRepeatTip, true);
    catalogue.SetCol(12);
    TurnBarToPlaylist(f);
    // The marked rows to the top, the highest mark first.
    catalogue.Sort(2);
    CopyMarkedRows(f);
    // The marks are the only key, over every row, so the list stands in
    // the order of marking whatever cell of MFgrid2 was current.
    list.SetCol(12);
    list.SetColSel(12);
    list.Sort(1);
    // The catalogue back in its own order: its sort column and those right
    // of it up to the marks as keys.
    catalogue.SetColSel(std::clamp<int>(j.grid.SortAtStartCopy, 0, kGridCols - 1));
    catalogue.Sort(1);
    SetModeTexts(f, true);
    if (j.PlayMode == 0) {
        f.ShowMessage(kYellow, j.Lang(QStringLiteral("Songs selected, but Playlist not yet started."),
                                      QStringLiteral("Songs geselecteerd, maar Playlist nog niet gestart.")));
        return;
    }
    f.ShowMessage(kYellow, j.Lang(QStringLiteral("Playlist has been made."), QStringLiteral("Playlist is gemaakt.")));
    j.platform.events.DoEvents();
    j.PlaylistActive = 1;
    if (j.PlayMode != 2) {
        j.PlaylistPosition = 1;
        j.PlayStopped = 0;
        j.companion.ScrollHold = 0;
        RunPlaylist(f);
    }
    // After a start or a show the next playlist does as the setting says.
    j.PlayMode = j.settings.DirectPlay;
}

void ShowPlaylistGrids(Form1& f) {
    LayOutSideBySide(f);
    CopyFont(f);
    WriteHeadings(f);
    f.j.PlaylistActive = 1;
    f.playlist.PlaylistBuilding = 1;
    f.MFgrid2.SetVisible(true);
}

void TurnControlsToPlaylist(Form1& f) {
    SetTip(f, *f.Command8, kRepeatTip, true);
    TurnBarToPlaylist(f);
    SetModeTexts(f, true);
}

void LeavePlaylistMode(Form1& f) {
    Jukebox& j = f.j;
    if (auto* intro = f.findChild<QAction*>(QStringLiteral("Intro1"))) intro->setEnabled(true);
    j.PlaylistActive = 0;
    f.playlist.PlaylistBuilding = 0;
    // Ends a loop that runs below this click.
    j.PlayStopped = 1;
    f.MFGrid1View->setGeometry(GridRect(f, 120, j.shell.ScreenWidthPx * 15 - 240));
    f.MFgrid2.SetVisible(false);
    TurnBarToCatalogue(f);
    SetModeTexts(f, false);
    j.PlaylistEnd = 1;
    f.Text2->clear();
    f.MFgrid2.Clear();
    f.MFgrid2.SetRows(1);
    // The reload is what clears the marks.
    OpenDatabase(f);
}

}  // namespace zor
