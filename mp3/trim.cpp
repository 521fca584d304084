#include "mp3/trim.h"

#include "mp3/id3_tag.h"
#include "platform/binary_file.h"
#include "platform/runtime_error.h"

#include <QFile>
#include <QFileInfo>

namespace zor {

qint64 TrimCut(int ms) { return qint64(ms) * kTrimBytesPerMs; }

qint64 TrimStart(const QByteArray& head, qint64 cut) {
    qint64 k = 0;
    do {
        ++k;
    } while (k < kTrimScanBytes && !IsRepairFrameStart(head, k));
    return cut + k;
}

std::optional<BlockCopy> TrialCopy(qint64 length, qint64 cut, TrimEnd end) {
    if (end == TrimEnd::Beginning) {
        BlockCopy c{cut + 1, 0, 0};
        for (qint64 p = c.from; p <= length - kRepairBlockBytes;) {
            ++c.blocks;
            p += kRepairBlockBytes;
            if (p > kTrialBeginBytes) break;
        }
        return c;
    }
    if (length - kTrialEndBytes < 1) return std::nullopt;
    if (cut > kTrimFullCut) return BlockCopy{length - kTrialEndBytes, 3, 5 * kTrimFullCut - cut};
    return BlockCopy{length - kTrialEndBytes, 4, kTrimFullCut - cut};
}

std::optional<BlockCopy> EndTrimCopy(qint64 length, qint64 cut) {
    if (length <= kId3TagBytes) return std::nullopt;
    BlockCopy c{1, 0, 0};
    if (length - kTrimEndBlocksBefore >= 1) c.blocks = (length - kTrimEndBlocksBefore - 1) / kRepairBlockBytes + 1;
    if (cut <= kTrimFullCut) ++c.blocks;
    const qint64 p = 1 + c.blocks * kRepairBlockBytes;
    c.restBytes = cut > kTrimFullCut ? length - p - (cut - kTrimFullCut) : length - p - cut;
    if (c.restBytes < 0 || c.Bytes() > length) return std::nullopt;
    return c;
}

bool MakeTrial(FileSystem& fs, const QString& song, const QString& trial, qint64 cut, TrimEnd end) {
    BinaryFile in(fs, song, BinaryFile::ReadOnly);
    BinaryFile out(fs, trial);
    out.SetLength(0);
    const std::optional<BlockCopy> copy = TrialCopy(in.Length(), cut, end);
    if (!copy) return false;
    CopyBlocks(in, *copy, out);
    return true;
}

namespace {

// Writes the shortened song into `scratch`; false when there is nothing
// to write.
bool WriteTrim(FileSystem& fs, const QString& song, const QString& scratch, qint64 cut, TrimEnd end) {
    Id3TagRecord tag;
    const bool tagged = end == TrimEnd::End && ReadId3Tag(fs, song, tag);
    BinaryFile in(fs, song, BinaryFile::ReadOnly);
    const qint64 length = in.Length();
    std::optional<BlockCopy> copy;
    if (end == TrimEnd::Beginning) copy = CopyToEnd(length, TrimStart(in.Get(cut + 1, kRepairHeadBytes), cut));
    else copy = EndTrimCopy(length, cut);
    // A trim that keeps no sound would leave the user a file of nothing, or
    // of a tag alone: the song stays as it is.
    if (!copy || copy->Bytes() == 0) return false;
    BinaryFile out(fs, scratch);
    CopyBlocks(in, *copy, out);
    if (tagged) out.Put(out.Length() + 1, EncodeId3Tag(tag));
    return true;
}

}  // namespace

bool SaveTrim(FileSystem& fs, const QString& song, const QString& scratch, qint64 cut, TrimEnd end) {
    if (fs.FileExists(scratch)) fs.Kill(scratch);
    if (!fs.FileExists(song)) throw RuntimeError::FileNotFound();
    // The song is replaced by a rename, which a read-only file on this
    // system doesn't refuse; the user's "don't change" is kept here. The
    // mode bits are asked, not access(2), which lets root write anything.
    const QFileInfo file(song);
    const auto writeBits = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    if (!file.isWritable() || !(file.permissions() & writeBits)) throw RuntimeError::PermissionDenied();
    try {
        if (!WriteTrim(fs, song, scratch, cut, end)) {
            if (fs.FileExists(scratch)) fs.Kill(scratch);
            return false;
        }
        // A song deleted while the trim was written is not made anew.
        if (!fs.FileExists(song)) throw RuntimeError::FileNotFound();
        ReplaceFromScratch(fs, song, scratch);
    } catch (const RuntimeError&) {
        // The song is as it was; the half-made or refused copy is scratch.
        QFile::remove(scratch);
        throw;
    }
    return true;
}

}  // namespace zor
