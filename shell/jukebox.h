#pragma once
// The process-wide state of the jukebox: one object, made at start and handed
// by reference to every subsystem. A test makes a fresh one on a temporary
// program directory.
#include "catalogue/grid_state.h"
#include "mp3/mp3_frame.h"
#include "platform/services.h"
#include "playback/companion_state.h"
#include "playback/play_engine_state.h"
#include "shell/settings.h"
#include "shell/shell_state.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>

namespace zor {

class SongGrid;

inline constexpr int kStyleCount = 81;

struct Jukebox {
    explicit Jukebox(Platform& p) : platform(p) {}
    Platform& platform;

    // Set up by start-up.
    QString ProgramDir;
    QString DatabaseFile;
    int32_t SongCount = 1;
    QString Language = QStringLiteral("1");
    int16_t StopRequested = 0;
    std::array<QString, kStyleCount> StyleTable;

    Settings settings;

    // Selection and playback steering shared by the grids, the playlists and
    // the play engine.
    int16_t PlayStopped = 1;
    int32_t PlaylistEnd = 1;
    int16_t PlaylistActive = 0;
    // The playlist loop's steering: the row of MFgrid2 that plays, what the
    // end of a song does (0 next, 1 back, 2 repeat, 3 next, 4 random), and
    // what making a playlist does next (0 show only, 1 start, 2 show).
    int32_t PlaylistPosition = 1;
    int16_t SkipCommand = 0;
    int16_t PlayMode = 0;
    int16_t IntroOnly = 0;  // 1: each song plays Settings.IntroSeconds only

    // The analyser's record of the song of the moment. Its DurationSeconds is
    // the seconds the song is to last: the wait loop corrects it while the
    // song plays, and any code may write a small value into it to end a song.
    Mp3FrameInfo Mp3Info;

    QString MessageBuffer;

    // The subsystems' own state, each defined in its subsystem's folder and
    // kept here because operations of several windows share it.
    ShellState shell;
    GridState grid;
    ImportOptions scanner;
    PlayEngineState engine;
    CompanionState companion;

    // Seams to the parts that own other windows and the player; each is set
    // by its owner and left empty while that part is not there.
    // Hides the four picture windows, which stay on top of everything else.
    std::function<void()> HidePictureForms;
    // The start picture shown while the catalogue opens, and its removal.
    std::function<void()> ShowStartPicture;
    std::function<void()> HideStartPicture;
    // Stops the internal player.
    std::function<void()> StopPlayer;
    // Stops the player and loads the scratch song, which frees the song file.
    std::function<void()> FreeSongFromPlayer;
    // Unloads the main window and loads it anew (skin and language changes).
    std::function<void()> ReloadMainWindow;
    // The play engine's partners that come with later work; each stays empty
    // until its part is built, and the engine then skips that step.
    // TTSpeech1 is announcing a song: a double click is then ignored.
    std::function<bool()> AnnouncerSpeaking;
    // Announces the grid's current song; returns when the music may start.
    std::function<void(SongGrid& grid)> AnnounceSong;
    // Starts Winamp, Music Match or the other player (PlayerChoice 1 to 3).
    std::function<void(SongGrid& grid)> StartExternalPlayer;
    // Drives Music Central alongside the song (Settings.MusicCentral).
    std::function<void(SongGrid& grid)> DriveMusicCentral;
    // Loads the grid's current row into the mixer's selected channel and
    // brings the mixer up; BringUpMixer only brings it up.
    std::function<void(SongGrid& grid)> LoadRowIntoMixer;
    std::function<void()> BringUpMixer;
    // Hides the find window, which would otherwise cover the lyrics.
    std::function<void()> HideFindWindow;

    // Chooses a text when it is shown: Dutch for Language "0", else English.
    QString Lang(const QString& english, const QString& dutch) const {
        return Language == QStringLiteral("0") ? dutch : english;
    }
    // The same for texts kept in tables of UTF-8 literals.
    QString Lang(const char* english, const char* dutch) const {
        return QString::fromUtf8(Language == QStringLiteral("0") ? dutch : english);
    }
    // A file in the program directory.
    QString ProgramFile(const QString& name) const { return ProgramDir + u'/' + name; }
    // A Windows path from the settings or a default, on this machine.
    QString MapPath(const QString& windowsPath) const;
    // A song's path from a grid cell as the file functions take it: up to
    // its first zero, trimmed of blanks, and a drive-letter path (from a
    // catalogue or playlist made on Windows) mapped as the settings' are.
    QString SongFileOnDisk(QStringView cell) const;

    // Message boxes: the buffer is built line by line, the picture windows are
    // hidden, then the box is shown with the given title.
    void StartMessage(const QString& heading);
    void AddMessageLine(const QString& line);
    int ShowMessageBuffer(int flags, const QString& title = QStringLiteral("ZOR JUKEBOX"));
};

// The 80 styles of the ID3 genre list, index 0 "Blues" to 79 "Hard Rock",
// and index 80 "Unknown".
void FillStyleTable(std::array<QString, kStyleCount>& table);

}  // namespace zor
