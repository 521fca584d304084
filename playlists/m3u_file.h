#pragma once
// The M3U playlist as this jukebox reads and writes it. It writes the
// extended form for other players ("#EXTM3U", then "#EXTINF:" seconds and
// title, then the path, lines ending in CR LF, UTF-8 so that players on
// this system find the files by their names). It reads
// lines of paths the old way: through a window of 200 bytes, a line of one
// to six characters glued to the next, "#EXTINF" lines only placing the
// row, and the artist and title cut from each file name. So its own files,
// which start with "#EXTM3U", read as nothing: that line is taken for a
// path without a "-" and ends the read.
#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>

namespace zor {

class SongGrid;

// A line of the file as text: UTF-8 when it is valid UTF-8, else
// Windows-1252, as lists made on Windows are.
QString DecodeM3uLine(QByteArrayView line);

// One turn of the reader at the 1-based position `pos`. The window and the
// line lengths count bytes.
struct M3uLine {
    QString text;
    qint64 step = 1;        // how far the reader then moves on
    bool complete = false;  // false: nothing to take, only the step
};
M3uLine TakeM3uLine(QByteArrayView file, qint64 pos);

// The complete lines of a file, one turn after another from position 1.
// Where no line break is in sight of the window, every turn up to the one
// that sees the next break only moves on by a byte; those turns are passed
// over at once, so text without line breaks costs no more than a search.
class M3uLineReader {
public:
    explicit M3uLineReader(QByteArrayView file) : file_(file) {}
    bool Next(QString& line);

private:
    QByteArrayView file_;
    qint64 pos_ = 1;
    qint64 nextBreak_ = -1;  // 0-based offset of the next CR LF at or after pos_
};

// The file name's parts: after the last "\" or "/" (the first character is
// never looked at), up to the first "-" the artist, after it up to the last
// four characters the title; both untrimmed. A name without a "-", or with
// one in its last four characters, gives the title a negative length:
// run-time error 5. The artist is all of the name when there is no "-".
QString M3uArtist(const QString& path);
QString M3uTitle(const QString& path);

// ReadM3u's work on MFGrid1 for the bytes of a whole file: headings in row 0,
// then a row a path (column 6 the line, 2 the artist, 1 the title, trimmed).
// PlaylistEnd ends as the next row. Files under 10 bytes give no rows and
// return false: the read ends there. A name the reader cannot split throws
// run-time error 5 with the grid holding the rows read whole before it and
// PlaylistEnd after them; the caller's handler ends the read there.
bool ReadM3uRows(QByteArrayView file, SongGrid& grid, int32_t& playlistEnd);

// The lines as written, CR LF after each. The title and the path are cut
// at a zero and trimmed of blanks.
QByteArray M3uHeader();
QByteArray M3uEntry(int32_t seconds, const QString& title, const QString& path);

}  // namespace zor
