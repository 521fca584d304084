// The play log: the fixed 80-byte line and the writers that append it to
// ZORjuke.log in the program directory.
#include "playback/play_log.h"

#include "catalogue/song_grid.h"
#include "platform/testing/fakes.h"
#include "shell/jukebox.h"
#include "tests/support/disk_files.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

QByteArray Blanks(int n) { return QByteArray(n, ' '); }

QByteArray Line(const QByteArray& time, const QByteArray& date, const QByteArray& song, const QByteArray& artist,
                const QByteArray& year) {
    auto field = [](const QByteArray& text, int width) { return text.leftJustified(width, ' ', true); };
    return field(time, 12) + field(date, 10) + field(song, 30) + field(artist, 20) + field(year, 6) + "\r\n";
}

// The writers below show a plain line and a cut, accented title.
TEST(PlayLogRecord, EightyBytesInFixedColumnsCutNeverWrappedInTheWindowsCodePage) {
    // Every field over its width is cut where it ends; nothing spills into
    // the next column or the line end.
    const QByteArray cut = EncodeLogRecord(
        {QString(13, u'T'), QString(11, u'D'), QStringLiteral("A title of thirty-one letters!X"), QString(21, u'='), "1974-75"});
    EXPECT_EQ(cut, QByteArray(12, 'T') + QByteArray(10, 'D') + "A title of thirty-one letters!" + QByteArray(20, '=') +
                       "1974-7\r\n");
    // Windows-1252 bytes: one a character, "?" for what the page lacks.
    EXPECT_EQ(EncodeLogRecord({{}, {}, QStringLiteral("Café “Ölmüß” €5 – ☃"), {}, {}}),
              Line("", "", "Caf\xE9 \x93\xD6lm\xFC\xDF\x94 \x80" "5 \x96 ?", "", ""));
    // An empty record is a blank line, its end kept.
    EXPECT_EQ(EncodeLogRecord({}), Blanks(78) + "\r\n");
}

struct PlayLogTest : ::testing::Test {
    QTemporaryDir dir;
    TestPlatform tp;
    Jukebox j{tp.platform};
    SongGrid grid;
    QString log() const { return j.ProgramFile(QStringLiteral("ZORjuke.log")); }
    void SetUp() override {
        j.ProgramDir = dir.path();
        std::vector<GridRow> rows(3);
        rows[2].Set(1, QStringLiteral("A title of thirty-one letters!X"));
        rows[2].Set(2, QStringLiteral("Mötley Crüe"));
        rows[2].Set(3, QStringLiteral("an album"));
        rows[2].Set(4, QStringLiteral("1989"));
        grid.SetAllRows(std::move(rows));
        grid.SetRow(2);
        grid.SetCol(6);
    }
};

TEST_F(PlayLogTest, LinesAreAppendedAfterWhateverTheFileHolds) {
    j.settings.LogActivity = 1;
    // A log left by an earlier run, not even a whole number of lines long.
    const QByteArray earlier = QByteArray("old line\r\n").repeated(9) + "tail";
    ASSERT_TRUE(WriteFileBytes(log(), earlier));
    const QByteArray time = LogTimeText(tp.clock.now).toLatin1(), date = LogDateText(tp.clock.now).toLatin1();
    LogProgramStart(j);
    LogSongStart(j, grid);
    tp.clock.Advance(3600);
    const QByteArray later = LogTimeText(tp.clock.now).toLatin1();
    LogProgramStop(j);
    const QByteArray bytes = FileBytes(log());
    ASSERT_EQ(bytes.size(), earlier.size() + 6 * kLogLineBytes);
    EXPECT_TRUE(bytes.startsWith(earlier));
    QList<QByteArray> lines;
    for (qsizetype at = earlier.size(); at < bytes.size(); at += kLogLineBytes) lines << bytes.mid(at, kLogLineBytes);
    EXPECT_EQ(lines[0], Line(time, date, "ZOR JUKEBOX START:", "", ""));
    EXPECT_EQ(lines[1], Line("Time:", "Date:", "Song:", "Artist:", "Year:"));
    EXPECT_EQ(lines[2], QByteArray(78, '=') + "\r\n");
    EXPECT_EQ(lines[3], Line(time, date, "A title of thirty-one letters!", "M\xF6tley Cr\xFC" "e", "1989"));
    EXPECT_EQ(lines[4], Line(later, date, "ZOR JUKEBOX STOP.", "", ""));
    EXPECT_EQ(lines[5], Blanks(78) + "\r\n");
    // The grid's current cell walked over the three columns and ends on the title.
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Col(), 1);
}

TEST_F(PlayLogTest, NothingIsWrittenWhileLoggingIsOffAndALogThatCannotBeWrittenIsPassedOverQuietly) {
    j.settings.LogActivity = 0;
    LogProgramStart(j);
    LogSongStart(j, grid);
    LogProgramStop(j);
    EXPECT_FALSE(QFile::exists(log()));
    j.settings.LogActivity = 1;
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("ZORjuke.log")));
    EXPECT_NO_THROW(LogProgramStart(j));
    EXPECT_NO_THROW(LogSongStart(j, grid));
    j.ProgramDir = dir.filePath(QStringLiteral("gone"));
    EXPECT_NO_THROW(LogProgramStop(j));
    EXPECT_FALSE(QFile::exists(j.ProgramFile(QStringLiteral("ZORjuke.log"))));
}

}  // namespace
}  // namespace zor::testing
