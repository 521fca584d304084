#pragma once
// The play engine's own state between the steps of a song: when it started,
// the clock's last tick, the song line it writes to, which picture turns
// next. Held by the Jukebox because a second play started from inside the
// event pump runs on top of the first and must see the same values.
#include <QDateTime>
#include <QString>

#include <cstdint>

namespace zor {

struct PlayEngineState {
    QDateTime SongStartTime;
    QDateTime SongLastTick;
    int32_t TickCount = 0;    // Timer1's ticks, for the settle wait
    QString SongInfoLine;     // the song line of Text1; the engine appends to it
    QString CurrentSongPath;  // the song in the internal player; empty for an external one
    int16_t PictureTurn = 0;  // the picture Timer3 shows next: 0, 1 or 2
    int16_t TitlePulse = 1;   // the step of the artistic title's font size
    int16_t DelayTicks = 0;   // Timer4's delayed start
    // Set by the engine's partners, read by the engine: the mixer is open
    // (a double click loads the mixer and no picture shows), and spoken
    // commands steer the jukebox (a double click ends that).
    int16_t MixerOpen = 0;
    int16_t FreeSpeechEnabled = 0;
};

}  // namespace zor
