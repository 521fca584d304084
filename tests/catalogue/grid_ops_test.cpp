// Marks, clicks, double sorts and removals in the catalogue grid, through
// the main window and against real catalogue files.
#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/grid_ops.h"
#include "catalogue/ui/song_grid_view.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QFile>
#include <QHeaderView>
#include <QTest>
#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

#include <tuple>

namespace zor::testing {
namespace {

SongFields Song(const QString& title, const QString& artist, const QString& style = QStringLiteral("Pop")) {
    SongFields s;
    s[0] = title;
    s[1] = artist;
    s[4] = style;
    s[5] = QStringLiteral("/music/") + artist + QStringLiteral(" - ") + title + QStringLiteral(".mp3");
    s[6] = QStringLiteral(" Y");
    return s;
}

std::vector<SongFields> Songs(int n) {
    std::vector<SongFields> songs;
    for (int i = 1; i <= n; ++i) songs.push_back(Song(QStringLiteral("Song %1").arg(i), QStringLiteral("Artist %1").arg(i)));
    return songs;
}

struct GridOpsTest : ::testing::Test {
    FormHarness h;
    QString catalogue() { return h.inst.File(QStringLiteral("Mp3data1.mdb")); }
    SongGrid& grid() { return h.form().MFGrid1; }
    QString message() { return h.form().Text1->text(); }
    // Starts on a catalogue in table order ("No sorting").
    void StartWith(const std::vector<SongFields>& songs, int direction = 1) {
        TestInstallation::AddSongs(catalogue(), songs);
        h.inst.EditSettings([direction](Settings& s) {
            s.SortAtStart = 0;
            s.SortDirection = int16_t(direction);
        });
        ASSERT_TRUE(h.Start());
    }
    QStringList Marks() { return ColumnTexts(grid(), 0); }
    SongGridView& view() { return *h.form().MFGrid1View; }
    QPoint CellCentre(int r, int c) {
        const QModelIndex i = view().model()->index(r - 1, c);
        view().scrollTo(i);
        return view().visualRect(i).center();
    }
    void ClickCell(int r, int c, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view().viewport(), button, {}, CellCentre(r, c));
    }
    void Drag(int r1, int r2, int c) {
        QTest::mousePress(view().viewport(), Qt::LeftButton, {}, CellCentre(r1, c));
        QTest::mouseMove(view().viewport(), CellCentre(r2, c));
        QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, CellCentre(r2, c));
    }
    void ClickHeading(int c) {
        QHeaderView* header = view().horizontalHeader();
        const QPoint at(header->sectionViewportPosition(c) + header->sectionSize(c) / 2, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
    }
    QStringList TableColumn(int field) {
        QStringList out;
        for (const auto& row : TestInstallation::ReadSongs(catalogue())) out << row[size_t(field)];
        return out;
    }
};

TEST_F(GridOpsTest, MarksFollowTheDragsDirectionAndNeverRenumber) {
    StartWith(Songs(10));
    // A drag from row 9 up to row 5, numbered by the right button.
    Drag(9, 5, 3);
    EXPECT_EQ(std::make_tuple(grid().Row(), grid().RowSel()), std::make_tuple(9, 5));
    ClickCell(2, 2, Qt::RightButton);
    EXPECT_EQ(Marks(), QStringList({"", "", "", "", "5", "4", "3", "2", "1", ""}));
    EXPECT_EQ(ColumnTexts(grid(), 12), Marks());
    EXPECT_EQ(h.j().PlaylistEnd, 6);

    // A second drag over marked rows numbers only the new ones, downwards.
    grid().Select(4, 2, 10, 2);
    h.Click("Mark1");
    EXPECT_EQ(Marks(), QStringList({"", "", "", "6", "5", "4", "3", "2", "1", "7"}));

    // Any numeric text counts as a mark.
    grid().SetTextMatrix(1, 0, QStringLiteral(" 1e3 "));
    grid().Select(1, 1, 2, 1);
    NumberSelectedRows(h.form());
    EXPECT_EQ(Marks().mid(0, 2), QStringList({" 1e3 ", "8"}));

    // Sorting by the mark column orders the marks as numbers.
    grid().SetCol(0);
    grid().Sort(1);
    EXPECT_EQ(Marks(), QStringList({"", "1", "2", "3", "4", "5", "6", "7", "8", " 1e3 "}));

    // The middle button clears them all.
    ClickCell(4, 4, Qt::MiddleButton);
    EXPECT_EQ(Marks(), QStringList(10, QString()));
    EXPECT_EQ(ColumnTexts(grid(), 12), QStringList(10, QString()));
    EXPECT_EQ(h.j().PlaylistEnd, 1);
    EXPECT_EQ(message(), QStringLiteral("Selections cleared."));
}

TEST_F(GridOpsTest, ClearingMarksOfAnEmptyCatalogueDoesNothing) {
    StartWith({});
    h.Click("CleSel1");
    EXPECT_EQ(grid().Rows(), 1);
    EXPECT_EQ(h.j().PlaylistEnd, 1);
}

TEST_F(GridOpsTest, AClickInThePlayColumnMarksTheRowAndGrowsAPlaylistBeingBuilt) {
    StartWith(Songs(4));
    ClickCell(2, 12);
    EXPECT_EQ(Marks(), QStringList({"", "1", "", ""}));
    EXPECT_EQ(h.form().Text2->text(), QStringLiteral("2"));
    EXPECT_EQ(h.form().Lable1->text(), QStringLiteral("     Record:"));
    EXPECT_EQ(h.form().MFgrid2.Rows(), 1);  // no playlist being built

    h.j().PlaylistBuilding = 1;
    ClickCell(3, 12);
    ASSERT_EQ(h.form().MFgrid2.Rows(), 3);
    for (int c = 0; c < kGridCols; ++c) EXPECT_EQ(h.form().MFgrid2.TextMatrix(2, c), grid().TextMatrix(3, c)) << c;
    // A marked row keeps its number and adds nothing.
    ClickCell(3, 12);
    EXPECT_EQ(h.j().PlaylistEnd, 3);
    EXPECT_EQ(h.form().MFgrid2.Rows(), 3);
}

TEST_F(GridOpsTest, AClickOnAHeadingOrInTheLastRowSortsByItsColumnAndNamesIt) {
    StartWith({Song(QStringLiteral("b"), QStringLiteral("Y")), Song(QStringLiteral("a"), QStringLiteral("Z")),
               Song(QStringLiteral("c"), QStringLiteral("X"))},
              2);
    ClickHeading(11);
    EXPECT_EQ(std::make_tuple(grid().Row(), grid().RowSel(), grid().Col(), grid().ColSel()), std::make_tuple(1, 3, 11, 11));
    EXPECT_EQ(ColumnTexts(grid(), 11), QStringList({"3", "2", "1"}));
    EXPECT_EQ(message(), QStringLiteral("The number songs files is: 3  -  Assorted by: [Reserved.]"));
    EXPECT_EQ(h.j().SortAtStartCopy, 11);

    h.j().Language = QStringLiteral("0");
    ClickCell(3, 2);
    EXPECT_EQ(ColumnTexts(grid(), 2), QStringList({"Z", "Y", "X"}));
    EXPECT_EQ(message(), QStringLiteral("Het aantal songs is: 3  -  Gesorteerd op: Artist"));
    EXPECT_EQ(h.form().Lable1->text(), QStringLiteral("     Regel:"));

    // A click elsewhere sorts nothing.
    ClickCell(1, 1);
    EXPECT_EQ(ColumnTexts(grid(), 2), QStringList({"Z", "Y", "X"}));
}

std::vector<SongFields> RunsOfArtists() {
    return {Song(QStringLiteral("delta"), QStringLiteral("Abba")),  Song(QStringLiteral("Alpha"), QStringLiteral("Toto")),
            Song(QStringLiteral("charlie"), QStringLiteral("Abba ")), Song(QStringLiteral("bravo"), QStringLiteral("Abba")),
            Song(QStringLiteral("zulu"), QStringLiteral("Toto")),    Song(QStringLiteral("echo"), QStringLiteral("Toto"))};
}

TEST_F(GridOpsTest, DoubleSortSortsTitlesRunByRunLeavingTheLastRowOut) {
    StartWith(RunsOfArtists());
    h.Click("Sorter3");
    // Trailing blanks don't split a run. The Toto run reaches the last row,
    // which stays where the artist sort put it.
    EXPECT_EQ(ColumnTexts(grid(), 1), QStringList({"bravo", "charlie", "delta", "Alpha", "zulu", "echo"}));
    EXPECT_EQ(message(), QStringLiteral("Sorting by Artist and Song done."));
    EXPECT_TRUE(grid().Visible());

    // The table keeps its order.
    EXPECT_EQ(TableColumn(0), QStringList({"delta", "Alpha", "charlie", "bravo", "zulu", "echo"}));
    h.Click("Refresh1");
    EXPECT_EQ(ColumnTexts(grid(), 1).first(), QStringLiteral("delta"));
}

TEST_F(GridOpsTest, DoubleSortDescendingTurnsBothKeysAround) {
    std::vector<SongFields> songs = RunsOfArtists();
    songs.push_back(Song(QStringLiteral("last"), QStringLiteral("Aaa")));
    StartWith(songs, 2);
    h.j().Language = QStringLiteral("0");
    h.Click("Sorter3");
    EXPECT_EQ(ColumnTexts(grid(), 1), QStringList({"zulu", "echo", "Alpha", "delta", "charlie", "bravo", "last"}));
    EXPECT_EQ(message(), QStringLiteral("Sorteren op Artiest en Song gereed."));
}

TEST_F(GridOpsTest, DoubleSortOfOneSongAndTheStyleSortsClosingText) {
    StartWith({Song(QStringLiteral("only"), QStringLiteral("One"))});
    h.Click("Sorter5");
    EXPECT_EQ(ColumnTexts(grid(), 1), QStringList({"only"}));
    EXPECT_EQ(message(), QStringLiteral("Sorting by Slyle and Song done."));
}

TEST_F(GridOpsTest, DeletingMarkedRecordsRenumbersTheRestAndReopens) {
    StartWith(Songs(6));
    grid().SetCol(1);
    grid().Sort(2);  // the grid in another order than the table
    grid().Select(1, 1, 2, 1);  // songs 6 and 5
    NumberSelectedRows(h.form());
    grid().SetTextMatrix(5, 12, QStringLiteral("3"));  // song 2
    h.Click("DelRec2");
    EXPECT_EQ(TableColumn(0), QStringList({"Song 1", "Song 3", "Song 4"}));
    EXPECT_EQ(TableColumn(10), QStringList({"1", "2", "3"}));
    EXPECT_EQ(h.j().SongCount, 3);
    EXPECT_EQ(grid().Rows(), 4);

    // One record, through the record number of the current row.
    grid().SetRow(2);
    h.Click("DelRec1");
    EXPECT_EQ(TableColumn(0), QStringList({"Song 1", "Song 4"}));
    EXPECT_EQ(TableColumn(10), QStringList({"1", "2"}));
    EXPECT_EQ(h.j().SongCount, 2);
    EXPECT_EQ(h.j().PlaylistEnd, 1);
}

TEST_F(GridOpsTest, AFailedDeletionLeavesTheTableWhole) {
    StartWith(Songs(5));
    const auto bytes = [&] {
        QFile f(catalogue());
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    };
    const QByteArray before = bytes();
    for (int r = 1; r <= 5; ++r) grid().SetTextMatrix(r, 12, QStringLiteral("1"));
    // A record that isn't there, reached last: after four deletions.
    grid().SetTextMatrix(2, 11, QStringLiteral("0"));
    h.Click("DelRec2");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("Run-time error")));
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(h.j().SongCount, 5);
    // The store still finds its rows.
    grid().SetRow(5);
    h.Click("DelRec1");
    EXPECT_EQ(TableColumn(10), QStringList({"1", "2", "3", "4"}));
}

