#pragma once
// The byte work of header repair: where the audio of a song with a lead-in
// begins, and the copy of the song from there into a scratch file in blocks
// of 30000 bytes. Positions are 1-based, as the file layer's.
#include <QByteArray>
#include <QString>

#include <functional>

namespace zor {

class BinaryFile;
class EventPump;
class FileSystem;

inline constexpr qint64 kRepairBlockBytes = 30000;
// The bytes read at the head of the song; the scan looks at the first 3001.
inline constexpr qint64 kRepairHeadBytes = 5000;
// A frame start below this position is passed over: the bytes before it
// always go.
inline constexpr qint64 kRepairKeepFrom = 2000;
// The scan's end: without a frame start from 2000 on, the copy starts here.
inline constexpr qint64 kRepairScanEnd = 3000;

// A byte of 255 followed by one of 224 or more at the 1-based position p of
// `head`; bytes beyond its end count as zero. Stricter than the analyser's
// header test, which takes any byte above 200.
bool IsRepairFrameStart(const QByteArray& head, qint64 p);

// Where the copy starts: the first frame start at 2000 or later, or 3000
// when there is none before that. `letEventsThrough` runs at each frame start
// found on the way and once at the end, as the scan lets events through.
qint64 RepairStart(const QByteArray& head, const std::function<void()>& letEventsThrough);

// One copy in the jukebox's only shape: whole blocks of 30000 bytes read
// from the 1-based position `from`, then `restBytes` more through a buffer
// of exactly that size. Header repair and trimming differ only in where a
// copy starts and how many blocks and bytes it takes.
struct BlockCopy {
    qint64 from = 1;
    qint64 blocks = 0;
    qint64 restBytes = 0;
    qint64 Bytes() const { return blocks * kRepairBlockBytes + restBytes; }
    bool operator==(const BlockCopy&) const = default;
};

// The copy to the end of a file of `length` bytes: whole blocks while the
// position is at most length - 30000, then, when length is above the
// position reached, the length - position + 1 bytes that remain. When the
// position reached is the length itself, that last byte stays behind.
BlockCopy CopyToEnd(qint64 length, qint64 from);

// Reads `copy` from `in` and writes it into `out` from its first byte. A
// read that comes back short (the file shrank under the copy) raises error
// 62, so a copy is either whole or a failure.
void CopyBlocks(BinaryFile& in, const BlockCopy& copy, BinaryFile& out);

// CopyBlocks of CopyToEnd: `in` from `from` to its end into `out`.
void CopyFromPosition(BinaryFile& in, qint64 length, qint64 from, BinaryFile& out);

// Opens the song and the scratch, finds the start in the song's first 5000
// bytes, letting events through as it goes, and writes the song from there
// into the scratch. Both files are closed when it returns or raises. Raises
// RuntimeError when a file can't be opened, read or written; the song is
// only read.
void CopyPastLeadIn(FileSystem& fs, EventPump& events, const QString& song, const QString& scratch);

// The same file under two names (a link, "..", a relative path). A song
// kept under a scratch file's own name would be deleted as a leftover.
bool IsSameFile(const QString& a, const QString& b);

// The song replaced by the scratch, then the scratch deleted. The scratch
// goes beside the song (moved there on one disk, copied from another) and is
// renamed over it once it is on the disk, so a failure at any step, a crash
// included, leaves the song as it was, and a song held open (the catalogue,
// a player's song) is refused with error 70.
void ReplaceFromScratch(FileSystem& fs, const QString& song, const QString& scratch);

}  // namespace zor
