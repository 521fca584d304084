#pragma once
// The process-wide state of the jukebox: one object, made at start and handed
// by reference to every subsystem. A test makes a fresh one on a temporary
// program directory.
#include "mp3/mp3_frame.h"
#include "platform/services.h"
#include "shell/settings.h"

#include <QDateTime>
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
    QString ProgramDrive = QStringLiteral("C");
    QString WindowsDir = QStringLiteral("C:\\WINDOWS");
    QString SystemDir = QStringLiteral("C:\\WINDOWS\\SYSTEM");
    int32_t ScreenWidthPx = 0;
    int32_t ScreenHeightPx = 0;
    int16_t PlayStopped = 1;
    QString DatabaseFile;
    int32_t SongCount = 1;
    QString Language = QStringLiteral("1");
    int16_t StopRequested = 0;
    int16_t SkinReload = 0;
    int16_t SkinSwitching = 0;
    int16_t LanguageChanged = 0;
    bool MainWindowReloading = false;  // between the unload and the load of a reload
    QString DefaultCopyDir;
    int32_t PictureTopPx = 152;
    int32_t PictureBottomPx = 205;
    int32_t Timer1Ticks = 75;
    int32_t EmptyNoticeCount = 0;
    std::array<QString, kStyleCount> StyleTable;
    bool DirectHelp = true;
    std::array<int, 3> CrossFadePresets{15, 15, 19};
    int32_t PlayTimeCounter = 0;

    Settings settings;
    int16_t SortAtStartCopy = 0;
    int16_t SortKeyCopy = 0;

    // Selection and playback steering shared by the grids and the play engine.
    int32_t PlaylistEnd = 1;
    int16_t PlaylistActive = 0;
    int16_t PlaylistBuilding = 0;  // a mark also appends its row to MFgrid2
    // The playlist loop's steering: the row of MFgrid2 that plays, what the
    // end of a song does (0 next, 1 back, 2 repeat, 3 next, 4 random), and
    // what making a playlist does next (0 show only, 1 start, 2 show).
    int32_t PlaylistPosition = 1;
    int16_t SkipCommand = 0;
    int16_t PlayMode = 0;
    // The rows of the last drag in the grid, kept between mouse events.
    int32_t GridMarkStartRow = 0;
    int32_t GridMarkEndRow = 0;
    // The current cell at the last click.
    int32_t GridRow = 0;
    int32_t GridCol = 0;
    QString SortedColumnName;

    // The import: one chosen file instead of a tree; each file shown as it
    // is scanned (the settings screen's box, not saved).
    int16_t AddSingleFile = 0;
    int16_t ShowScannedFiles = 0;

    // The analyser's record of the song of the moment. Its DurationSeconds is
    // the seconds the song is to last: the wait loop corrects it while the
    // song plays, and any code may write a small value into it to end a song.
    Mp3FrameInfo Mp3Info;

    // The play engine.
    int16_t IntroOnly = 0;  // 1: each song plays Settings.IntroSeconds only
    QDateTime SongStartTime;
    QDateTime SongLastTick;
    int32_t TickCount = 0;  // Timer1's ticks, for the settle wait
    QString SongInfoLine;   // the song line of Text1; the engine appends to it
    QString CurrentSongPath;  // the song in the internal player; empty for an external one
    int16_t PictureTurn = 0;  // the picture Timer3 shows next: 0, 1 or 2
    int16_t TitlePulse = 1;   // the step of the artistic title's font size
    int16_t DelayTicks = 0;   // Timer4's delayed start

    // The lyrics and picture windows.
    int16_t LyricsLineCount = 0;
    int16_t LyricsKeepOpen = 0;  // the windows stay up when a song ends
    int16_t ScrollHold = 0;      // the user has taken the lyrics over
    int16_t LyricsEditing = 0;   // a lyrics text is being made: no companion shows
    int16_t MixerOpen = 0;       // the mixer is open: no picture shows
    int16_t FreeSpeechEnabled = 0;  // spoken commands steer the jukebox
    int16_t PictureNumber = 0;   // the artist's next picture in the plain turn
    int16_t PictureMissing = 0;  // the last cover or back had no file
    int16_t TrueSizePicture = 0;

    // The font of the lyrics windows, set by the grid layout.
    struct Font {
        QString name;
        double size = 10;
        bool bold = false, italic = false, underline = false, strikeout = false;
        int colour = 0;  // 0x00BBGGRR
    };
    Font LyricsFont;

    QString MessageBuffer;

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
    // A file in the program directory.
    QString ProgramFile(const QString& name) const { return ProgramDir + u'/' + name; }
    // A Windows path from the settings or a default, on this machine.
    QString MapPath(const QString& windowsPath) const;

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
