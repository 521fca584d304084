// The two playlist formats on their own: the .zpl record against byte
// layouts written out here by hand, and the M3U reader's quirks on bytes.
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

TEST(ZplRecord, FieldsStandAtTheirOffsetsCutOrPaddedAndReservedBytesStayZeroBeforeAnyRead) {
    const GridRow row = RowOf({"7", "Waterloo", "ABBA", "Waterloo", "1974", "Pop", "/music/ABBA - Waterloo.mp3", "ID3",
                               "lyr.txt", "pic.jpg", "run.sh", "42", "7"});
    ZplRecord record;
    record.Fill(row);
    QByteArray expected;
    expected += Padded("Waterloo", 40);
    expected += Padded("ABBA", 40);
    expected += Padded("Waterloo", 40);
    expected += Padded("1974", 5);
    expected += Padded("ID3", 5);  // the tag flag of column 7 before the style
    expected += Padded("Pop", 10);
    expected += Padded("/music/ABBA - Waterloo.mp3", 100);
    expected += Padded("pic.jpg", 100);  // picture (column 9) before lyrics (column 8)
    expected += Padded("lyr.txt", 100);
    expected += Padded("run.sh", 100);
    expected += QByteArray(60, '\0');
    ASSERT_EQ(expected.size(), 600);
    EXPECT_EQ(record.Bytes(), expected);
}

TEST(ZplRecord, LongTextsAreCutAndTextIsWindows1252) {
    const QString longPath = QStringLiteral("/") + QString(120, u'p');
    const GridRow row = RowOf({"", "Caf\xC3\xA9 \xE2\x82\xAC \xE6\x97\xA5", "", "", "19745", "", "", "", "", "", "", "", ""});
    GridRow withPath = row;
    withPath.Set(6, longPath);
    ZplRecord record;
    record.Fill(withPath);
    EXPECT_EQ(record.Bytes().mid(0, 40), Padded("Caf\xE9 \x80 ?", 40));
    EXPECT_EQ(record.Bytes().mid(120, 5), QByteArray("19745"));
    EXPECT_EQ(record.Bytes().mid(140, 100), longPath.left(100).toLatin1());
}

TEST(ZplRecord, AReadRecordsReservedFieldsGoOutWithTheNextWrite) {
    QByteArray read = QByteArray(540, 'x') + Padded("RESERVED", 10) + Padded("FIFTY", 50);
    ZplRecord record;
    record.Load(read);
    record.Fill(RowOf({"", "T", "A", "", "", "", "", "", "", "", "", "", ""}));
    EXPECT_EQ(record.Bytes().mid(540), read.mid(540));
    EXPECT_EQ(record.Bytes().mid(0, 40), Padded("T", 40));
}

TEST(ZplRecord, ARecordFillsARowBlanksAndAllWithItsNumberTwiceAndColumn11Untouched) {
    QByteArray bytes(600, ' ');
    bytes.replace(0, 5, "Title");
    bytes.replace(125, 3, "ID3");
    bytes.replace(140, 9, "/a - b.mp");
    bytes.replace(240, 3, "pic");
    bytes.replace(340, 3, "lyr");
    bytes[599] = '\0';
    ZplRecord record;
    record.Load(bytes);
    GridRow row;
    row.Set(11, QStringLiteral("old"));
    record.ToRow(row, 3);
    EXPECT_EQ(row[0], u"3");
    EXPECT_EQ(row[12], u"3");
    EXPECT_EQ(row[11], u"old");
    EXPECT_EQ(row[1], QString(QStringLiteral("Title") + QString(35, u' ')));
    EXPECT_EQ(row[6].size(), 100);
    EXPECT_TRUE(row[6].startsWith(u"/a - b.mp"));
    EXPECT_EQ(row[7].toString().trimmed(), u"ID3");
    EXPECT_EQ(row[9].toString().trimmed(), u"pic");
    EXPECT_EQ(row[8].toString().trimmed(), u"lyr");
    EXPECT_EQ(ZplRecordCount(1799), 2);
    EXPECT_EQ(ZplRecordCount(0), 0);
}

// ---- M3U ---------------------------------------------------------------------

struct M3uRead {
    SongGrid grid;
    int32_t end = 0;
    int error = 0;
    explicit M3uRead(const QByteArray& bytes) {
        grid.SetRows(50);
        grid.SetTextMatrix(1, 3, QStringLiteral("catalogue"));
        error = ErrorOf([&] { ReadM3uRows(bytes, grid, end); });
    }
    QString Cell(int r, int c) const { return grid.TextMatrix(r, c); }
};

TEST(M3uReader, PathsBecomeRowsWithArtistAndTitleFromTheNameAndExtinfLinesAreSkipped) {
    M3uRead m("#EXTINF:200,ignored title\r\nC:\\Music\\ABBA - Waterloo.mp3\r\n"
              "/home/u/music/Queen -  Bohemian Rhapsody .mp3\r\n");
    EXPECT_EQ(m.error, 0);
    EXPECT_EQ(m.end, 3);
    EXPECT_EQ(m.grid.Rows(), 3);
    EXPECT_EQ(m.Cell(0, 1), QStringLiteral("SONG:"));
    EXPECT_EQ(m.Cell(0, 2), QStringLiteral("ARTIST:"));
    EXPECT_EQ(m.Cell(0, 6), QStringLiteral("PATH:"));
    EXPECT_EQ(m.Cell(1, 6), QStringLiteral("C:\\Music\\ABBA - Waterloo.mp3"));
    EXPECT_EQ(m.Cell(1, 2), QStringLiteral("ABBA"));
    EXPECT_EQ(m.Cell(1, 1), QStringLiteral("Waterloo"));
    EXPECT_EQ(m.Cell(1, 3), QString());  // the catalogue's rows are gone
    EXPECT_EQ(m.Cell(2, 2), QStringLiteral("Queen"));
    EXPECT_EQ(m.Cell(2, 1), QStringLiteral("Bohemian Rhapsody"));
}

