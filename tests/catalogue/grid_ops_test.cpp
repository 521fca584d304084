// Marks, clicks, double sorts and removals in the catalogue grid, through
// the main window and against real catalogue files.
#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/grid_ops.h"
#include "catalogue/ui/song_grid_view.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

SongFields Song(const QString& title, const QString& artist) {
    return {title, artist, "", "", "Pop", "/music/" + artist + " - " + title + ".mp3", " Y"};
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
    // A click on a cell of the grid's view, or on a heading when `r` is 0.
    void ClickCell(int r, int c, Qt::MouseButton button = Qt::LeftButton) {
        SongGridView& view = *h.form().MFGrid1View;
        if (r == 0) {
            QHeaderView* header = view.horizontalHeader();
            const QPoint at(header->sectionViewportPosition(c) + header->sectionSize(c) / 2, header->height() / 2);
            QTest::mouseClick(header->viewport(), button, {}, at);
            return;
        }
        const QModelIndex i = view.model()->index(r - 1, c);
        view.scrollTo(i);
        QTest::mouseClick(view.viewport(), button, {}, view.visualRect(i).center());
    }
    QStringList TableColumn(int field) {
        QStringList out;
        for (const auto& row : TestInstallation::ReadSongs(catalogue())) out << row[size_t(field)];
        return out;
    }
};

TEST_F(GridOpsTest, MarksFollowTheDragsDirectionNeverRenumberAndGrowAPlaylistBeingBuilt) {
    StartWith(Songs(10));
    // Rows dragged from 9 up to 5, numbered by the right button.
    grid().Select(9, 3, 5, 3);
    ClickCell(2, 2, Qt::RightButton);
    EXPECT_EQ(Marks(), QStringList({"", "", "", "", "5", "4", "3", "2", "1", ""}));
    EXPECT_EQ(ColumnTexts(grid(), 12), Marks());

    // A second drag over marked rows numbers only the new ones, downwards;
    // any numeric text counts as a mark.
    grid().SetTextMatrix(1, 0, QStringLiteral(" 1e3 "));
    grid().Select(1, 2, 10, 2);
    h.Click("Mark1");
    EXPECT_EQ(Marks(), QStringList({" 1e3 ", "6", "7", "8", "5", "4", "3", "2", "1", "9"}));

    // The middle button clears them all.
    ClickCell(4, 4, Qt::MiddleButton);
    EXPECT_EQ(Marks(), QStringList(10, QString()));
    EXPECT_EQ(ColumnTexts(grid(), 12), QStringList(10, QString()));
    EXPECT_EQ(h.j().PlaylistEnd, 1);

    // A click in the play column marks its row, and grows a playlist being built.
    ClickCell(2, 12);
    EXPECT_EQ(Marks(), QStringList({"", "1"}) + QStringList(8, QString()));
    EXPECT_EQ(h.form().MFgrid2.Rows(), 1);  // no playlist being built

    h.form().playlist.PlaylistBuilding = 1;
    ClickCell(3, 12);
    ClickCell(3, 12);  // a marked row keeps its number and adds nothing
    ASSERT_EQ(h.form().MFgrid2.Rows(), 3);
    EXPECT_EQ(h.j().PlaylistEnd, 3);
    for (int c = 0; c < kGridCols; ++c) EXPECT_EQ(h.form().MFgrid2.TextMatrix(2, c), grid().TextMatrix(3, c)) << c;
}

TEST_F(GridOpsTest, AClickOnAHeadingOrInTheLastRowSortsByItsColumnAndNamesIt) {
    StartWith({Song("b", "Y"), Song("a", "Z"), Song("c", "X")}, 2);
    ClickCell(0, 11);
    EXPECT_EQ(ColumnTexts(grid(), 11), QStringList({"3", "2", "1"}));
    EXPECT_EQ(message(), QStringLiteral("The number songs files is: 3  -  Assorted by: [Reserved.]"));

    h.j().Language = QStringLiteral("0");
    ClickCell(3, 2);
    EXPECT_EQ(ColumnTexts(grid(), 2), QStringList({"Z", "Y", "X"}));
    EXPECT_EQ(message(), QStringLiteral("Het aantal songs is: 3  -  Gesorteerd op: Artist"));

    ClickCell(1, 1);  // elsewhere: no sort
    EXPECT_EQ(ColumnTexts(grid(), 2), QStringList({"Z", "Y", "X"}));
}

TEST_F(GridOpsTest, DoubleSortSortsTitlesRunByRunLeavingTheLastRowOut) {
    // Trailing blanks don't split a run.
    StartWith({Song("delta", "Abba"), Song("Alpha", "Toto"), Song("charlie", "Abba "), Song("bravo", "Abba"),
               Song("last", "Aaa"), Song("zulu", "Toto"), Song("echo", "Toto")});
    h.Click("Sorter3");
    // The Toto run reaches the last row, which stays where the artist sort put it.
    EXPECT_EQ(ColumnTexts(grid(), 1), QStringList({"last", "bravo", "charlie", "delta", "Alpha", "zulu", "echo"}));
    EXPECT_TRUE(grid().Visible());
    EXPECT_EQ(TableColumn(0), QStringList({"delta", "Alpha", "charlie", "bravo", "last", "zulu", "echo"}));

    // Descending turns both keys around.
    h.j().settings.SortDirection = 2;
    h.Click("Sorter3");
    EXPECT_EQ(ColumnTexts(grid(), 1), QStringList({"zulu", "echo", "Alpha", "delta", "charlie", "bravo", "last"}));
}

