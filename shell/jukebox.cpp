#include "shell/jukebox.h"

#include "platform/nul_text.h"
#include "platform/paths.h"

namespace zor {

QString Jukebox::MapPath(const QString& windowsPath) const {
    return MapWindowsPath(windowsPath, platform.environment.HomeDirectory());
}

QString Jukebox::SongFileOnDisk(QStringView cell) const {
    const QString path = TrimmedBeforeNul(cell);
    const bool drive = path.size() >= 3 && path[0].isLetter() && path[0].unicode() < 128 && path[1] == u':' &&
                       path[2] == u'\\';
    return drive ? MapPath(path) : path;
}

void Jukebox::StartMessage(const QString& heading) { MessageBuffer = heading + u'\n' + u'\n'; }

void Jukebox::AddMessageLine(const QString& line) { MessageBuffer += line + u'\n'; }

int Jukebox::ShowMessageBuffer(int flags, const QString& title) {
    if (HidePictureForms) HidePictureForms();
    return platform.messages.MsgBox(MessageBuffer, flags, title);
}

void FillStyleTable(std::array<QString, kStyleCount>& table) {
    static const char* const kStyles[kStyleCount] = {
        "Blues",        "Classic Rock", "Country",   "Dance",       "Disco",           "Funk",         "Grunge",
        "Hip-Hop",      "Jazz",         "Metal",     "New Age",     "Oldies",          "Other",        "Pop",
        "R&B",          "Rap",          "Reggae",    "Rock",        "Techno",          "Industrial",   "Alternative",
        "Ska",          "Death Metal",  "Pranks",    "Soundtrack",  "Euro-Techno",     "Ambient",      "Trip-Hop",
        "Vocal",        "Jazz+Funk",    "Fusion",    "Trance",      "Classical",       "Instrumental", "Acid",
        "House",        "Game",         "Sound Clip", "Gospel",     "Noise",           "AlternRock",   "Bass",
        "Soul",         "Punk",         "Space",     "Meditative",  "Instrumental Pop", "Instrumental Rock",
        "Ethnic",       "Gothic",       "Darkwave",  "Techno-Industrial", "Electronic", "Pop-Folk",    "Eurodance",
        "Dream",        "Southern Rock", "Comedy",   "Cult",        "Gangsta",         "Top 40",       "Christian Rap",
        "Pop/Funk",     "Jungle",       "Native American", "Cabaret", "New Wave",      "Psychadelic",  "Rave",
        "Showtunes",    "Trailer",      "Lo-Fi",     "Tribal",      "Acid Punk",       "Acid Jazz",    "Polka",
        "Retro",        "Musical",      "Rock & Roll", "Hard Rock", "Unknown"};
    for (int i = 0; i < kStyleCount; ++i) table[i] = QString::fromLatin1(kStyles[i]);
}

}  // namespace zor
