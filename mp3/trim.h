#pragma once
// The byte work of the trimming window Form9: which bytes of a song go into
// the trial that the window plays and into the shortened song that it
// saves. It is crude on purpose and must stay so:
//  - a millisecond on the slider is 20 bytes, so a second is 20000 bytes,
//    whatever the song's real bit rate;
//  - a cut at the beginning starts the copy at the first frame start in the
//    1000 bytes after the cut, or 1000 bytes on when there is none;
//  - a cut at the end counts the old tag's 128 bytes as part of the cut,
//    copies one byte short of "length - cut", removes 10000 bytes fewer than
//    the slider says once the cut is above 10000, and writes the tag again
//    behind what was kept.
// What the trial plays is made by the same numbers as what the save keeps,
// so the user hears what he gets; and the songs users trimmed over the years
// were cut by them, so a trim of today cuts what the slider always cut.
//
// Positions are 1-based, as the file layer's. Every copy is header repair's
// BlockCopy: whole blocks of 30000 bytes, then a rest of exactly its size.
#include "mp3/header_repair.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace zor {

class FileSystem;

enum class TrimEnd { Beginning, End };

// The slider HScroll1: milliseconds to cut, 0 to 2000, large step 50.
inline constexpr int kTrimMaxMs = 2000;
inline constexpr int kTrimLargeStepMs = 50;
// The fixed rate behind every cut: 20 bytes a millisecond.
inline constexpr qint64 kTrimBytesPerMs = 20;
// The trial of a beginning ends with the block that reads beyond this.
inline constexpr qint64 kTrialBeginBytes = 150000;
// The trial of an end starts this far before the end of the song.
inline constexpr qint64 kTrialEndBytes = 130000;
// A cut at the end up to this is cut in full; above it, this much less.
inline constexpr qint64 kTrimFullCut = 10000;
// The saved cut at the end copies whole blocks while the position is at
// most length - 70000, then one block (cut up to 10000) and the rest.
inline constexpr qint64 kTrimEndBlocksBefore = 70000;
// How far after the cut a saved trim of the beginning looks for a frame.
inline constexpr qint64 kTrimScanBytes = 1000;

// The bytes that `ms` on the slider cut: the Cut of the window.
qint64 TrimCut(int ms);

// Where a saved trim of the beginning starts: `head` holds the 5000 bytes
// read at cut + 1 (fewer at the end of a short song; the rest counts as
// zeros). The first 999 of them are searched for a frame start (255, then
// 224 or more: header repair's test, stricter than the analyser's); the
// copy starts at the one found, else at the 1000th byte, frame start or not.
qint64 TrimStart(const QByteArray& head, qint64 cut);

// The trial's copy from a song of `length` bytes. Of the beginning: from
// cut + 1, whole blocks while the position is at most length - 30000,
// ending after the block that reads beyond 150000, and no rest, so a song
// shorter than cut + 30000 gives an empty trial. Of the end: three blocks
// from length - 130000, then a fourth and 10000 - cut bytes, or, for a cut
// above 10000, 50000 - cut bytes. Empty (no copy at all) when the song is
// shorter than 130001 bytes: the trial of an end would read before its
// first byte.
std::optional<BlockCopy> TrialCopy(qint64 length, qint64 cut, TrimEnd end);

// The saved trim of the end: from position 1, whole blocks while the
// position is at most length - 70000; then, for a cut above 10000,
// length - position - (cut - 10000) bytes; otherwise one more block and
// length - position - cut bytes. Empty when that asks for fewer than no
// bytes, or reads past the end, or the song is shorter than 129 bytes (the
// tag test reads the 128 bytes at length - 128): the song then stays as it
// is.
std::optional<BlockCopy> EndTrimCopy(qint64 length, qint64 cut);

// Makes the trial file `trial` from `song` (the trial file is made anew,
// emptied first). False, with the trial left empty, when the song is too
// short for the trial of its end. Raises RuntimeError when a file can't be
// opened, read or written.
bool MakeTrial(FileSystem& fs, const QString& song, const QString& trial, qint64 cut, TrimEnd end);

// The saved trim: the shortened song is written whole into `scratch`
// (ZOR2.mp3, deleted first if left from before), with the song's tag
// written again behind a cut end, and only then put in the song's place by
// ReplaceFromScratch, so the song is at every moment either the old file,
// whole, or the new one, complete. A song that may not be changed, that is
// held open (the catalogue, a player's song) or that went in the meantime
// raises RuntimeError and stays as it was; so does every failure to read or
// write. False, nothing changed, when the trim's arithmetic doesn't fit the
// song or would leave no sound at all of it.
bool SaveTrim(FileSystem& fs, const QString& song, const QString& scratch, qint64 cut, TrimEnd end);

}  // namespace zor