// A reopen asked for while the marked records are being deleted is refused:
// it would throw the deletions' transaction away.
TEST_F(GridOpsTest, DeletingMarkedRecordsRenumbersTheRestAndReopensRefusingARefreshMeanwhile) {
    StartWith(Songs(6));
    grid().SetCol(1);
    grid().Sort(2);  // the grid in another order than the table
    grid().Select(1, 1, 2, 1);  // songs 6 and 5
    NumberSelectedRows(h.form());
    grid().SetTextMatrix(5, 12, QStringLiteral("3"));  // song 2
    QString refused;
    h.inst.tp.events.onDoEvents = [&](int) {
        if (!refused.isNull() || !message().startsWith(QStringLiteral("Deleting selected Records; So far deleted: 1"))) return;
        h.Click("Refresh1");
        refused = message();
    };
    h.Click("DelRec2");
    EXPECT_EQ(refused, QStringLiteral("Busy with another task; this one is not started - Please Wait ...."));
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(TableColumn(0), QStringList({"Song 1", "Song 3", "Song 4"}));
    EXPECT_EQ(TableColumn(10), QStringList({"1", "2", "3"}));
    EXPECT_EQ(h.j().SongCount, 3);
    EXPECT_EQ(grid().Rows(), 4);
}

TEST_F(GridOpsTest, AFailedDeletionLeavesTheTableWhole) {
    StartWith(Songs(5));
    const QByteArray before = FileBytes(catalogue());
    for (int r = 1; r <= 5; ++r) grid().SetTextMatrix(r, 12, QStringLiteral("1"));
    // A record that isn't there, reached last: after four deletions.
    grid().SetTextMatrix(2, 11, QStringLiteral("0"));
    h.Click("DelRec2");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("Run-time error")));
    EXPECT_EQ(FileBytes(catalogue()), before);
    EXPECT_EQ(h.j().SongCount, 5);
    // The store still finds its rows: one record goes through the record
    // number of the current row.
    grid().SetRow(5);
    h.Click("DelRec1");
    EXPECT_EQ(TableColumn(10), QStringList({"1", "2", "3", "4"}));
}

// New on an empty catalogue counts one song in a grid of only its heading:
// the walks that trust the count meet the grid's run-time error, in its box,
// and the grid is shown again afterwards.
TEST_F(GridOpsTest, WalksPastTheGridsRowsAfterNewRaiseTheGridsErrorAndLeaveItShown) {
    StartWith({});
    h.Click("Nieuw");
    ASSERT_EQ(h.j().SongCount, 1);
    ASSERT_EQ(grid().Rows(), 1);
    for (const char* entry : {"DelRec2", "CleSel1"}) {
        h.boxes().shown.clear();
        h.Click(entry);
        ASSERT_EQ(h.boxes().shown.size(), 1u) << entry;
        EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("Run-time error '381'"))) << entry;
        EXPECT_TRUE(grid().Visible() && grid().Redraw()) << entry;
        EXPECT_EQ(h.j().SongCount, 1);
    }
    EXPECT_EQ(h.form().Data1.RecordCount(), 0);
}

TEST_F(GridOpsTest, ASongFileGoesOnlyOnYesAndWhenNothingHoldsIt) {
    const QString path = h.inst.home + QStringLiteral("/song.mp3");
    ASSERT_TRUE(WriteFileBytes(path, {}));
    StartWith({Song("t", "a")});
    grid().SetTextMatrix(1, 6, path);
    grid().SetRow(1);
    const auto deleteAnswering = [&](int answer) {
        h.boxes().answers = {answer};
        h.Click("DelFile1");
    };
    deleteAnswering(vbNo);
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].title + u'|' + h.boxes().shown[0].text,
              QStringLiteral("ZOR JUKEBOX - DELETE MP3|Delete this Mp3 file: \n") + path + QStringLiteral("\n\nAre you really sure?  "));
    EXPECT_TRUE(QFile::exists(path));

    {
        FileHold hold(h.inst.tp.platform.files, path);
        deleteAnswering(vbYes);
        EXPECT_TRUE(QFile::exists(path));
        EXPECT_TRUE(h.boxes().shown.back().text.startsWith(QStringLiteral("Run-time error")));
    }

    h.j().Language = QStringLiteral("0");
    deleteAnswering(vbYes);
    EXPECT_EQ(h.boxes().shown.back().title, QStringLiteral("ZOR JUKEBOX - Media-Player FOUT!"));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(TableColumn(0), QStringList({"t"}));  // the record stays

    deleteAnswering(vbYes);  // gone already
    EXPECT_EQ(message(), path + QStringLiteral(" : NIET gewist."));
}

}  // namespace
}  // namespace zor::testing
