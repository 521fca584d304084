#include "playback/companion_files.h"

#include "platform/cp1252.h"
#include "platform/file_system.h"
#include "platform/paths.h"
#include "platform/runtime_error.h"
#include "platform/vb.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <limits>

namespace zor {

QString SongFileStem(QStringView path) {
    qsizetype start = path.size();
    while (start > 0) {
        const QChar c = path[start - 1];
        if (c == u':' || c == u'\\' || c == u'/') break;
        --start;
    }
    QStringView name = path.sliced(start);
    if (name.size() > 3) name.chop(3);
    return name.toString();
}

QString SongNameKey(QStringView song) {
    QString key;
    for (QChar c : song) {
        if (key.size() == 8) break;
        if (c != u' ') key += c;
    }
    return key;
}

QString FindLyricsFile(FileSystem& fs, const QString& lyricsDir, const CompanionCells& cells, const QString& home) {
    if (cells.Lyrics.size() > 2) {
        const QString path = MapWindowsPath(cells.Lyrics, home);
        return fs.FileExists(path) ? path : QString();
    }
    // A song without a path would make the pattern "*" and take whatever
    // file comes first in the directory; it goes on to the title instead.
    const QString stem = SongFileStem(cells.Path);
    if (!stem.isEmpty()) {
        const QString hit = fs.Dir(lyricsDir + u'/' + stem + u'*');
        if (!hit.isEmpty()) return lyricsDir + u'/' + hit;
    }
    const QString sng = lyricsDir + u'/' + SongNameKey(cells.Song) + QStringLiteral(".sng");
    return fs.FileExists(sng) ? sng : QString();
}

QString FindPicture(FileSystem& fs, const QString& dir, const QString& name) {
    for (const char* ext : kPictureExtensions) {
        const QString path = dir + u'/' + name + QString::fromLatin1(ext);
        if (fs.FileExists(path)) return path;
    }
    return {};
}

int CountArtistPictures(FileSystem& fs, const QString& dir, const QString& artist) {
    int n = 2;
    for (; n <= 99; ++n)
        if (FindPicture(fs, dir, artist + QString::number(n)).isEmpty()) break;
    return n - 1;
}

QString DrawPictureNumberText(int count, vb::Random& random, float timer) {
    if (count <= 1) return {};
    random.Randomize(timer);
    const int drawn = int(vb::Int(random.Rnd() * float(count) + 1.0f));
    return drawn == 1 ? QString() : QString::number(drawn);
}

int16_t CountLineFeeds(QStringView text) {
    const qsizetype n = text.count(u'\n');
    return int16_t(std::min<qsizetype>(n, std::numeric_limits<int16_t>::max()));
}

LyricsText ReadLyricsFile(const QString& path) {
    LyricsText out;
    QFile file(path);
    // Only plain files: a directory or a FIFO under a lyrics name would
    // fail or wait for a writer for ever.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return out;
    const QByteArray bytes = file.read(kMaxLyricsBytes);
    // A text file never holds a zero byte; songs and pictures soon do.
    if (bytes.contains('\0')) return out;
    out.text = cp1252::Decode(bytes);
    out.lineFeeds = CountLineFeeds(out.text);
    out.text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    out.readable = true;
    return out;
}

QString LyricsSaveName(QStringView path) {
    const QStringView trimmed = vb::TrimmedView(path);
    if (trimmed.size() < 4) return {};
    const QString stem = SongFileStem(trimmed);
    // The stem keeps the dot of the song's extension; the new one joins it.
    return stem.endsWith(u'.') ? stem + QStringLiteral("txt") : stem + QStringLiteral(".txt");
}

void WriteLyricsFile(const QString& path, const QString& text) {
    if (!QFileInfo(QFileInfo(path).absolutePath()).isDir()) throw RuntimeError::PathNotFound();
    QString lines = text;
    lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    lines.replace(u'\n', QStringLiteral("\r\n"));
    lines += QStringLiteral("\r\n");
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) throw RuntimeError::PathFileAccessError();
    file.write(cp1252::Encode(lines));
    if (!file.commit()) throw RuntimeError::PathFileAccessError();
}

}  // namespace zor
