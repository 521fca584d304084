// Opening, saving, clearing and compacting the catalogue through the main
// window, against real catalogue files.
#include "catalogue/ui/catalogue_ops.h"
#include "shell/ui/path_selector.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

std::vector<SongFields> FiveSongs() {
    return {{"Waterloo", "abba"}, {"Yesterday", "Beatles"}, {"Zombie", "Cranberries"}, {"Angie", "Rolling Stones"},
            {"Africa", "Toto"}};
}

struct CatalogueTest : ::testing::Test {
    FormHarness h;
    QString catalogue() { return h.inst.File(QStringLiteral("Mp3data1.mdb")); }
    Form1& form() { return h.form(); }
    void StartWith(const std::vector<SongFields>& songs, int sortAtStart = 1, int direction = 1) {
        TestInstallation::AddSongs(catalogue(), songs);
        h.inst.EditSettings([&](Settings& s) {
            s.SortAtStart = int16_t(sortAtStart);
            s.SortAtStartName = sortAtStart == 2 ? QStringLiteral("Artist") : QStringLiteral("Song");
            s.SortDirection = int16_t(direction);
        });
        ASSERT_TRUE(h.Start());
    }
    size_t Rows(const QString& file) { return TestInstallation::ReadSongs(file).size(); }
};

TEST_F(CatalogueTest, OpensSortedByTheStartColumnAndReportsIt) {
    StartWith(FiveSongs(), 2, 2);
    EXPECT_EQ(ColumnTexts(form().MFGrid1, 2), QStringList({"Toto", "Rolling Stones", "Cranberries", "Beatles", "abba"}));
    EXPECT_EQ(form().Text1->text(), QStringLiteral("Number of songs is: 5  -  Assorted by: Artist"));
    EXPECT_EQ(form().Text2->text(), QStringLiteral("5"));
    // Field 10 travels with its row: the grid still knows each row's record.
    EXPECT_EQ(form().MFGrid1.TextMatrix(1, 11), QStringLiteral("5"));
}

TEST_F(CatalogueTest, NoSortingLeavesTableOrderAtFirstThenSortsByTheMarkColumn) {
    StartWith(FiveSongs(), 0);
    EXPECT_EQ(ColumnTexts(form().MFGrid1, 1).first(), QStringLiteral("Waterloo"));
    // A later open in the same run sorts by column 0, the marks; marked rows
    // (numbers) come after the unmarked (empty) ones.
    form().MFGrid1.SetTextMatrix(3, 0, QStringLiteral("1"));
    OpenDatabase(form());
    EXPECT_EQ(ColumnTexts(form().MFGrid1, 1).first(), QStringLiteral("Waterloo"));
    EXPECT_EQ(ColumnTexts(form().MFGrid1, 0), QStringList(5, QString()));
}

TEST_F(CatalogueTest, CancelAndTheMasterAreRefusedTheMasterByItsExactNameOnly) {
    StartWith(FiveSongs());
    h.Click("Open1");  // cancelled
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("ATTENTION!\n\nYou have not selected a valid   \n")));
    EXPECT_EQ(h.j().SongCount, 5);
    // The catalogue in use keeps its name, so the file operations keep their target.
    EXPECT_EQ(h.j().DatabaseFile, catalogue());

    h.inst.tp.dialog.names = {h.inst.File(QStringLiteral("Mp3data0.mdb"))};
    h.Click("Open1");
    ASSERT_EQ(h.boxes().shown.size(), 2u);
    EXPECT_EQ(h.boxes().shown[1].text,
              QStringLiteral("ATTENTION!\n\nYou may not use this Mp3data0.mdb database!    \n"
                             "It is intended for internal ZOR JUKEBOX use.        \nPlease select another database. \n"));
    EXPECT_EQ(form().MFGrid1.Rows(), 6);

    // Another spelling of the same path is not caught.
    h.inst.tp.dialog.names = {h.inst.programDir + QStringLiteral("/./Mp3data0.mdb")};
    h.Click("Command3");
    EXPECT_EQ(h.boxes().shown.size(), 2u);
    EXPECT_EQ(h.j().SongCount, 0);
}

TEST_F(CatalogueTest, SaveAsSwitchesToTheCopySoClearingGoesOnlyThere) {
    StartWith(FiveSongs());
    // Typed without an extension: the dialog's filter gives it ".mdb".
    const QString copy = h.inst.home + QStringLiteral("/party.mdb");
    h.inst.tp.dialog.names = {h.inst.home + QStringLiteral("/party")};
    h.Click("Save2");
    EXPECT_EQ(h.j().DatabaseFile, copy);
    // (The store's own writes going to the copy: the compaction test.)
    h.Click("Clear1");
    EXPECT_EQ(Rows(copy), 0u);
    EXPECT_EQ(Rows(catalogue()), 5u);
    EXPECT_EQ(h.j().SongCount, 0);
}

