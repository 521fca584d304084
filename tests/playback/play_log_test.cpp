// The play log: the fixed 80-byte line and the writers that append it to
// ZORjuke.log in the program directory; then the viewer Form24, pages of 23
// lines read from the log as it lies on disk, whatever its size.
#include "playback/log_view.h"
#include "playback/play_log.h"
#include "playback/ui/form24.h"

#include "catalogue/song_grid.h"
#include "platform/testing/fakes.h"
#include "shell/jukebox.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_test.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

QByteArray Line(const QByteArray& time, const QByteArray& date, const QByteArray& song, const QByteArray& artist,
                const QByteArray& year) {
    auto field = [](const QByteArray& text, int width) { return text.leftJustified(width, ' ', true); };
    return field(time, 12) + field(date, 10) + field(song, 30) + field(artist, 20) + field(year, 6) + "\r\n";
}

// The writers below show a plain line, a blank one and a cut, accented title.
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
    EXPECT_EQ(lines[5], QByteArray(78, ' ') + "\r\n");
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

// ---- The viewer --------------------------------------------------------------

QByteArray SongLine(int n) {
    return EncodeLogRecord({"20:15", "22-11-2026", QStringLiteral("Song %1").arg(n), "Artist", "1999"});
}
QString LineText(int n) { return QString::fromLatin1(SongLine(n).chopped(2)); }
QByteArray SongLines(int from, int to) {
    QByteArray bytes;
    for (int n = from; n <= to; ++n) bytes += SongLine(n);
    return bytes;
}

TEST(LogView, LinesRoundHalvesToEvenAndReadsPastTheEndRepeatTheBuffer) {
    for (auto [bytes, lines] : {std::pair{40, 0}, {41, 1}, {120, 2}, {200, 2}}) EXPECT_EQ(LogLineCount(bytes), lines) << bytes;
    // A page begins with the file's bytes (log_fuzz); two lines left, the
    // last one read stands in every line after them.
    QByteArray buffer;
    QByteArray page = BuildLogPage(SongLines(29, 30), buffer);
    EXPECT_EQ(page.mid(22 * 80), SongLine(30));
    // A cut record overwrites the front of the buffer only.
    page = BuildLogPage(SongLine(5) + "ab", buffer);
    EXPECT_EQ(page.mid(80, 80), "ab" + SongLine(5).mid(2));
    // Nothing read yet and nothing to read: zero bytes, shown as blanks.
    QByteArray fresh("wrong size");
    EXPECT_EQ(LogPageText(BuildLogPage({}, fresh)), QString(23 * 80, u' '));
    EXPECT_EQ(LogPageText("caf\xE9\r\nx\ry\nz\x80\r\n"), QStringLiteral("café\nx\ny\nz€"));
}

TEST(LogColumns, TimeAndDateFitTwelveAndTenColumnsInTheLogsCodePage) {
    const QString time = QStringLiteral("20:15"), date = QStringLiteral("22-11-2026");
    EXPECT_EQ(FitLogColumn(QStringLiteral("8:15 PM"), 12, time), QStringLiteral("8:15 PM"));
    // Cut to 10, the C locale's date would lose a digit of its year.
    EXPECT_EQ(FitLogColumn(QStringLiteral("22 Nov 2026"), 10, date), date);
    // Signs the code page lacks would come out as "?".
    EXPECT_EQ(FitLogColumn(QStringLiteral("٨:١٥ م"), 12, time), time);
}

struct LogViewerTest : FormTest {
    QString log() { return h.inst.File(QStringLiteral("ZORjuke.log")); }
    void WriteLog(const QByteArray& bytes) { ASSERT_TRUE(WriteFileBytes(log(), bytes)); }
    // A log of `size` bytes with nothing written: sparse, so a full log costs no disk.
    void WriteEmptyLog(qint64 size) {
        WriteLog({});
        ASSERT_TRUE(QFile(log()).resize(size));
    }
    Form24* Open() {
        h.Click("Slog1");
        return h.form().findChild<Form24*>(QStringLiteral("Form24"));
    }
    static void Close(Form24* v) {
        v->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static QStringList Lines(Form24* v) { return v->Text1->toPlainText().split(u'\n'); }
    void SetUp() override { ASSERT_TRUE(h.Start()); }
};

TEST_F(LogViewerTest, TheScrollBarWalksThePagesReadAnewFromTheFile) {
    WriteLog(SongLines(1, 50));
    Form24* v = Open();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->VScroll1->maximum(), 51);
    ASSERT_EQ(Lines(v).size(), 23);
    EXPECT_EQ(Lines(v).last(), LineText(23));
    v->VScroll1->setValue(40);
    EXPECT_EQ(Lines(v)[0], LineText(41));
    // Lines written while the window is open are there at the next page.
    WriteLog(SongLines(1, 52));
    v->VScroll1->setValue(41);
    EXPECT_EQ(Lines(v)[10], LineText(52));
    // The menu again only brings the open window forward.
    EXPECT_EQ(Open(), v);
    EXPECT_EQ(v->VScroll1->value(), 41);
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(LogViewerTest, AMissingFullOrVanishingLogIsToldNeverCrashes) {
    Form24* v = Open();
    EXPECT_EQ(v->Text1->toPlainText(), QStringLiteral("LOG file not found"));
    Close(v);
    h.j().Language = QStringLiteral("0");
    v = Open();
    EXPECT_EQ(v->Text1->toPlainText(), QStringLiteral("LOG bestand niet gevonden"));
    Close(v);
    EXPECT_TRUE(h.boxes().shown.empty());
    WriteEmptyLog(80 * 32000 - 40);  // 31999.5 lines, to the even 32000
    v = Open();
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].flags, vbCritical + vbOKOnly);
    EXPECT_EQ(h.boxes().shown[0].text,
              QStringLiteral("ATTENTIE!\n\nHet LOG-bestand is vol!  \n\nVerplaats of wis ZORjuke.log zodat    \n"
                             "een nieuw log bestand wordt gemaakt. \n"));
    EXPECT_TRUE(v->Text1->toPlainText().isEmpty());
    Close(v);
    h.j().Language = QStringLiteral("1");
    Close(Open());
    EXPECT_TRUE(h.boxes().shown[1].text.startsWith(QStringLiteral("ATTENTION!\n\nThe LOG file is full!")));
    WriteEmptyLog(80 * 32000 - 41);
    EXPECT_EQ(Open()->VScroll1->maximum(), 32000);
    EXPECT_EQ(h.boxes().shown.size(), 2u);
    // Gone while shown: the run-time error's box, and the page stays.
    ASSERT_TRUE(QFile::remove(log()));
    Open()->VScroll1->setValue(2);
    ASSERT_EQ(h.boxes().shown.size(), 3u);
    EXPECT_TRUE(h.boxes().shown[2].text.startsWith(QStringLiteral("Run-time error '53':")));
    EXPECT_FALSE(QFile::exists(log()));
}

}  // namespace
}  // namespace zor::testing
