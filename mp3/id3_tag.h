#pragma once
// The 128-byte tag at the very end of a song file, in the original ID3
// layout: no track number, bytes 125 and 126 are comment text. Text is
// single-byte Windows-1252, blank-padded. The jukebox keeps one record and
// works on one song at a time with it: import, the tag editor, the batch
// operations and trimming.
#include "shell/fixed_text.h"

#include <QByteArray>
#include <QString>

#include <functional>

#include <cstdint>

namespace zor {

class FileSystem;

inline constexpr int kId3TagBytes = 128;
// Style numbers with a meaning of their own: the published list ends at 79;
// tag screens show anything above it as "Other", the catalogue as "Unknown",
// which is the jukebox's own entry and never goes into a tag.
inline constexpr int kLastPublishedStyle = 79;
inline constexpr int kStyleOther = 12;
inline constexpr int kStyleUnknown = 80;

struct Id3TagRecord {
    FixedText<3> Tag;  // "TAG" in a real tag
    FixedText<30> Title;
    FixedText<30> Artist;
    FixedText<30> Album;
    FixedText<4> Year;  // "0" when unknown
    FixedText<30> Comment;  // may begin with the editor's score block
    uint8_t Style = 0;

    bool HasMarker() const { return Tag.Text() == u"TAG"; }
    bool operator==(const Id3TagRecord&) const = default;
};

// The record as 128 bytes hold it. With the marker, every text field is
// trimmed of blanks at both ends and padded again on the right, so leading
// blanks go; zero bytes another tagger left stay. Without it the fields hold
// the bytes as they are. Fewer than 128 bytes read as if zeros followed.
Id3TagRecord DecodeId3Tag(const QByteArray& bytes);
// Exactly 128 bytes; characters outside Windows-1252 become "?".
QByteArray EncodeId3Tag(const Id3TagRecord& tag);

// A tag only lives in a file named like "song.mp3": at least four
// characters, with a "." fourth from the end.
bool HasTagExtension(const QString& path);

// Fills `tag` from the last 128 bytes of the file and tells whether they hold
// the marker. Nothing is read, and `tag` keeps what it held, when the file
// is missing, shorter than 128 bytes, or its path has no "." fourth from the
// end (at least four characters, as "x.mp3"); so is it when a read fails.
// A file that exists but can't be opened raises its RuntimeError.
bool ReadId3Tag(FileSystem& fs, const QString& path, Id3TagRecord& tag);

// Where a tag goes into a file that has none. A record holding the marker
// is always written over the file's last 128 bytes (position L - 127).
enum class Id3NewTag {
    // Position L: over the file's last byte, so the file grows by 127 bytes.
    // The tag editor and the service tools have always done this, and the
    // files they made are what users have.
    AtLastByte,
    // Position L + 1: appended whole. The batch tag operations.
    Append,
};

// The 1-based position at which WriteId3Tag puts the record in a file of
// `length` bytes.
qint64 Id3TagPosition(qint64 length, bool hasMarker, Id3NewTag where);

// Writes `tag` into the file, first setting the marker if it has none. Only
// an existing file of 128 bytes or more is written; a missing one is not
// made. False when nothing was written, a failed write included; a file that
// can't be opened for writing raises its RuntimeError.
bool WriteId3Tag(FileSystem& fs, const QString& path, Id3TagRecord& tag, Id3NewTag where);

// The file's own record, as its last 128 bytes hold it, changed by `change`
// and written back as WriteId3Tag writes it: a tag goes over a tag, and a
// file without one loses its last byte to it. One open does it all. False,
// with nothing written, when the file is missing or shorter than a tag, or
// the write failed; a file that can't be opened raises its RuntimeError.
bool ChangeId3Tag(FileSystem& fs, const QString& path, const std::function<void(Id3TagRecord&)>& change,
                  Id3NewTag where);

// The style table's entry for 0 to 80; Subscript out of range (9) otherwise.
QString StyleName(int index);
// The style a tag screen shows for a tag's style byte: "Other" above 79.
int StyleOnTagScreens(int style);
// The style the import stores in the catalogue: "Unknown" above 79.
int StyleForCatalogue(int style);

}  // namespace zor
