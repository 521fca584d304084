// The play-log viewer Form24: pages of 23 lines read from the log as it lies
// on disk, whatever its size, and the log's time and date columns.
#include "playback/log_view.h"
#include "playback/play_log.h"
#include "playback/ui/form24.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"

#include <QCoreApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

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
    QByteArray buffer;
    EXPECT_EQ(BuildLogPage(SongLines(1, 30).left(23 * 80), buffer), SongLines(1, 23));
    // Two lines left: the last one read stands in every line after them.
    QByteArray page = BuildLogPage(SongLines(29, 30), buffer);
    EXPECT_EQ(page.left(160), SongLines(29, 30));
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

struct LogViewerTest : ::testing::Test {
    FormHarness h;
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

TEST_F(LogViewerTest, ALogThatIsNoMultipleOfEightyShowsShiftedText) {
    // An earlier line cut short: every line after it stands 50 bytes into a record.
    WriteLog(SongLine(0).right(30) + SongLines(1, 100));
    Form24* v = Open();
    EXPECT_EQ(v->VScroll1->maximum(), 101);  // 8030 bytes: 100.375 lines
    EXPECT_EQ(Lines(v)[1], LineText(1));
    v->VScroll1->setValue(1);
    EXPECT_EQ(Lines(v)[0], LineText(1).mid(50));
    EXPECT_EQ(Lines(v)[1], LineText(2));
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
    EXPECT_EQ(h.boxes().shown[1].text,
              QStringLiteral("ATTENTION!\n\nThe LOG file is full!  \n\nPlease move or delete the ZORjuke.log file  \n"
                             "in order for the ZOR JUKEBOX to create a new log file.  \n"));
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