TEST(M3uReader, ItsOwnHeaderEndsTheReadAsAPathWithoutAHyphen) {
    M3uRead m(M3uHeader() + M3uEntry(200, QStringLiteral("Waterloo"), QStringLiteral("/m/ABBA - Waterloo.mp3")));
    EXPECT_EQ(m.error, 5);
    // The header went into the first row before its name failed.
    EXPECT_EQ(m.Cell(1, 6), QStringLiteral("#EXTM3U"));
    EXPECT_EQ(m.Cell(1, 2), QStringLiteral("EXTM3U"));  // the first character is never a separator
    EXPECT_EQ(m.end, 2);
    EXPECT_EQ(m.grid.Rows(), 2);
}

TEST(M3uReader, ANameWithTheHyphenInItsLastFourCharactersFailsAfterTheRowsBeforeIt) {
    M3uRead m("/m/A - B.mp3\r\n/m/Song.m-p3\r\n/m/C - D.mp3\r\n");
    EXPECT_EQ(m.error, 5);
    EXPECT_EQ(m.Cell(1, 1), QStringLiteral("B"));
    EXPECT_EQ(m.Cell(2, 6), QStringLiteral("/m/Song.m-p3"));
    EXPECT_EQ(m.end, 3);
    // A hyphen just before the extension leaves an empty title.
    M3uRead empty("/m/Artist-.mp3\r\n/m/X - Y.mp3\r\n");
    EXPECT_EQ(empty.error, 0);
    EXPECT_EQ(empty.Cell(1, 2), QStringLiteral("Artist"));
    EXPECT_EQ(empty.Cell(1, 1), QString());
}

TEST(M3uReader, ShortLinesAreGluedToTheNextOneWithTheLineFeedInside) {
    M3uRead m("a.mp3\r\n/m/X - Y.mp3\r\n/m/P - Q.mp3\r\n");
    EXPECT_EQ(m.error, 0);
    EXPECT_EQ(m.end, 3);
    EXPECT_EQ(m.Cell(1, 6), QStringLiteral("a.mp3\n/m/X - Y.mp3"));
    EXPECT_EQ(m.Cell(1, 2), QStringLiteral("X"));
    EXPECT_EQ(m.Cell(2, 6), QStringLiteral("/m/P - Q.mp3"));
}

TEST(M3uReader, ALineLongerThanTheWindowIsReadFromItsLast197Characters) {
    const QByteArray longPath = "/" + QByteArray(230, 'd') + "/Artist - Title.mp3";
    M3uRead m(longPath + "\r\n\r\n/m/X - Y.mp3\r\n");
    EXPECT_EQ(m.error, 0);
    EXPECT_EQ(m.end, 3);
    EXPECT_EQ(m.Cell(1, 6), QString::fromLatin1(longPath.right(197)));
    EXPECT_EQ(m.Cell(1, 1), QStringLiteral("Title"));
    EXPECT_EQ(m.Cell(2, 6), QStringLiteral("/m/X - Y.mp3"));
}

TEST(M3uReader, BadBytesGiveNoRowsOrTheirOwnRowsButNeverHang) {
    // Under 10 bytes: one empty row.
    M3uRead tiny("/a - b\r\n");
    EXPECT_EQ(tiny.end, 1);
    EXPECT_EQ(tiny.grid.Rows(), 2);
    // A last line without its line end is not read.
    M3uRead unended("/m/A - B.mp3\r\n/m/C - D.mp3");
    EXPECT_EQ(unended.end, 2);
    // Endless text with no line end at all.
    M3uRead endless(QByteArray(5 << 20, 'x'));
    EXPECT_EQ(endless.end, 1);
    EXPECT_EQ(endless.error, 0);
    // Lone CRs and LFs are text; NUL bytes are characters like any other.
    const char oddBytes[] = "/m/A\0 - B\0.mp3\r\n\n\r\r/m/C - D.mp3\r\n";
    M3uRead odd(QByteArray(oddBytes, sizeof oddBytes - 1));
    EXPECT_EQ(odd.error, 0);
    EXPECT_EQ(odd.end, 3);
    EXPECT_EQ(odd.Cell(1, 2), QString(QStringLiteral("A") + QChar(0)));
    EXPECT_EQ(odd.Cell(2, 6), QStringLiteral("\n\r\r/m/C - D.mp3"));
}

TEST(M3uWriter, EntriesAreExtendedLinesInWindows1252WithCrLf) {
    EXPECT_EQ(M3uHeader(), QByteArray("#EXTM3U\r\n"));
    EXPECT_EQ(M3uEntry(215, QStringLiteral("Caf\u00e9 \u20ac"), QStringLiteral("/m/A - Caf\u00e9.mp3")),
              QByteArray("#EXTINF:215,Caf\xE9 \x80\r\n/m/A - Caf\xE9.mp3\r\n"));
    EXPECT_EQ(M3uEntry(-3, QString(), QString()), QByteArray("#EXTINF:-3,\r\n\r\n"));
}

}  // namespace
}  // namespace zor::testing
