#pragma once
// The play engine's arithmetic and texts, which need no window: the
// count-down's minutes and seconds, the song path's split, the picture
// interval, the lyrics' scroll target, the title's pulse and the wait for
// the clock's next second. playback/ui/play_ops.h drives the main window
// with them.
#include <QString>

#include <cstdint>

namespace zor {

struct Jukebox;

// "m:ss": minutes by taking 60 off until less than 60 remains, seconds below
// 10 with a leading "0". A negative count stays in the seconds as it is.
QString CountdownText(int remainingSeconds);

// A song's path split at its last separator: the directory keeps the
// separator, the file name is what follows; no separator, no directory.
struct SongFileParts {
    QString directory;
    QString fileName;
};
SongFileParts SplitSongPath(const QString& path);

// Timer3's interval: the setting's steps of 500 ms, 6000 when unset.
int PictureIntervalMs(int16_t pictureInterval);

// The line the lyrics should have scrolled to after `ticks` seconds of a
// song whose bar runs to `barMax`. The factor 1.3 brings the text to its end
// before the song ends.
double LyricsScrollTarget(int ticks, int barMax, int lineCount);

// The artistic title's step: down from 20 points, up below 12, else as it was.
int16_t NextTitlePulse(double fontSize, int16_t pulse);

// Milliseconds from the clock's Timer to just past its next whole second, so
// a loop woken then sees Now one second on: 1..1000 plus a small margin.
int MsToNextSecond(double timer);

// The texts of the song line and of the player's problem box.
QString RemainingText(const Jukebox& j, int durationSeconds);  // " , Remaining: 65 sec."
QString CountdownLine(const Jukebox& j, const QString& songLine, int remainingSeconds);
QString IntroLine(const Jukebox& j, const QString& songLine);
QString PlayerProblemTitle(const Jukebox& j);
QString PlayerProblemText(const Jukebox& j);

}  // namespace zor
