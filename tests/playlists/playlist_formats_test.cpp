// The two playlist formats on their own: the edges of the .zpl record's
// fields, and the M3U reader's and writer's quirks on bytes.
#include "catalogue/song_grid.h"
#include "playlists/m3u_file.h"
#include "playlists/zpl_record.h"
#include "tests/support/errors.h"

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

QByteArray Padded(const QByteArray& text, int width) { return text.leftJustified(width, ' ', true); }

GridRow RowOf(const std::array<const char*, kGridCols>& cells) {
    GridRow row;
    for (int c = 0; c < kGridCols; ++c) row.Set(c, QString::fromUtf8(cells[size_t(c)]));
    return row;
}

// ---- .zpl --------------------------------------------------------------------

// The layout of a whole record is proven by the saves in
// playlist_files_test.cpp; here the edges of its fields.
TEST(ZplRecord, FieldsAreCutOrPaddedInWindows1252AndReservedBytesStayZeroBeforeAnyRead) {
    ZplRecord record;
    const QString longPath = QStringLiteral("/") + QString(120, u'p');
    GridRow row = RowOf({"", "Caf\xC3\xA9 \xE2\x82\xAC \xE6\x97\xA5", "", "", "19745", "", "", "", "", "", "", "", ""});
    row.Set(6, longPath);
    record.Fill(row);
    ASSERT_EQ(record.Bytes().size(), 600);
    EXPECT_EQ(record.Bytes().mid(0, 40), Padded("Caf\xE9 \x80 ?", 40));
    EXPECT_EQ(record.Bytes().mid(120, 5), QByteArray("19745"));
    EXPECT_EQ(record.Bytes().mid(140, 100), longPath.left(100).toLatin1());
    EXPECT_EQ(record.Bytes().mid(540), QByteArray(60, '\0'));
    // Reading a record leaves column 11 alone.
    GridRow read;
    read.Set(11, QStringLiteral("old"));
    record.ToRow(read, 3);
    EXPECT_EQ(read[11], u"old");
}

// ---- M3U ---------------------------------------------------------------------

struct Cell {
    int row, col;
    QString text;
};
struct M3uCase {
    const char* what;
    QByteArray bytes;
    int error, end, rows;
    std::vector<Cell> cells;
};

TEST(M3uReader, PathsBecomeRowsWithArtistAndTitleFromTheirNamesQuirksAndBadBytesIncluded) {
    const QByteArray longPath = "/" + QByteArray(230, 'd') + "/Artist - Title.mp3";
    const char oddBytes[] = "/m/A\0 - B\0.mp3\r\n\n\r\r/m/C - D.mp3\r\n";
    const M3uCase cases[] = {
        {"#EXTINF lines are skipped; the catalogue's rows go",
         "#EXTINF:200,ignored title\r\nC:\\Music\\ABBA - Waterloo.mp3\r\n/home/u/music/Queen -  Bohemian Rhapsody .mp3\r\n",
         0, 3, 3,
         {{0, 1, "SONG:"}, {0, 2, "ARTIST:"}, {0, 6, "PATH:"}, {1, 6, "C:\\Music\\ABBA - Waterloo.mp3"}, {1, 2, "ABBA"},
          {1, 1, "Waterloo"}, {1, 3, ""}, {2, 2, "Queen"}, {2, 1, "Bohemian Rhapsody"}}},
        // Its own header is a path without a hyphen: the read ends there,
        // and no row is left of it.
        {"own file", M3uHeader() + M3uEntry(200, QStringLiteral("Waterloo"), QStringLiteral("/m/ABBA - Waterloo.mp3")), 5,
         1, 1, {}},
        {"a hyphen in the last four fails after the rows before it", "/m/A - B.mp3\r\n/m/Song.m-p3\r\n/m/C - D.mp3\r\n", 5,
         2, 2, {{1, 1, "B"}, {1, 6, "/m/A - B.mp3"}}},
        {"UTF-8 lines, and Windows-1252 where a line is not UTF-8",
         "/m/Caf\xC3\xA9 Trio - Zo\xC3\xAB.mp3\r\n/m/Caf\xE9 Trio - Zo\xEB.mp3\r\n", 0, 3, 3,
         {{1, 2, "Caf\u00e9 Trio"}, {1, 1, "Zo\u00eb"}, {2, 2, "Caf\u00e9 Trio"}, {2, 6, "/m/Caf\u00e9 Trio - Zo\u00eb.mp3"}}},
        {"a hyphen just before the extension leaves an empty title", "/m/Artist-.mp3\r\n/m/X - Y.mp3\r\n", 0, 3, 3,
         {{1, 2, "Artist"}, {1, 1, ""}}},
        {"a short line is glued to the next, its line feed inside", "a.mp3\r\n/m/X - Y.mp3\r\n/m/P - Q.mp3\r\n", 0, 3, 3,
         {{1, 6, "a.mp3\n/m/X - Y.mp3"}, {1, 2, "X"}, {2, 6, "/m/P - Q.mp3"}}},
        {"a line longer than the window is read from its last 197", longPath + "\r\n\r\n/m/X - Y.mp3\r\n", 0, 3, 3,
         {{1, 6, QString::fromLatin1(longPath.right(197))}, {1, 1, "Title"}, {2, 6, "/m/X - Y.mp3"}}},
        {"a last line without its end is not read", "/m/A - B.mp3\r\n/m/C - D.mp3", 0, 2, 2, {}},
        {"endless text without a line end", QByteArray(5 << 20, 'x'), 0, 1, 1, {}},
        {"lone CRs and LFs are text, NULs characters", QByteArray(oddBytes, sizeof oddBytes - 1), 0, 3, 3,
         {{1, 2, QString(QStringLiteral("A") + QChar(0))}, {2, 6, "\n\r\r/m/C - D.mp3"}}},
    };
    for (const M3uCase& c : cases) {
        SCOPED_TRACE(c.what);
        SongGrid grid;
        grid.SetRows(50);
        grid.SetTextMatrix(1, 3, QStringLiteral("catalogue"));
        int32_t end = 0;
        EXPECT_EQ(ErrorOf([&] { ReadM3uRows(c.bytes, grid, end); }), c.error);
        EXPECT_EQ(end, c.end);
        EXPECT_EQ(grid.Rows(), c.rows);
        for (const Cell& cell : c.cells) EXPECT_EQ(grid.TextMatrix(cell.row, cell.col), cell.text) << cell.row << "," << cell.col;
    }
}

// Whole entries are in the road test's file; here a tag's zeros, which end
// the title, and a .zpl field's blanks, which stay out of the path.
TEST(M3uWriter, ATagsZerosEndTheTitleAndAFieldsBlanksStayOut) {
    const QString zeros(4, QChar(0));
    EXPECT_EQ(M3uEntry(9, QStringLiteral("Tune") + zeros + QStringLiteral("x"), QStringLiteral("/m/a.mp3") + QString(92, u' ')),
              QByteArray("#EXTINF:9,Tune\r\n/m/a.mp3\r\n"));
}

}  // namespace
}  // namespace zor::testing
