// The playlist files: the two formats on their own, the edges of the .zpl
// record's fields and the M3U reader's and writer's quirks on bytes; then
// through the main window, saving MFgrid2 as .zpl, opening both kinds, and
// the boxes of the dialogs' Cancel and the refused saves. The M3U files' road
// through the menus, and a list opened and played, are in
// playlist_road_test.cpp.
#include "playlists/ui/playlist_files.h"
#include "catalogue/song_grid.h"
#include "platform/cp1252.h"
#include "playlists/m3u_file.h"
#include "playlists/zpl_record.h"
#include "tests/support/disk_files.h"
#include "tests/support/errors.h"
#include "tests/support/form_test.h"

#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

GridRow RowOf(const std::array<const char*, kGridCols>& cells) {
    GridRow row;
    for (int c = 0; c < kGridCols; ++c) row.Set(c, QString::fromUtf8(cells[size_t(c)]));
    return row;
}

// ---- .zpl --------------------------------------------------------------------

// The layout of a whole record is proven by the saves below; here the edges
// of its fields.
TEST(ZplRecord, FieldsAreCutOrPaddedInWindows1252AndReservedBytesStayZeroBeforeAnyRead) {
    ZplRecord record;
    const QString longPath = QStringLiteral("/") + QString(120, u'p');
    GridRow row = RowOf({"", "Caf\xC3\xA9 \xE2\x82\xAC \xE6\x97\xA5", "", "", "19745", "", "", "", "", "", "", "", ""});
    row.Set(6, longPath);
    record.Fill(row);
    EXPECT_EQ(record.Bytes().mid(0, 40), QByteArray("Caf\xE9 \x80 ?").leftJustified(40, ' '));
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

// ---- Through the main window -------------------------------------------------

QByteArray Padded(const QString& text, int width) { return cp1252::Encode(text).leftJustified(width, ' ', true); }

// Every field filled, so a record shows each one in its place.
SongFields Song(int n) {
    const QString artist = QStringLiteral("Artist %1").arg(n);
    return {QStringLiteral("Song %1").arg(n), artist, QStringLiteral("Album of ") + artist, "1979", "Pop",
            QStringLiteral("/music/Artist %1 - Song %1.mp3").arg(n), "ID3", "lyrics.txt", "picture.jpg", "run.sh"};
}

// The record of a song as the file must hold it, laid out by hand.
QByteArray Record(const SongFields& s, const QByteArray& reserved = QByteArray(60, '\0')) {
    return Padded(s[0], 40) + Padded(s[1], 40) + Padded(s[2], 40) + Padded(s[3], 5) + Padded(s[6], 5) +
           Padded(s[4], 10) + Padded(s[5], 100) + Padded(s[8], 100) + Padded(s[7], 100) + Padded(s[9], 100) + reserved;
}

struct PlaylistFilesTest : FormTest {
    std::vector<SongFields> songs;
    FakeCommonDialog& dialog() { return h.inst.tp.dialog; }
    QString File(const char* name) { return h.inst.File(QString::fromLatin1(name)); }
    // Five songs, sorted on the title: table order.
    void SetUp() override {
        for (int n = 1; n <= 5; ++n) songs.push_back(Song(n));
        TestInstallation::AddSongs(File("Mp3data1.mdb"), songs);
        h.inst.EditSettings([](Settings& s) {
            s.SortAtStart = 1;
            s.SortDirection = 1;
            s.DirectPlay = 2;  // a playlist is shown, never started
        });
        ASSERT_TRUE(h.Start());
    }
    // Marks catalogue rows in this order and shows them as the playlist.
    void ShowPlaylistOf(std::initializer_list<int> rows) {
        MarkForPlaylist(f(), rows);
        h.Click("Playlist2");
        ASSERT_EQ(j().PlaylistActive, 1);
    }
    void SaveAs(const QString& path) {
        dialog().names = {path};
        h.Click("Save4");
    }
    void Open(const QString& path) {
        dialog().names = {path};
        f().Run(OpenPlaylistFile);
    }
    static void WriteFile(const QString& path, const QByteArray& bytes) { ASSERT_TRUE(WriteFileBytes(path, bytes)); }
    QString LastBox() { return h.boxes().shown.empty() ? QString() : h.boxes().shown.back().text; }
};

TEST_F(PlaylistFilesTest, SaveAsWritesEachPlaylistRowAsItsRecordAndSaysSoInGreen) {
    ShowPlaylistOf({4, 2, 5});
    const QString path = File("three.zpl");
    SaveAs(path);
    ASSERT_EQ(dialog().calls.size(), 1u);
    EXPECT_EQ(dialog().calls[0].initDir, h.inst.programDir + u'/');
    EXPECT_EQ(FileBytes(path), Record(songs[3]) + Record(songs[1]) + Record(songs[4]));
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist now saved."));
    EXPECT_EQ(f().MessageColour(), QColor(0, 255, 0));
}

TEST_F(PlaylistFilesTest, AShorterSaveLeavesTheOldTailAndTheReadCarriesReservedBytesIntoTheNextWrite) {
    // Five records whose reserved fields hold text, as another writer left them.
    const QByteArray reserved = Padded(QStringLiteral("RES10"), 10) + Padded(QStringLiteral("RES50"), 50);
    QByteArray five;
    for (const SongFields& s : songs) five += Record(s, reserved);
    const QString path = File("five.zpl");
    WriteFile(path, five + "tail shorter than a record");
    Open(path);
    EXPECT_EQ(j().PlaylistEnd, 6);
    // Three songs over the five: records 4 and 5 stay and come back.
    f().MFgrid2.SetRows(4);
    j().PlaylistEnd = 4;
    SaveAs(path);
    const QByteArray saved = FileBytes(path);
    EXPECT_EQ(saved.left(1800), Record(songs[0], reserved) + Record(songs[1], reserved) + Record(songs[2], reserved));
    EXPECT_EQ(saved.mid(1800), five.mid(1800) + "tail shorter than a record");
    Open(path);
    EXPECT_EQ(j().PlaylistEnd, 6);
}

TEST_F(PlaylistFilesTest, OpeningAZplFileTurnsTheWindowToThePlaylistWithTheFieldsBlanksAndAll) {
    const QString path = File("two.zpl");
    WriteFile(path, Record(songs[2]) + Record(songs[0]));
    Open(path);
    EXPECT_EQ(dialog().calls.at(0).filter,
              QStringLiteral("ZOR Playlists (*.zpl)|*.zpl|WinAmp M3U Playlists (*.m3u)|*.m3u|All Files (*.*)|*.*"));
    const SongGrid& list = f().MFgrid2;
    ASSERT_EQ(list.Rows(), 3);
    EXPECT_EQ(list.TextMatrix(2, 6), QString::fromLatin1(Padded(songs[0][5], 100)));
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(j().PlayMode, 1);
    EXPECT_EQ(j().SongCount, 2);
    EXPECT_TRUE(f().MFGrid1.Visible() && list.Visible());
    EXPECT_EQ(f().Text1->text(), QStringLiteral("Playlist now loaded. "));
    EXPECT_EQ(f().Text2->text(), QStringLiteral("3"));  // PlaylistEnd itself
    EXPECT_EQ(j().PlayStopped, 1);  // not started
}

TEST_F(PlaylistFilesTest, AnEmptyZplIsAnEmptyListCapitalsM3uAreRecordsAndAMissingFileEndsTheOpen) {
    const QString empty = File("empty.zpl");
    WriteFile(empty, {});
    Open(empty);
    EXPECT_EQ(j().PlaylistEnd, 1);
    EXPECT_EQ(j().PlaylistActive, 1);
    EXPECT_EQ(f().MFgrid2.Rows(), 1);
    // A name ending in capitals M3U is read as records too.
    const QString capitals = File("LIST.M3U");
    WriteFile(capitals, Record(songs[0]) + Record(songs[1]) + Record(songs[2]));
    Open(capitals);
    EXPECT_EQ(j().PlaylistEnd, 4);
    // A missing file ends the work with the catalogue hidden, and no box.
    Open(File("gone.zpl"));
    EXPECT_FALSE(f().MFGrid1.Visible());
    EXPECT_TRUE(LastBox().isEmpty());
}

// Each box by the line that tells it apart, one whole in each language.
TEST_F(PlaylistFilesTest, CancelAndRefusedSavesShowTheirBoxesAndWriteNothing) {
    f().Run(OpenPlaylistFile);
    EXPECT_TRUE(LastBox().contains(QStringLiteral("valid   \nPlaylist to be opened!")));
    h.Click("Save4");
    EXPECT_TRUE(LastBox().contains(QStringLiteral("valid  \nPlaylist name to be saved!")));
    h.Click("Save5");
    EXPECT_TRUE(LastBox().contains(QStringLiteral("valid M3U  \nPlaylist name to be saved!")));
    h.Click("Save3");
    EXPECT_EQ(LastBox(), QStringLiteral("ATTENTION!\n\nYou are NOT in Playlist mode!     \n\n"
                                        "Please first make a playlist and  \nthen click the Playlist button.   \n"));
    j().PlaylistActive = 1;
    j().Language = QStringLiteral("0");
    h.Click("Save3");
    EXPECT_EQ(LastBox(), QStringLiteral("ATTENTIE!\n\nDe Playlist is te kort! \n\n"
                                        "Een normale playlist bestaat minstens  \nuit 2 songs. \n"
                                        "Advies: voeg songs toe aan de playlist. \n"));
    ASSERT_EQ(h.boxes().shown.size(), 5u);
    for (const auto& box : h.boxes().shown) EXPECT_EQ(box.flags, vbCritical | vbOKOnly);
    EXPECT_FALSE(QFile::exists(File("MP3play1.zpl")));
}

TEST_F(PlaylistFilesTest, SavePlaylistWritesTheDefaultFileAndOneSongIsEnough) {
    ShowPlaylistOf({3});
    h.Click("Save3");
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(FileBytes(File("MP3play1.zpl")), Record(songs[2]));
    // In the playlist the open and save buttons work on playlist files.
    const QString path = File("button.zpl");
    dialog().names = {path};
    f().Command4->click();
    EXPECT_EQ(FileBytes(path), Record(songs[2]));
    dialog().names = {File("MP3play1.zpl")};
    f().Command3->click();
    EXPECT_EQ(dialog().calls.back().kind, QStringLiteral("open"));
    EXPECT_EQ(j().PlaylistEnd, 2);
}

}  // namespace
}  // namespace zor::testing
