#include "shell/settings_file.h"

#include "platform/binary_file.h"
#include "platform/cp1252.h"
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

namespace {

void RefusePath(Jukebox& j, const QString& path, bool tooLong, int width) {
    j.StartMessage(j.Lang(QStringLiteral("ATTENTION!"), QStringLiteral("ATTENTIE!")));
    if (tooLong)
        j.AddMessageLine(j.Lang(QStringLiteral("This path is too long for the settings (at most %1 characters):"),
                                QStringLiteral("Dit pad is te lang voor de instellingen (hoogstens %1 tekens):"))
                             .arg(width));
    else
        j.AddMessageLine(j.Lang(QStringLiteral("This path has characters the settings can't hold:"),
                                QStringLiteral("Dit pad bevat tekens die de instellingen niet kunnen bewaren:")));
    j.AddMessageLine(path);
    j.AddMessageLine(j.Lang(QStringLiteral("Please choose another path; the old one is kept."),
                            QStringLiteral("Kies s.v.p. een ander pad; het oude pad blijft bewaard.")));
    j.ShowMessageBuffer(vbExclamation);
}

}  // namespace

bool StoreUserPath(Jukebox& j, FixedText<50>& field, const QString& path) {
    const QByteArray bytes = cp1252::Encode(path);
    const bool tooLong = bytes.size() > FixedText<50>::kWidth;
    if (tooLong || cp1252::Decode(bytes) != path) {
        RefusePath(j, path, tooLong, FixedText<50>::kWidth);
        return false;
    }
    field = path;
    return true;
}

void ApplyLanguageFlag(Jukebox& j) { j.Language = QString::number(j.settings.Language); }

}  // namespace zor
