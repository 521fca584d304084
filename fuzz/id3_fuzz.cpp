// A song file's tail as any bytes. The tag is decoded from memory and read
// and written through the file as the tag tools do. Nothing may crash or read
// past the file; a record read must write back as itself, a write must land
// where its caller asked and leave the bytes before it alone.
#include "fuzz/fuzz_support.h"
#include "mp3/id3_tag.h"
#include "platform/file_system.h"

#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

using namespace zor;
using namespace zor::fuzzing;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static FileSystem files;
    const QByteArray bytes = Input(data, size);
    const qsizetype length = bytes.size();

    // From memory: the last 128 bytes (or what there is).
    const QByteArray tail = bytes.right(kId3TagBytes);
    const Id3TagRecord decoded = DecodeId3Tag(tail);
    const QByteArray encoded = EncodeId3Tag(decoded);
    Require(encoded.size() == kId3TagBytes, "a record is not 128 bytes");
    if (decoded.HasMarker())
        Require(DecodeId3Tag(encoded) == decoded, "a tag does not read back as itself");
    else
        Require(encoded == tail + QByteArray(kId3TagBytes - tail.size(), '\0'), "untagged bytes changed on the way");

    // Through the file.
    const QString path = ScratchFile(QStringLiteral("song.mp3"));
    WriteAll(path, bytes);
    Id3TagRecord tag;
    tag.Title = QStringLiteral("untouched");
    const bool found = ReadId3Tag(files, path, tag);
    Require(found == (length >= kId3TagBytes && bytes.right(kId3TagBytes).startsWith("TAG")), "marker misjudged");
    if (length >= kId3TagBytes) Require(tag == decoded, "the file reads otherwise than the same bytes in memory");
    else Require(tag.Title.Text().startsWith(u"untouched"), "a short file changed the record");

    // Either caller's choice for a new tag, picked by the input.
    const Id3NewTag where = size > 0 && (data[0] & 1) ? Id3NewTag::Append : Id3NewTag::AtLastByte;
    const bool hadMarker = tag.HasMarker();
    const bool written = WriteId3Tag(files, path, tag, where);
    const QByteArray after = ReadAll(path);
    if (length < kId3TagBytes) {
        Require(!written && after == bytes, "a short file was written");
        return 0;
    }
    Require(written, "a tag was not written");
    const qint64 at = Id3TagPosition(length, hadMarker, where) - 1;
    Require(after.size() == at + kId3TagBytes, "the file did not end with the tag");
    Require(after.left(at) == bytes.left(at), "bytes before the tag changed");
    Id3TagRecord back;
    Require(ReadId3Tag(files, path, back) && back == DecodeId3Tag(EncodeId3Tag(tag)),
            "a written tag does not read back as itself");
    return 0;
}
