// Opening, saving, clearing and compacting the catalogue through the main
// window, against real catalogue files.
#include "catalogue/ui/catalogue_ops.h"
#include "platform/runtime_error.h"
#include "tests/support/form_harness.h"
#include "tests/support/grid_columns.h"

#include <QFile>
#include <QLineEdit>
#include <QProgressBar>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

std::vector<SongFields> FiveSongs() {
    auto song = [](const char* title, const char* artist, const char* year) {
        SongFields s;
        s[0] = QString::fromLatin1(title);
        s[1] = QString::fromLatin1(artist);
        s[3] = QString::fromLatin1(year);
        s[5] = QStringLiteral("/music/") + s[1] + QStringLiteral(" - ") + s[0] + QStringLiteral(".mp3");
        s[6] = QStringLiteral(" Y");
        return s;
    };
    return {song("Waterloo", "abba", "1974"), song("Yesterday", "Beatles", "1965"), song("Zombie", "Cranberries", "1994"),
            song("Angie", "Rolling Stones", "1973"), song("Africa", "Toto", "1982")};
}

struct CatalogueTest : ::testing::Test {
    FormHarness h;
    QString catalogue() { return h.inst.File(QStringLiteral("Mp3data1.mdb")); }
    void StartWith(const std::vector<SongFields>& songs, int sortAtStart = 1, int direction = 1) {
        TestInstallation::AddSongs(catalogue(), songs);
        Settings s = h.inst.ReadSettings();
        static const char* const names[] = {"Nothing", "Song", "Artist", "Album", "Year", "Style", "Path"};
        s.SortAtStart = int16_t(sortAtStart);
        s.SortAtStartName = QString::fromLatin1(names[sortAtStart]);
        s.SortDirection = int16_t(direction);
        h.inst.WriteSettings(s);
        ASSERT_TRUE(h.Start());
    }
};

TEST_F(CatalogueTest, OpensSortedByTheStartColumnAndReportsIt) {
    StartWith(FiveSongs(), 2, 2);
    EXPECT_EQ(h.j().SongCount, 5);
    EXPECT_EQ(ColumnTexts(h.form().MFGrid1, 2),
              QStringList({"Toto", "Rolling Stones", "Cranberries", "Beatles", "abba"}));
    EXPECT_EQ(h.form().Text1->text(), QStringLiteral("Number of songs is: 5  -  Assorted by: Artist"));
    EXPECT_EQ(h.form().Text2->text(), QStringLiteral("5"));
    // Field 10 travels with its row: the grid still knows each row's record.
    EXPECT_EQ(h.form().MFGrid1.TextMatrix(1, 11), QStringLiteral("5"));
}

TEST_F(CatalogueTest, NoSortingLeavesTableOrderAtFirstThenSortsByTheMarkColumn) {
    StartWith(FiveSongs(), 0);
    EXPECT_EQ(ColumnTexts(h.form().MFGrid1, 1).first(), QStringLiteral("Waterloo"));
    // A later open in the same run sorts by column 0, the marks; marked rows
    // (numbers) come after the unmarked (empty) ones.
    h.form().MFGrid1.SetTextMatrix(3, 0, QStringLiteral("1"));
    OpenDatabase(h.form());
    EXPECT_EQ(ColumnTexts(h.form().MFGrid1, 1).first(), QStringLiteral("Waterloo"));
    EXPECT_EQ(ColumnTexts(h.form().MFGrid1, 0), QStringList({"", "", "", "", ""}));
}

TEST_F(CatalogueTest, TheMasterIsRefusedByItsExactNameOnly) {
    StartWith(FiveSongs());
    h.inst.tp.dialog.names = {h.inst.File(QStringLiteral("Mp3data0.mdb"))};
    h.Click("Open1");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].text,
              QStringLiteral("ATTENTION!\n\nYou may not use this Mp3data0.mdb database!    \n"
                             "It is intended for internal ZOR JUKEBOX use.        \nPlease select another database. \n"));
    EXPECT_EQ(h.form().MFGrid1.Rows(), 6);
    EXPECT_EQ(h.j().DatabaseFile, h.inst.File(QStringLiteral("Mp3data0.mdb")));
    const auto& call = h.inst.tp.dialog.calls.back();
    EXPECT_EQ(call.initDir, h.inst.programDir + u'/');
    EXPECT_EQ(call.filter, QStringLiteral("mdb databases (*.mdb)|*.mdb|All Files (*.*)|*.*"));

    // Another spelling of the same path is not caught.
    h.inst.tp.dialog.names = {h.inst.programDir + QStringLiteral("/./Mp3data0.mdb")};
    h.Click("Command3");
    EXPECT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.j().SongCount, 0);
}

TEST_F(CatalogueTest, CancellingTheOpenDialogSaysNoValidChoice) {
    StartWith(FiveSongs());
    h.Click("Open1");
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("ATTENTION!\n\nYou have not selected a valid   \n")));
    EXPECT_EQ(h.j().SongCount, 5);
}

