// A play log as any bytes: cut short, grown by hand, binary, or empty. The
// viewer pages through all of it as its scroll bar would, reading through
// the file layer. Nothing may crash or read past the file; a page is always
// 23 records, the file's own bytes where it has them, and its text never
// holds a zero or a carriage return.
#include "fuzz/fuzz_support.h"
#include "platform/file_system.h"
#include "playback/log_view.h"
#include "playback/play_log.h"

#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace zor;
using namespace zor::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static FileSystem files;
    const QString path = ScratchFile(QStringLiteral("ZORjuke.log"));
    const QByteArray bytes = Input(data, size);
    WriteAll(path, bytes);

    const qint64 lines = LogLineCount(qint64(size));
    Require(lines >= 0 && lines * kLogLineBytes <= qint64(size) + kLogLineBytes / 2, "line count out of reach");
    const qint64 pageBytes = qint64(kLogPageLines) * kLogLineBytes;
    QByteArray buffer;
    // Every value of the scroll bar, 0 to Lines + 1, is paged from the bytes;
    // the text is made, and the file read, at the ends and the middle, where
    // an offset slip or a short last read would show. That keeps the run fast
    // enough for long sessions.
    for (qint64 top = 0; top <= lines + 1; ++top) {
        const qint64 at = top * kLogLineBytes;
        const QByteArray span = bytes.mid(at, pageBytes);
        QByteArray again = buffer;
        const QByteArray page = BuildLogPage(span, buffer);
        Require(page.size() == pageBytes, "a page is not 23 records");
        Require(buffer.size() == kLogLineBytes, "the record buffer changed size");
        Require(page.startsWith(span), "a page does not begin with the file's bytes");
        if (top > 1 && top < lines && top != lines / 2) continue;
        const QString shown = LogPageText(page);
        Require(!shown.contains(QChar(u'\0')) && !shown.contains(u'\r'), "a zero or a carriage return shows");
        const QString text = ReadLogPage(files, path, top, again);
        Require(text == shown && again == buffer, "the file and the bytes read differently");
    }
    Require(!files.IsHeldOpen(path), "the log was left open");
    return 0;
}
