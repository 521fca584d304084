#include "mp3/id3_tag.h"

#include "platform/binary_file.h"
#include "platform/cp1252.h"
#include "platform/file_system.h"
#include "platform/runtime_error.h"
#include "platform/vb.h"
#include "shell/jukebox.h"

#include <array>

namespace zor {
namespace {

// Offsets of the fields in the 128 bytes.
constexpr int kTitleAt = 3;
constexpr int kArtistAt = 33;
constexpr int kAlbumAt = 63;
constexpr int kYearAt = 93;
constexpr int kCommentAt = 97;
constexpr int kStyleAt = 127;

template <int N>
void Fill(FixedText<N>& field, const QByteArray& bytes, int offset, bool trim) {
    const QString text = cp1252::Decode(QByteArrayView(bytes).sliced(offset, N));
    field = trim ? vb::Trim(text) : text;
}

const std::array<QString, kStyleCount>& Styles() {
    static const std::array<QString, kStyleCount> table = [] {
        std::array<QString, kStyleCount> t;
        FillStyleTable(t);
        return t;
    }();
    return table;
}

}  // namespace

bool HasTagExtension(const QString& path) { return path.size() >= 4 && path[path.size() - 4] == u'.'; }

Id3TagRecord DecodeId3Tag(const QByteArray& bytes) {
    QByteArray b = bytes;
    if (b.size() != kId3TagBytes) {
        b.truncate(kId3TagBytes);
        b.append(kId3TagBytes - b.size(), '\0');
    }
    Id3TagRecord tag;
    tag.Tag = cp1252::Decode(QByteArrayView(b).first(3));
    const bool trim = tag.HasMarker();
    Fill(tag.Title, b, kTitleAt, trim);
    Fill(tag.Artist, b, kArtistAt, trim);
    Fill(tag.Album, b, kAlbumAt, trim);
    Fill(tag.Year, b, kYearAt, trim);
    Fill(tag.Comment, b, kCommentAt, trim);
    tag.Style = uint8_t(b[kStyleAt]);
    return tag;
}

QByteArray EncodeId3Tag(const Id3TagRecord& tag) {
    QByteArray b;
    b.reserve(kId3TagBytes);
    b += cp1252::Field(tag.Tag.Text(), 3);
    b += cp1252::Field(tag.Title.Text(), 30);
    b += cp1252::Field(tag.Artist.Text(), 30);
    b += cp1252::Field(tag.Album.Text(), 30);
    b += cp1252::Field(tag.Year.Text(), 4);
    b += cp1252::Field(tag.Comment.Text(), 30);
    b += char(tag.Style);
    return b;
}

bool ReadId3Tag(FileSystem& fs, const QString& path, Id3TagRecord& tag) {
    if (!HasTagExtension(path) || !fs.FileExists(path)) return false;
    BinaryFile file(fs, path, BinaryFile::ReadOnly);
    const qint64 length = file.Length();
    if (length < kId3TagBytes) return false;
    QByteArray bytes;
    try {
        bytes = file.Get(length - 127, kId3TagBytes);
    } catch (const RuntimeError&) {
        return false;
    }
    // A file cut short since its length was taken has no tag to speak of.
    if (bytes.size() < kId3TagBytes) return false;
    tag = DecodeId3Tag(bytes);
    return tag.HasMarker();
}

qint64 Id3TagPosition(qint64 length, bool hasMarker, Id3NewTag where) {
    if (hasMarker) return length - 127;
    return where == Id3NewTag::AtLastByte ? length : length + 1;
}

namespace {

// The record into an open file of `length` bytes, at its place. What the
// place holds now is kept, so that a write cut short (a full disk) can be
// undone: the song is left as it was, never with half a tag at its end.
bool PutTag(BinaryFile& file, qint64 length, Id3TagRecord& tag, Id3NewTag where) {
    const qint64 position = Id3TagPosition(length, tag.HasMarker(), where);
    tag.Tag = QStringLiteral("TAG");
    QByteArray before;
    try {
        before = file.Get(position, kId3TagBytes);
        file.Put(position, EncodeId3Tag(tag));
    } catch (const RuntimeError&) {
        try {
            if (!before.isEmpty()) file.Put(position, before);
            file.SetLength(length);
        } catch (const RuntimeError&) {
        }
        return false;
    }
    return true;
}

}  // namespace

bool WriteId3Tag(FileSystem& fs, const QString& path, Id3TagRecord& tag, Id3NewTag where) {
    // Opening a missing file would make an empty one, which no one asked for.
    if (!fs.FileExists(path)) return false;
    BinaryFile file(fs, path, BinaryFile::ReadWrite);
    const qint64 length = file.Length();
    if (length < kId3TagBytes) return false;
    return PutTag(file, length, tag, where);
}

bool ChangeId3Tag(FileSystem& fs, const QString& path, const std::function<void(Id3TagRecord&)>& change,
                  Id3NewTag where) {
    if (!fs.FileExists(path)) return false;
    BinaryFile file(fs, path, BinaryFile::ReadWrite);
    const qint64 length = file.Length();
    if (length < kId3TagBytes) return false;
    const QByteArray last = file.Get(length - 127, kId3TagBytes);
    if (last.size() != kId3TagBytes) return false;
    Id3TagRecord tag = DecodeId3Tag(last);
    change(tag);
    return PutTag(file, length, tag, where);
}

QString StyleName(int index) {
    if (index < 0 || index >= kStyleCount) throw RuntimeError::SubscriptOutOfRange();
    return Styles()[size_t(index)];
}

int StyleOnTagScreens(int style) { return style > kLastPublishedStyle ? kStyleOther : style; }

int StyleForCatalogue(int style) { return style > kLastPublishedStyle ? kStyleUnknown : style; }

}  // namespace zor
