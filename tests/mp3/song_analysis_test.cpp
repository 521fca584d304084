// The four callers of the analyser on the real main window: which grid's
// cell each one reads, the song line it leaves in the message line, the box
// each one shows for a missing file, and what the editor's analysis writes.
#include "mp3/ui/song_analysis.h"
#include "tests/support/form_harness.h"

#include <QFile>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

struct SongAnalysisTest : ::testing::Test {
    FormHarness h;
    QString song, missing;

    void SetUp() override {
        song = h.inst.home + QStringLiteral("/Band - Tune.mp3");
        missing = h.inst.home + QStringLiteral("/gone.mp3");
        QFile f(song);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(QByteArray::fromHex("fffb7000").leftJustified(65 * 12000, '\0'));  // 96 kbit/s, 65 seconds
        f.close();
        TestInstallation::AddSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")),
                                   {{"  Tune ", "Band  ", "", "", "", song, "", "", "", "128"},
                                    {"Other", "Nobody", "", "", "", missing, "", "", "", "128"}});
        h.inst.EditSettings([](Settings& s) { s.SortAtStart = 0; });
        ASSERT_TRUE(h.Start());
    }
    Form1& f() { return h.form(); }
    void OnRow(SongGrid& g, int row) {
        g.SetRow(row);
        g.SetCol(6);
    }
};

TEST_F(SongAnalysisTest, AStartingSongShowsItsLineInGreenAndLeavesTheGridOnTheArtist) {
    OnRow(f().MFGrid1, 1);
    AnalyseGridSong(f(), {.ShowSongInfoLine = true});
    EXPECT_EQ(f().Text1->text(), QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05"));
    EXPECT_EQ(f().j.engine.SongInfoLine, f().Text1->text());
    EXPECT_EQ(f().Text1->palette().color(QPalette::Text), QColor(0, 255, 0));
    EXPECT_EQ(f().MFGrid1.Col(), 2);
    f().j.Language = QStringLiteral("0");
    OnRow(f().MFGrid1, 1);
    AnalyseGridSong(f(), {.ShowSongInfoLine = true});
    EXPECT_EQ(f().Text1->text(), QStringLiteral("> Tune - Band,  96 kb/s.; Duur: 1:05"));

    // An inventory's pass writes nothing into the message line.
    f().ShowMessage(kYellow, QStringLiteral("before"));
    OnRow(f().MFGrid1, 1);
    AnalyseGridSong(f(), {.InventoryRun = true});
    EXPECT_EQ(f().Text1->text(), QStringLiteral("before"));
}

// (How each caller tells of a missing file is the frame analyser's test.)
TEST_F(SongAnalysisTest, EachAnalyserReadsItsOwnGrid) {
    // The playlist grid holds the missing song on its current row, the
    // catalogue's grid the real one: only the playlist's analyser misses.
    f().MFgrid2.SetRows(2);
    f().MFgrid2.SetTextMatrix(1, 6, missing);
    OnRow(f().MFgrid2, 1);
    OnRow(f().MFGrid1, 1);
    EXPECT_TRUE(AnalysePlaylistSong(f(), {}).SongFileMissing);
    EXPECT_FALSE(AnalyseGridSong(f(), {}).SongFileMissing);
    EXPECT_TRUE(AnalyseGridSong(f(), {.SongPathOverride = missing}).SongFileMissing);
    // The file window and the editor read the catalogue's current row.
    OnRow(f().MFGrid1, 2);
    EXPECT_TRUE(AnalyseForFileWindow(f()).SongFileMissing);
    EXPECT_TRUE(AnalyseForEditor(f()).analysis.SongFileMissing);
}

TEST_F(SongAnalysisTest, APlaylistsPaddedCellsAndATagsZerosAreTakenAsTheNameAndTextTheyHold) {
    // A row as a .zpl file gives it back: every field padded with blanks;
    // the title as a tag pads it, with zeros.
    SongGrid& list = f().MFgrid2;
    list.SetRows(2);
    list.SetTextMatrix(1, 1, QStringLiteral("Tune") + QString(36, QChar(0)));
    list.SetTextMatrix(1, 2, QStringLiteral("Band") + QString(36, u' '));
    for (const QString& cell : {song + QString(100 - song.size(), u' '), song + QString(3, QChar(0)) + QStringLiteral("x")}) {
        list.SetTextMatrix(1, 6, cell);
        OnRow(list, 1);
        f().j.PlaylistActive = 1;
        EXPECT_FALSE(AnalysePlaylistSong(f(), {.ShowSongInfoLine = true}).SongFileMissing);
        EXPECT_EQ(f().Text1->text(), QStringLiteral("> Tune - Band,  96 kb/s.; Length: 1:05"));
    }
}

TEST_F(SongAnalysisTest, TheEditorsAnalysisShowsTheRateAndEmptiesTheStoredOne) {
    // The record reached is the one the row's record number names, counted
    // from 1: the second record for the first row here.
    OnRow(f().MFGrid1, 1);
    f().MFGrid1.SetTextMatrix(1, 11, QStringLiteral("2"));
    const EditorAnalysis e = AnalyseForEditor(f());
    EXPECT_EQ(e.encodingText, QStringLiteral(" 96 kb/s."));
    EXPECT_EQ(f().MFGrid1.TextMatrix(1, 10), e.encodingText);
    EXPECT_EQ(f().MFGrid1.Col(), 1);
    const auto rows = TestInstallation::ReadSongs(h.inst.File(QStringLiteral("Mp3data1.mdb")));
    EXPECT_EQ(rows[0][9], QStringLiteral("128"));
    EXPECT_EQ(rows[1][9], QString());
}

}  // namespace
}  // namespace zor::testing
