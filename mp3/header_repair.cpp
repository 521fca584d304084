#include "mp3/header_repair.h"

#include "platform/binary_file.h"
#include "platform/runtime_error.h"
#include "platform/services.h"

#include <QFileInfo>

namespace zor {

bool IsRepairFrameStart(const QByteArray& head, qint64 p) {
    auto at = [&head](qint64 q) { return q >= 1 && q <= head.size() ? static_cast<unsigned char>(head[q - 1]) : 0; };
    return at(p) == 255 && at(p + 1) >= 224;
}

qint64 RepairStart(const QByteArray& head, const std::function<void()>& letEventsThrough) {
    qint64 p = 0;
    do {
        do {
            ++p;
        } while (p < kRepairScanEnd && !IsRepairFrameStart(head, p));
        if (letEventsThrough) letEventsThrough();
    } while (p < kRepairKeepFrom);
    return p;
}

BlockCopy CopyToEnd(qint64 length, qint64 from) {
    BlockCopy c{from, 0, 0};
    if (from <= length - kRepairBlockBytes) c.blocks = (length - kRepairBlockBytes - from) / kRepairBlockBytes + 1;
    const qint64 p = from + c.blocks * kRepairBlockBytes;
    if (length > p) c.restBytes = length - p + 1;
    return c;
}

void CopyBlocks(BinaryFile& in, const BlockCopy& copy, BinaryFile& out) {
    qint64 p = copy.from, d = 1;
    const auto move = [&](qint64 n) {
        const QByteArray bytes = in.Get(p, n);
        if (bytes.size() != n) throw RuntimeError(62, QStringLiteral("Input past end of file"));
        out.Put(d, bytes);
        p += n;
        d += n;
    };
    for (qint64 b = 0; b < copy.blocks; ++b) move(kRepairBlockBytes);
    if (copy.restBytes > 0) move(copy.restBytes);
}

void CopyFromPosition(BinaryFile& in, qint64 length, qint64 from, BinaryFile& out) {
    CopyBlocks(in, CopyToEnd(length, from), out);
}

void CopyPastLeadIn(FileSystem& fs, EventPump& events, const QString& song, const QString& scratch) {
    // Opened for writing as well, though only read: a song the user may not
    // change is refused here, before anything is made of it.
    BinaryFile in(fs, song);
    BinaryFile out(fs, scratch);
    const qint64 length = in.Length();
    const QByteArray head = in.Get(1, kRepairHeadBytes);
    const qint64 from = RepairStart(head, [&events] { events.DoEvents(); });
    CopyFromPosition(in, length, from, out);
}

bool IsSameFile(const QString& a, const QString& b) {
    const QFileInfo fa(a), fb(b);
    const QString ca = fa.canonicalFilePath(), cb = fb.canonicalFilePath();
    return (!ca.isEmpty() && ca == cb) || fa.absoluteFilePath() == fb.absoluteFilePath();
}

void ReplaceFromScratch(FileSystem& fs, const QString& song, const QString& scratch) {
    // On one disk the scratch itself is moved beside the song and renamed
    // over it, so a song of megabytes isn't written twice. From another
    // disk it is copied.
    const bool moved = fs.ReplaceFile(song, [&](const QString& beside) {
        try {
            fs.Name(scratch, beside);
            return true;
        } catch (const RuntimeError& e) {
            if (e.Number() != 74) throw;  // not "different drive"
            return false;
        }
    });
    if (!moved) fs.FileCopy(scratch, song);
    if (fs.FileExists(scratch)) fs.Kill(scratch);
}

}  // namespace zor
