#include "shell/settings_file.h"

#include "platform/binary_file.h"
#include "platform/runtime_error.h"
#include "shell/jukebox.h"

namespace zor {
namespace {

// The longest record there can be: three font names of 65535 bytes each.
constexpr qint64 kLongestRecord = 1107 + 3 * (2 + 0xFFFF);

QString SettingsFile(const Jukebox& j) { return j.ProgramFile(QStringLiteral("ZORjuke.ini")); }

}  // namespace

bool LoadSettings(Jukebox& j) {
    if (j.platform.files.Dir(SettingsFile(j)).isEmpty()) return false;
    j.settings.GridFontName.clear();
    j.settings.LyricsFontName.clear();
    j.settings.PrinterFontName.clear();
    try {
        BinaryFile f(j.platform.files, SettingsFile(j), BinaryFile::ReadOnly);
        DecodeSettings(f.Get(1, kLongestRecord), j.settings);
    } catch (const RuntimeError&) {
        // A read error ends the read; what was read stays.
    }
    return true;
}

void SaveSettings(Jukebox& j) {
    if (j.platform.files.Dir(SettingsFile(j)).isEmpty()) return;
    try {
        BinaryFile f(j.platform.files, SettingsFile(j));
        f.Put(1, EncodeSettings(j.settings));
    } catch (const RuntimeError&) {
        // Nothing is reported; the old record stays as far as it was not written.
    }
}

void SaveAllSettings(Jukebox& j, const std::array<int, 13>& catalogueWidths, const std::array<int, 13>& playlistWidths) {
    std::copy(catalogueWidths.begin(), catalogueWidths.end(), j.settings.GridColumnWidth.begin());
    std::copy(playlistWidths.begin(), playlistWidths.end(), j.settings.PlaylistColumnWidth.begin());
    j.settings.AuthorStamp = AuthorStampText();
    SaveSettings(j);
}

void ApplyLanguageFlag(Jukebox& j) { j.Language = QString::number(j.settings.Language); }

}  // namespace zor
