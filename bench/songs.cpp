#include "bench/songs.h"

namespace zor::bench {

std::vector<testing::SongFields> MakeSongs(int count) {
    std::vector<testing::SongFields> songs;
    songs.reserve(size_t(count));
    static const char* const words[] = {"Love", "Night", "Dance", "Heart", "Rain", "Fire", "Blue", "Summer",
                                        "Dream", "Road",  "Moon",  "Angel", "Gold", "Star", "River", "Home"};
    for (int i = 0; i < count; ++i) {
        testing::SongFields s;
        const unsigned h = unsigned(i) * 2654435761u;
        s[0] = QStringLiteral("%1 %2 %3").arg(words[h % 16], words[(h >> 4) % 16]).arg(i % 97);
        s[1] = QStringLiteral("Artist %1").arg((h >> 8) % 4000);
        s[2] = QStringLiteral("Album %1").arg((h >> 12) % 9000);
        s[3] = QString::number(1950 + (h >> 16) % 70);
        s[4] = QStringLiteral("Pop");
        s[5] = QStringLiteral("/home/user/music/") + s[1] + u'/' + s[1] + QStringLiteral(" - ") + s[0] + QStringLiteral(".mp3");
        s[6] = QStringLiteral(" Y");
        songs.push_back(std::move(s));
    }
    return songs;
}

}  // namespace zor::bench
