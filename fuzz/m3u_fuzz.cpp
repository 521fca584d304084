// An M3U file as any bytes, read into a grid as the open reads it. Nothing
// may crash or hang; the only failure allowed is the reader's own run-time
// error 5 of a name it cannot split. The line reader, which passes over
// long runs without line breaks, must take the same lines as the plain
// walk that moves one turn at a time.
#include "fuzz/fuzz_support.h"
#include "catalogue/song_grid.h"
#include "platform/runtime_error.h"
#include "playlists/m3u_file.h"

#include <QByteArray>
#include <QStringList>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace zor::fuzzing;

QStringList PlainWalk(QByteArrayView file) {
    QStringList lines;
    for (qint64 pos = 1; pos <= file.size();) {
        const zor::M3uLine line = zor::TakeM3uLine(file, pos);
        Require(line.step >= 1, "a turn did not move on");
        if (line.complete) lines << line.text;
        pos += line.step;
    }
    return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace zor;
    const QByteArray bytes = Input(data, size);

    QStringList read;
    M3uLineReader reader(bytes);
    for (QString line; reader.Next(line);) {
        // Seven bytes or more; as UTF-8 they may be fewer characters.
        Require(line.size() >= 2 && line.size() <= 197, "a line of a length the window cannot give");
        read << line;
    }
    Require(read == PlainWalk(bytes), "the line reader and the plain walk differ");

    SongGrid grid;
    grid.SetRows(5);
    int32_t end = -1;
    try {
        ReadM3uRows(bytes, grid, end);
        Require(size < 10 ? grid.Rows() == 2 && end == 1 : grid.Rows() == end, "rows and PlaylistEnd differ");
    } catch (const RuntimeError& e) {
        Require(e.Number() == 5, "a run-time error other than 5");
        Require(grid.Rows() == end, "a name that cannot be split left a row behind");
    }
    Require(end >= 1 && end <= read.size() + 1, "PlaylistEnd out of range");
    return 0;
}
