#include "mp3/header_repair.h"

#include "platform/binary_file.h"
#include "platform/services.h"

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

void CopyFromPosition(BinaryFile& in, qint64 length, qint64 from, BinaryFile& out) {
    qint64 p = from, d = 1;
    while (p <= length - kRepairBlockBytes) {
        out.Put(d, in.Get(p, kRepairBlockBytes));
        p += kRepairBlockBytes;
        d += kRepairBlockBytes;
    }
    if (length > p) out.Put(d, in.Get(p, length - p + 1));
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

void ReplaceFromScratch(FileSystem& fs, const QString& song, const QString& scratch) {
    fs.FileCopy(scratch, song);
    if (fs.FileExists(scratch)) fs.Kill(scratch);
}

}  // namespace zor
