// The menus, buttons and grid clicks of the playlist. Each sets the
// steering values and calls the mode's operations; a click that comes while
// the list plays runs inside its loop and steers it through those values.
#include "catalogue/ui/catalogue_ops.h"
#include "playlists/ui/playlist_mode.h"
#include "shell/ui/form1.h"

#include <QLabel>
#include <QLineEdit>

namespace zor {
namespace {

void MakePlaylist(Form1& f, int16_t playMode) {
    Jukebox& j = f.j;
    f.Picture1->hide();
    f.ShowTotal(j.PlaylistEnd - 1);
    j.PlayMode = playMode;
    j.IntroOnly = 0;
    j.SkipCommand = 0;
    EnterPlaylistMode(f);
}

// BACK, REPEAT and NEXT: the song that plays is cut and the loop takes the
// command at its end; a list that stood still starts again.
void Transport(Form1& f, int16_t command) {
    Jukebox& j = f.j;
    j.Mp3Info.DurationSeconds = 2;
    j.SkipCommand = command;
    if (j.PlayStopped != 1) return;
    j.PlayStopped = 0;
    j.companion.ScrollHold = 0;
    RunPlaylist(f);
}

}  // namespace

void ShowAndStartPlaylist(Form1& f) { MakePlaylist(f, 1); }

void ShowPlaylistOnly(Form1& f) { MakePlaylist(f, 2); }

void ClearPlaylist(Form1& f) {
    Jukebox& j = f.j;
    f.Picture1->hide();
    j.IntroOnly = 0;
    f.MFgrid2.Clear();
    f.MFgrid2.SetRows(1);
    j.PlaylistEnd = 1;
    // The reload clears the marks of the catalogue.
    OpenDatabase(f);
}

void BackToDatabase(Form1& f) {
    f.Picture1->hide();
    f.j.IntroOnly = 0;
    LeavePlaylistMode(f);
}

void PlayIntrosOnly(Form1& f) {
    Jukebox& j = f.j;
    j.IntroOnly = 1;
    j.PlayMode = 1;
    j.SkipCommand = 0;
    EnterPlaylistMode(f);
}

void TogglePlaylistMode(Form1& f) {
    Jukebox& j = f.j;
    f.Picture1->hide();
    j.IntroOnly = 0;
    if (j.PlaylistActive == 1) {
        LeavePlaylistMode(f);
        return;
    }
    j.PlayMode = j.settings.DirectPlay;
    j.SkipCommand = 0;
    EnterPlaylistMode(f);
}

void PlaylistBack(Form1& f) { Transport(f, 1); }
void PlaylistRepeat(Form1& f) { Transport(f, 2); }
void PlaylistNext(Form1& f) { Transport(f, 3); }

void ClickPlaylistGrid(Form1& f) {
    Jukebox& j = f.j;
    // With the mixer open the click belongs to the mixer's window.
    if (j.engine.MixerOpen == 1) {
        if (j.BringUpMixer) j.BringUpMixer();
        return;
    }
    // The song is cut; its end moves on to the clicked row.
    j.Mp3Info.DurationSeconds = 2;
    j.PlaylistActive = 1;
    j.PlaylistPosition = f.MFgrid2.Row() - 1;
}

void DoubleClickPlaylistGrid(Form1& f) {
    Jukebox& j = f.j;
    j.IntroOnly = 0;
    j.PlayStopped = 0;
    // The list starts again from its first row, whatever row was clicked.
    j.PlaylistPosition = 1;
    j.companion.ScrollHold = 0;
    // With the mixer open the row goes to the mixer's channel instead.
    if (j.engine.MixerOpen == 1) {
        if (j.LoadRowIntoMixer) j.LoadRowIntoMixer(f.MFgrid2);
        return;
    }
    RunPlaylist(f);
}

}  // namespace zor