TEST_F(CatalogueTest, SaveAsWithoutATargetOrToAnUnwritablePlaceKeepsTheWorkingCatalogue) {
    StartWith(FiveSongs());
    h.Click("Command4");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].text,
              QStringLiteral("ATTENTION!\n\nYou have not selected a valid  \ndatabase to be saved!          \n"
                             "Please try again.              \n"));
    h.inst.tp.dialog.names = {h.inst.home + QStringLiteral("/no/such/dir/x.mdb")};
    h.Click("Save2");
    ASSERT_EQ(h.boxes().shown.size(), 2u);
    EXPECT_TRUE(h.boxes().shown[1].text.startsWith(QStringLiteral("Run-time error '75'")));
    EXPECT_EQ(h.j().DatabaseFile, catalogue());
    EXPECT_EQ(form().Data1.RecordCount(), 5);

    // Clearing without the master to copy from changes nothing either.
    QFile::remove(h.inst.File(QStringLiteral("Mp3data0.mdb")));
    h.Click("Clear1");
    EXPECT_EQ(h.boxes().shown.size(), 2u);
    EXPECT_EQ(Rows(catalogue()), 5u);
}

// Compaction makes its copy beside the catalogue and renames it over it,
// reporting both sizes; a rename that fails (here as across file systems)
// leaves the catalogue whole and open, with nothing left behind.
TEST_F(CatalogueTest, CompactionKeepsEveryRowAndAFailedRenameKeepsTheCatalogueWhole) {
    StartWith(FiveSongs());
    const QString elsewhere = h.inst.home + QStringLiteral("/usb/party.mdb");
    QDir().mkpath(h.inst.home + QStringLiteral("/usb"));
    h.inst.tp.dialog.names = {elsewhere};
    h.Click("Save2");
    ASSERT_EQ(h.j().DatabaseFile, elsewhere);
    form().Data1.Delete();  // the row it stands on
    const qint64 before = QFile(elsewhere).size();
    h.Click("Compact1");
    EXPECT_EQ(Rows(elsewhere), 4u);
    EXPECT_EQ(form().Text1->text(), QStringLiteral("Database %1 has been Compacted; Size was: %2 , now: %3 bytes.")
                                        .arg(elsewhere)
                                        .arg(before)
                                        .arg(QFile(elsewhere).size()));

    form().Data1.Delete();
    h.inst.tp.files.FailNext(QStringLiteral("Rename"), 74);
    h.Click("Compact1");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("Run-time error '74'")));
    EXPECT_EQ(Rows(elsewhere), 3u);
    EXPECT_EQ(form().Data1.RecordCount(), 3);
    EXPECT_EQ(QDir(h.inst.home + QStringLiteral("/usb")).entryList(QDir::Files), QStringList({"party.mdb"}));
    EXPECT_FALSE(QFile::exists(h.inst.File(QStringLiteral("Mp3comp1.mdb"))));
    h.Click("Compact1");
    EXPECT_EQ(Rows(elsewhere), 3u);
    EXPECT_EQ(h.boxes().shown.size(), 1u);
}

// A file that is no catalogue leaves the engine's hint and none open (the
// kinds of such files are the store's tests); ADD is then refused in the
// message line, and the real catalogue opened after it shows all its rows.
TEST_F(CatalogueTest, AFileThatIsNoCatalogueLeavesTheEngineHintUntilTheNextOpen) {
    StartWith(FiveSongs());
    const QString junk = h.inst.home + QStringLiteral("/junk.mdb");
    ASSERT_TRUE(WriteFileBytes(junk, QByteArray(5000, 'x')));
    h.inst.tp.dialog.names = {junk, catalogue()};
    h.Click("Open1");
    EXPECT_TRUE(form().Text1->text().startsWith(QStringLiteral("IN CASE OF OBJECT OR CLASS ERROR")));
    EXPECT_EQ(form().MessageColour(), kDestructive);
    EXPECT_FALSE(form().Data1.IsOpen());
    // The count is as before the first open, so the empty-catalogue notice
    // stays away.
    EXPECT_EQ(h.j().SongCount, 1);
    EXPECT_EQ(form().Text2->text(), QString());
    // Later work on the store gets a run-time error box, not a crash, and
    // the timers none.
    h.Click("Compact1");
    EXPECT_EQ(FileBytes(junk), QByteArray(5000, 'x'));
    const size_t boxes = h.boxes().shown.size();
    h.Tick(250);
    EXPECT_EQ(h.boxes().shown.size(), boxes);

    h.Click("AddSongs");
    form().Frame3->SetPath(h.inst.home);
    form().Frame3->Command16->click();
    EXPECT_EQ(h.boxes().shown.size(), boxes);
    EXPECT_EQ(form().Text1->text(), QStringLiteral("No Database opened; ADD aborted!"));
    EXPECT_EQ(form().MessageColour(), kRed);

    h.Click("Open1");
    EXPECT_EQ(form().Text1->text(), QStringLiteral("Number of songs is: 5  -  Assorted by: Song"));
    EXPECT_TRUE(form().MFGrid1.Redraw());
    EXPECT_TRUE(form().MFGrid1.Visible());
}

}  // namespace
}  // namespace zor::testing
