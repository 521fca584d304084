// The selection of all songs by one field of the current row.
#include "playlists/field_selection.h"
#include "playlists/ui/playlist_mode.h"
#include "platform/vb.h"
#include "shell/ui/form1.h"

#include <QProgressBar>

namespace zor {
namespace {

struct Field {
    int col;
    const char* english;
    const char* dutch;
};

const Field kArtist{2, "Playlist with all the songs by ", "Playlist met alle songs van "};
const Field kAlbum{3, "Playlist with all the songs on album ", "Playlist met alle songs op album "};
const Field kTitle{1, "Playlist with all the songs titled ", "Playlist met alle songs getiteld "};
const Field kYear{4, "Playlist with all the songs of the year ", "Playlist met alle songs in het jaar "};

void SelectAllBy(Form1& f, const Field& field) {
    Jukebox& j = f.j;
    SongGrid& g = f.MFGrid1;
    // In the playlist each of them turns on the random order, whatever its
    // caption says, and cuts the song that plays.
    if (j.PlaylistActive == 1) {
        j.Mp3Info.DurationSeconds = 2;
        j.SkipCommand = 4;
        return;
    }
    f.playlist.random = {};
    const QString shown = g.TextMatrix(g.Row(), field.col).trimmed();
    f.ShowMessage(kYellow, j.Lang(QString::fromLatin1(field.english) + shown + QStringLiteral(" is being made; Please Wait..."),
                                  QString::fromLatin1(field.dutch) + shown +
                                      QStringLiteral(" wordt nu gemaakt; Wacht s.v.p. ...")));
    j.platform.events.DoEvents();
    const QString key = FieldKey(shown);
    // Hidden, the grid gathers the marks into one repaint.
    f.StartProgress(int(vb::Int(j.SongCount / 10.0)) + 1);
    g.SetVisible(false);
    // Sorted on this column, the group lies around the current row.
    if (j.grid.SortAtStartCopy != field.col)
        j.PlaylistEnd = MarkMatchingRows(g, field.col, key, j.SongCount, [&f](int value) { f.SetProgress(value); });
    else
        j.PlaylistEnd = MarkGroupAroundRow(g, field.col, key, j.SongCount);
    // The new playlist starts at once, whatever DirectPlay says.
    g.SetVisible(true);
    f.ProgressBar1->setValue(0);
    j.IntroOnly = 0;
    j.PlayMode = 1;
    j.SkipCommand = 0;
    EnterPlaylistMode(f);
}

}  // namespace

void SelectAllByArtist(Form1& f) { SelectAllBy(f, kArtist); }
void SelectAllByAlbum(Form1& f) { SelectAllBy(f, kAlbum); }
void SelectAllByTitle(Form1& f) { SelectAllBy(f, kTitle); }
void SelectAllByYear(Form1& f) { SelectAllBy(f, kYear); }

}  // namespace zor
