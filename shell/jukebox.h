#pragma once
// The process-wide state of the jukebox: one object, made at start and handed
// by reference to every subsystem. A test makes a fresh one on a temporary
// program directory.
#include "platform/services.h"
#include "shell/settings.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>

namespace zor {

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

    QString MessageBuffer;
    // Hides the picture windows, which stay on top of everything else; set by
    // whoever owns them.
    std::function<void()> HidePictureForms;

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
