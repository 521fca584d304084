// The loop that plays MFgrid2. It runs inside the click that started it;
// the engine's wait lets events through, so every other click runs nested
// in it and steers it only through PlayStopped, SkipCommand, DurationSeconds
// and PlaylistPosition. A click that starts the list again runs a second
// loop on top of this one; when that ends, this one finds PlayStopped set
// and ends too.
#include "playback/ui/play_ops.h"
#include "platform/vb.h"
#include "playlists/random_history.h"
#include "playlists/ui/playlist_mode.h"
#include "shell/ui/form1.h"

#include <QPointer>

namespace zor {
namespace {

// The song after the last is the first again, with a beep between.
void StepForward(Jukebox& j, bool letEventsThrough) {
    if (j.PlaylistPosition >= j.PlaylistEnd - 1) {
        j.platform.beeper.Beep();
        if (letEventsThrough) j.platform.events.DoEvents();
        j.PlaylistPosition = 1;
    } else {
        ++j.PlaylistPosition;
    }
}

// What the end of a song does, as SkipCommand says.
void Steer(Form1& f, RandomHistory& history) {
    Jukebox& j = f.j;
    switch (j.SkipCommand) {
        case 0:
            StepForward(j, true);
            j.SkipCommand = 0;
            break;
        case 1:
            if (j.PlaylistPosition < 2)
                j.platform.beeper.Beep();
            else
                --j.PlaylistPosition;
            j.SkipCommand = 0;
            break;
        case 2:
            j.SkipCommand = 0;
            break;
        case 3:
            StepForward(j, false);
            j.SkipCommand = 0;
            break;
        case 4: {
            // Random order stays on from song to song until a transport
            // button sets another command; one song has no other to go to.
            if (j.PlaylistEnd < 3) break;
            const int32_t end = j.PlaylistEnd;
            vb::Random& generator = f.playlist.generator;
            Clock& clock = j.platform.clock;
            j.PlaylistPosition = PickRandomRow(history, f.playlist.random, end, [&] {
                generator.Randomize(float(clock.Timer()));
                return int32_t(vb::Int(double(generator.Rnd()) * (end - 1) + 1));
            });
            break;
        }
        default:
            break;
    }
}

}  // namespace

void RunPlaylist(Form1& f) {
    Jukebox& j = f.j;
    SongGrid& list = f.MFgrid2;
    // The history is this run's own; the count of drawn rows lives on.
    RandomHistory history;
    // A skin change or the end of the program can take the window away
    // while a song plays.
    QPointer<Form1> alive(&f);
    // Songs in a row that could not be played. A whole list of them would
    // otherwise go round for ever at full speed, unattended.
    int32_t notPlayed = 0;
    // Only rows the list has: a PlaylistEnd left by marks or a failed read
    // is no playlist.
    while (j.PlaylistPosition < j.PlaylistEnd && j.PlaylistPosition < list.Rows() && j.PlayStopped == 0) {
        // Past the second row the list scrolls, keeping the song before the
        // playing one in view above it.
        if (j.PlaylistPosition > 2) {
            list.SetTopRow(j.PlaylistPosition - 1);
            j.companion.ScrollHold = 0;
        }
        f.ShowTotal(j.PlaylistPosition);
        list.SetRow(j.PlaylistPosition);
        // Returns when the song is over, cut short or skipped for a fault.
        const bool played = PlayGridRow(f, list);
        if (!alive) return;
        // Events go through once a row whatever became of the song: one
        // that could not be played returns at once, and Stop and Esc must
        // still reach the loop.
        j.platform.events.DoEvents();
        if (!alive) return;
        notPlayed = played ? 0 : notPlayed + 1;
        if (notPlayed >= j.PlaylistEnd - 1 && j.PlayStopped == 0) {
            j.PlayStopped = 1;
            f.ShowMessage(kRed, j.Lang(QStringLiteral("None of the songs of the Playlist could be played; "
                                                      "the Playlist has been stopped."),
                                       QStringLiteral("Geen enkele song van de Playlist kon worden gespeeld; "
                                                      "de Playlist is gestopt.")));
            return;
        }
        Steer(f, history);
    }
}

}  // namespace zor