TEST_F(CatalogueTest, SaveAsSwitchesToTheCopySoNewSongsGoOnlyThere) {
    StartWith(FiveSongs());
    const QString copy = h.inst.home + QStringLiteral("/party.mdb");
    h.inst.tp.dialog.names = {copy};
    h.Click("Save2");
    EXPECT_EQ(h.inst.tp.dialog.calls.back().title, QStringLiteral("ZOR JUKEBOX: Save Database As..."));
    EXPECT_EQ(h.j().DatabaseFile, copy);
    EXPECT_EQ(h.form().Text1->text(),
              QStringLiteral("Data saved in: ") + copy + QStringLiteral("  - This will now be your new working database!"));

    CatalogueStore& rs = h.form().Data1;
    rs.AddNew();
    rs.SetField(0, QStringLiteral("New Song"));
    rs.SetField(10, 6);
    rs.Update();
    EXPECT_EQ(TestInstallation::ReadSongs(copy).size(), 6u);
    EXPECT_EQ(TestInstallation::ReadSongs(catalogue()).size(), 5u);

    // Clearing now empties the copy and leaves the default catalogue alone.
    h.Click("Clear1");
    EXPECT_EQ(h.j().DatabaseFile, copy);
    EXPECT_EQ(TestInstallation::ReadSongs(copy).size(), 0u);
    EXPECT_EQ(TestInstallation::ReadSongs(catalogue()).size(), 5u);
    EXPECT_EQ(h.j().SongCount, 0);
    EXPECT_EQ(h.form().Text1->text(), QStringLiteral("Database Cleared."));
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
    EXPECT_TRUE(h.form().Data1.IsOpen());
    EXPECT_EQ(h.form().Data1.RecordCount(), 5);
}

TEST_F(CatalogueTest, ClearingWithoutTheMasterChangesNothing) {
    StartWith(FiveSongs());
    QFile::remove(h.inst.File(QStringLiteral("Mp3data0.mdb")));
    h.Click("Clear1");
    EXPECT_EQ(h.j().SongCount, 5);
    EXPECT_EQ(TestInstallation::ReadSongs(catalogue()).size(), 5u);
}

TEST_F(CatalogueTest, CompactionKeepsEveryRowAndReportsBothSizes) {
    std::vector<SongFields> many;
    for (int i = 0; i < 400; ++i) many.push_back(FiveSongs()[i % 5]);
    StartWith(many);
    // Deleted rows leave free pages behind for the compaction to drop.
    CatalogueStore& rs = h.form().Data1;
    for (int i = 0; i < 300; ++i) {
        rs.SetAbsolutePosition(0);
        rs.Delete();
    }
    const qint64 before = QFile(catalogue()).size();
    h.Click("Compact1");
    const qint64 after = QFile(catalogue()).size();
    EXPECT_LT(after, before);
    EXPECT_EQ(TestInstallation::ReadSongs(catalogue()).size(), 100u);
    EXPECT_FALSE(QFile::exists(h.inst.File(QStringLiteral("Mp3comp1.mdb"))));
    EXPECT_EQ(h.form().Text1->text(), QStringLiteral("Database %1 has been Compacted; Size was: %2 , now: %3 bytes.")
                                          .arg(catalogue())
                                          .arg(before)
                                          .arg(after));
    EXPECT_TRUE(rs.IsOpen());
}

TEST_F(CatalogueTest, AFileThatIsNoCatalogueLeavesTheEngineHint) {
    StartWith(FiveSongs());
    const QString junk = h.inst.home + QStringLiteral("/junk.mdb");
    const QString other = h.inst.home + QStringLiteral("/other.mdb");
    const QString readOnly = h.inst.home + QStringLiteral("/readonly.mdb");
    QFile f(junk);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(QByteArray(5000, 'x'));
    f.close();
    QFile::copy(h.inst.File(QStringLiteral("Mp3find0.mdb")), other);  // a database without MP3DATA
    QFile::copy(catalogue(), readOnly);
    QFile(readOnly).setPermissions(QFileDevice::ReadOwner);
    for (const QString& name : {junk, other, readOnly}) {
        SCOPED_TRACE(name.toStdString());
        h.inst.tp.dialog.names = {name};
        h.Click("Open1");
        EXPECT_TRUE(h.form().Text1->text().startsWith(QStringLiteral("IN CASE OF OBJECT OR CLASS ERROR")));
        EXPECT_EQ(h.form().MessageColour(), kDestructive);
        EXPECT_FALSE(h.form().Data1.IsOpen());
        EXPECT_EQ(h.j().SongCount, 0);
        // Later work on the store gets a run-time error box, not a crash.
        h.Click("Compact1");
    }
    EXPECT_EQ(QFile(junk).size(), 5000);
}

TEST_F(CatalogueTest, RenumberingIsAllOrNothing) {
    StartWith(FiveSongs());
    CatalogueStore& rs = h.form().Data1;
    rs.SetAbsolutePosition(1);
    rs.Delete();
    h.j().SongCount = 4;
    RenumberRecords(h.form());
    QStringList numbers;
    for (const auto& row : TestInstallation::ReadSongs(catalogue())) numbers << row[10];
    EXPECT_EQ(numbers, QStringList({"1", "2", "3", "4"}));

    // A walk that runs past the last row fails and leaves the old numbers.
    rs.SetAbsolutePosition(0);
    rs.Edit();
    rs.SetField(10, 40);
    rs.Update();
    h.j().SongCount = 5;
    EXPECT_THROW(RenumberRecordsByPosition(h.form()), RuntimeError);
    numbers.clear();
    for (const auto& row : TestInstallation::ReadSongs(catalogue())) numbers << row[10];
    EXPECT_EQ(numbers, QStringList({"40", "2", "3", "4"}));
    EXPECT_EQ(h.form().ProgressBar1->value(), 0);
}

}  // namespace
}  // namespace zor::testing