TEST_F(GridOpsTest, ASongFileGoesOnlyOnYes) {
    const QString path = h.inst.home + QStringLiteral("/song.mp3");
    StartWith({Song(QStringLiteral("t"), QStringLiteral("a"))});
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    grid().SetTextMatrix(1, 6, path);
    grid().SetRow(1);

    h.boxes().answers = {vbNo};
    h.Click("DelFile1");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].text,
              QStringLiteral("Delete this Mp3 file: \n") + path + QStringLiteral("\n\nAre you really sure?  "));
    EXPECT_EQ(h.boxes().shown[0].title, QStringLiteral("ZOR JUKEBOX - DELETE MP3"));
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(message(), path + QStringLiteral(" : NOT deleted."));

    // A file the program holds open can't go: the box reports it, the file stays.
    {
        FileHold hold(h.inst.tp.platform.files, path);
        h.boxes().answers = {vbYes};
        h.Click("DelFile1");
        EXPECT_TRUE(QFile::exists(path));
        EXPECT_TRUE(h.boxes().shown.back().text.startsWith(QStringLiteral("Run-time error")));
    }

    h.j().Language = QStringLiteral("0");
    h.boxes().answers = {vbYes};
    h.Click("DelFile1");
    EXPECT_EQ(h.boxes().shown.back().title, QStringLiteral("ZOR JUKEBOX - Media-Player FOUT!"));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(message(), path + QStringLiteral(" : is gewist."));
    EXPECT_EQ(TableColumn(0), QStringList({"t"}));  // the record stays

    // Gone already: nothing to delete.
    h.boxes().answers = {vbYes};
    h.Click("DelFile1");
    EXPECT_EQ(message(), path + QStringLiteral(" : NIET gewist."));
}

}  // namespace
}  // namespace zor::testing
