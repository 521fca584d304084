// The saved trim of Form9 on a song of 10 MB: SaveTrim cutting a second off
// its end (the trimmed copy written to ZOR2.mp3, synced, renamed over the
// song), against a plain copy of the same file in 30000-byte blocks, and
// against that copy synced and renamed over the song, which is what any
// replace that survives a crash costs.
#include "bench/bench.h"
#include "mp3/trim.h"
#include "platform/file_system.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace zor::bench {
namespace {

constexpr qint64 kSongBytes = 10'000'000;

QByteArray SongBytes() {
    QByteArray b(kSongBytes, '\0');
    for (qint64 i = 0; i < kSongBytes; ++i) b[i] = char(i * 31 + i / 4093);
    QByteArray tag("TAG");
    tag.append(125, ' ');
    b.replace(kSongBytes - 128, 128, tag);
    return b;
}

void Write(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size()) std::abort();
}

std::vector<Result> SavedTrim() {
    QTemporaryDir dir;
    const QString song = dir.filePath(QStringLiteral("song.mp3")), copy = dir.filePath(QStringLiteral("copy.mp3")),
                  scratch = dir.filePath(QStringLiteral("ZOR2.mp3"));
    const QByteArray bytes = SongBytes();
    Write(song, bytes);
    FileSystem fs;
    bool trimmed = true;
    // The copy in blocks, alone and as a safe replace must do it: synced,
    // then renamed over the song (which frees the old song's blocks).
    const auto copyInBlocks = [&](bool replace) {
        QFile in(song), out(copy);
        if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly)) std::abort();
        for (QByteArray block = in.read(30000); !block.isEmpty(); block = in.read(30000)) out.write(block);
        if (!replace) return;
        out.flush();
        if (::fsync(out.handle()) != 0 || std::rename(QFile::encodeName(copy), QFile::encodeName(song)) != 0) std::abort();
    };
    const auto fresh = [&] {
        Write(song, bytes);
        QFile::remove(copy);
    };
    const auto t = Medians(9, {
        {fresh, [&] { copyInBlocks(false); }},
        {fresh, [&] { trimmed = SaveTrim(fs, song, scratch, TrimCut(1000), TrimEnd::End) && trimmed; }},
        {fresh, [&] { copyInBlocks(true); }},
    });
    // A cut of 20000 bytes above the 10000 cuts 10000 fewer, and the copy
    // stops one byte short; the tag comes behind.
    fresh();
    if (!trimmed || !SaveTrim(fs, song, scratch, TrimCut(1000), TrimEnd::End) ||
        QFile(song).size() != kSongBytes - 10001 + 128)
        std::abort();
    return {
        {QStringLiteral("SaveTrim, 1 s off the end of a 10 MB song"), t[1],
         QStringLiteral("copy of the song in 30000-byte blocks"), t[0], 2},
        {QStringLiteral("SaveTrim, as above"), t[1],
         QStringLiteral("the same copy, synced and renamed over the song"), t[2], 0},
    };
}

const Register kTrim("trim", SavedTrim);

}  // namespace
}  // namespace zor::bench
