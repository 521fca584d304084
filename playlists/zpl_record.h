#pragma once
// The .zpl playlist file: no header, one record of 600 bytes a song row, each
// field Windows-1252 text, left-justified and blank-padded. Record n (from 1)
// starts at byte (n - 1) x 600; a tail shorter than a record is never read.
#include "catalogue/grid_row.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>

namespace zor {

inline constexpr int kZplRecordBytes = 600;

struct ZplField {
    int offset;
    int width;
    int column;  // the grid column it comes from and goes to
};

// The song's fields in file order. Bytes 540 to 599 are two reserved fields
// (10 and 50 bytes) that no grid column feeds.
inline constexpr std::array<ZplField, 10> kZplFields = {{
    {0, 40, 1},     // title
    {40, 40, 2},    // artist
    {80, 40, 3},    // album
    {120, 5, 4},    // year
    {125, 5, 7},    // ID3 flag
    {130, 10, 5},   // style
    {140, 100, 6},  // path
    {240, 100, 9},  // picture
    {340, 100, 8},  // lyrics
    {440, 100, 10}, // execute
}};
inline constexpr int kZplSongBytes = 540;

// The number of whole records in a file of this size.
inline qint64 ZplRecordCount(qint64 fileSize) { return fileSize > 0 ? fileSize / kZplRecordBytes : 0; }

// The one record buffer of the playlist files (PlaylistRecord). A read fills
// all of it; the writer assigns only the song's fields, so the reserved
// fields go out as the last read left them, or as zero bytes before any
// read.
class ZplRecord {
public:
    ZplRecord() : bytes_(kZplRecordBytes, '\0') {}

    // A record as read from the file; fewer bytes leave the rest as it was.
    void Load(QByteArrayView record);
    // Columns 1 to 10 of a grid row into their fields, each cut or padded.
    void Fill(const GridRow& row);
    const QByteArray& Bytes() const { return bytes_; }

    // Writes the record into a grid row: the number into columns 0 and 12,
    // the fields into columns 1 to 10 blanks and all. Column 11 is left as
    // it stands.
    void ToRow(GridRow& row, qint64 number) const;

private:
    QByteArray bytes_;
};

}  // namespace zor
