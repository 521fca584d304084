#pragma once
// How the lyrics and picture files of a song are found, read and written.
// Lyrics live in Settings.LyricsPath, artist pictures in PicturesPath, album
// fronts and backs in AlbumCoverPath and AlbumBackPath, all found by name.
#include <QString>
#include <QStringView>

#include <array>
#include <cstdint>

namespace zor {

class FileSystem;
namespace vb {
class Random;
}

// The picture extensions, in the order they are looked for.
inline constexpr std::array<const char*, 3> kPictureExtensions = {".bmp", ".gif", ".jpg"};

// The cells of a song row that its companions are found by, trimmed.
struct CompanionCells {
    QString Song;    // column 1
    QString Artist;  // column 2
    QString Album;   // column 3
    QString Path;    // column 6
    QString Lyrics;  // column 8
};

// The song file's name from its path, collected backward up to the first
// ":", "\" or "/", less its last three characters when it is longer than
// three: "/music/Let It Be.mp3" gives "Let It Be." with its dot.
QString SongFileStem(QStringView path);
// The first eight characters of the title that are not blanks:
// "Let It Be" gives "LetItBe".
QString SongNameKey(QStringView song);

// The lyrics file of a song, or "" when there is none: the Lyrics cell when
// it holds more than two characters (a full path; the " Y"/" N" marks of the
// inventory are shorter), else the first file in lyricsDir named like the
// song file with any extension, else the title's eight letters with ".sng".
// `home` maps a Windows path found in the cell.
QString FindLyricsFile(FileSystem& fs, const QString& lyricsDir, const CompanionCells& cells, const QString& home);

// `name` with the first of the picture extensions that exists in dir, as a
// full path; "" when none does.
QString FindPicture(FileSystem& fs, const QString& dir, const QString& name);

// How many pictures an artist has in the numbered series: the name alone,
// then the name with 2, 3 and so on without gaps, up to 99. 1 when there is
// no picture numbered 2 (whether or not the name alone exists).
int CountArtistPictures(FileSystem& fs, const QString& dir, const QString& artist);
// The number text of a random draw among `count` pictures: "" for the
// picture without a number. With one picture there is nothing to draw and
// the generator is left alone.
QString DrawPictureNumberText(int count, vb::Random& random, float timer);

// A lyrics text read from its file, CR LF turned into the text box's line
// breaks. `readable` is false when the file could not be opened or holds
// bytes no text file has (a song or a picture under a lyrics name).
struct LyricsText {
    QString text;
    bool readable = false;
    int16_t lineFeeds = 0;  // counted before the line breaks were turned
};
// Song texts run to a few thousand characters. Reading stops at kMaxLyricsBytes
// so that a huge file under a lyrics name costs neither memory nor a text box
// that takes seconds to lay out.
inline constexpr qint64 kMaxLyricsBytes = 256 * 1024;
LyricsText ReadLyricsFile(const QString& path);
// Line feeds in the text, held by the 16-bit count: it stops at 32767.
int16_t CountLineFeeds(QStringView text);

// The file name a lyrics text is saved under: the song file's name with
// ".txt" for its extension, or "" when the song's path is shorter than four
// characters.
QString LyricsSaveName(QStringView path);
// Writes the text in the Windows code page with CR LF line breaks and one
// at its end, through a scratch file so that a failure leaves an old file
// whole. A missing directory throws run-time error 76, a file that can't be
// written 75.
void WriteLyricsFile(const QString& path, const QString& text);

}  // namespace zor
