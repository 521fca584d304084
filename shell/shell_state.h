#pragma once
// What start-up finds out about the machine and what the main window's
// reloads need to remember: the screen, the Windows directories' stand-ins,
// the steps of a skin or language change, and start-up's own counters.
#include <QString>

#include <array>
#include <cstdint>

namespace zor {

struct ShellState {
    QString ProgramDrive = QStringLiteral("C");
    QString WindowsDir = QStringLiteral("C:\\WINDOWS");
    QString SystemDir = QStringLiteral("C:\\WINDOWS\\SYSTEM");
    int32_t ScreenWidthPx = 0;
    int32_t ScreenHeightPx = 0;
    int16_t SkinReload = 0;
    int16_t SkinSwitching = 0;
    int16_t LanguageChanged = 0;
    bool MainWindowReloading = false;  // between the unload and the load of a reload
    QString DefaultCopyDir;
    int32_t Timer1Ticks = 75;
    int32_t EmptyNoticeCount = 0;
    bool DirectHelp = true;
    std::array<int, 3> CrossFadePresets{15, 15, 19};
    int32_t PlayTimeCounter = 0;
};

}  // namespace zor
