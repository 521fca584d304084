// The play-log viewer Form24: pages of 23 lines read from the log as it lies
// on disk, whatever its size, and the log's time and date columns.
#include "platform/cp1252.h"
#include "playback/log_view.h"
#include "playback/play_log.h"
#include "playback/ui/form24.h"
#include "tests/support/form_harness.h"

#include <QCoreApplication>
#include <QFile>
#include <QPlainTextEdit>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

// The log line the writer makes for song n.
QByteArray SongLine(int n) {
    return EncodeLogRecord({QStringLiteral("20:15"), QStringLiteral("22-11-2026"), QStringLiteral("Song %1").arg(n),
                            QStringLiteral("Artist"), QStringLiteral("1999")});
}
QString LineText(int n) { return QString::fromLatin1(SongLine(n).chopped(2)); }

QByteArray SongLines(int from, int to) {
    QByteArray bytes;
    for (int n = from; n <= to; ++n) bytes += SongLine(n);
    return bytes;
}

TEST(LogView, LinesAreTheLengthOverEightyRoundedHalvesToEven) {
    EXPECT_EQ(LogLineCount(0), 0);
    EXPECT_EQ(LogLineCount(40), 0);   // half a line, to the even 0
    EXPECT_EQ(LogLineCount(41), 1);
    EXPECT_EQ(LogLineCount(119), 1);
    EXPECT_EQ(LogLineCount(120), 2);  // 1.5 to 2
    EXPECT_EQ(LogLineCount(200), 2);  // 2.5 to 2
    EXPECT_EQ(LogLineCount(80 * 32000 - 40), 32000);
    EXPECT_EQ(LogLineCount(80 * 32000 - 41), 31999);
    EXPECT_EQ(LogLineCount(-5), 0);
}

TEST(LogView, APageIsTwentyThreeRecordsAndReadsPastTheEndRepeatTheBuffer) {
    QByteArray buffer;
    // A whole page is the file's bytes as they stand.
    const QByteArray whole = SongLines(1, 30);
    EXPECT_EQ(BuildLogPage(whole.left(23 * 80), buffer), SongLines(1, 23));
    EXPECT_EQ(buffer, SongLine(23));

    // Two lines left: the last one read stands in every line after them.
    QByteArray page = BuildLogPage(SongLines(29, 30), buffer);
    ASSERT_EQ(page.size(), 23 * 80);
    EXPECT_EQ(page.left(160), SongLines(29, 30));
    EXPECT_EQ(page.mid(22 * 80), SongLine(30));

    // A cut record overwrites the front of the buffer only.
    page = BuildLogPage(SongLine(5) + "ab", buffer);
    EXPECT_EQ(page.mid(80, 80), "ab" + SongLine(5).mid(2));
    EXPECT_EQ(buffer, "ab" + SongLine(5).mid(2));

    // Nothing read yet and nothing to read: zero bytes, shown as blanks.
    QByteArray fresh("wrong size");
    page = BuildLogPage({}, fresh);
    EXPECT_EQ(page, QByteArray(23 * 80, '\0'));
    EXPECT_EQ(LogPageText(page), QString(23 * 80, u' '));
}

TEST(LogView, TheTextBreaksWhereTheRecordsBreakInTheWindowsCodePage) {
    EXPECT_EQ(LogPageText(SongLines(1, 2)), LineText(1) + u'\n' + LineText(2));
    EXPECT_EQ(LogPageText("caf\xE9\r\nx\ry\nz\x80"), QStringLiteral("café\nx\ny\nz€"));
}

TEST(LogColumns, TimeAndDateFitTwelveAndTenColumnsInTheLogsCodePage) {
    const QString time = QStringLiteral("20:15"), date = QStringLiteral("22-11-2026");
    EXPECT_EQ(FitLogColumn(QStringLiteral("8:15 PM"), 12, time), QStringLiteral("8:15 PM"));
    EXPECT_EQ(FitLogColumn(QStringLiteral("22.11.26"), 10, date), QStringLiteral("22.11.26"));
    // The C locale's date would lose the last digit of its year at 10.
    EXPECT_EQ(FitLogColumn(QStringLiteral("22 Nov 2026"), 10, date), date);
    EXPECT_EQ(FitLogColumn(QStringLiteral("8:15 E PASDITES"), 12, time), time);
    // Signs the code page lacks would come out as "?".
    EXPECT_EQ(FitLogColumn(QStringLiteral("٨:١٥ م"), 12, time), time);
    EXPECT_EQ(FitLogColumn(QStringLiteral("22\u200F/11\u200F/26"), 10, date), date);

    const QDateTime now(QDate(2026, 11, 22), QTime(20, 15));
    for (const QString& text : {LogTimeText(now), LogDateText(now)}) {
        EXPECT_FALSE(text.isEmpty());
        EXPECT_EQ(cp1252::Decode(cp1252::Encode(text)), text);
    }
    EXPECT_LE(LogTimeText(now).size(), 12);
    EXPECT_LE(LogDateText(now).size(), 10);
}

struct LogViewerTest : ::testing::Test {
    FormHarness h;
    QString log() { return h.inst.File(QStringLiteral("ZORjuke.log")); }
    void WriteLog(const QByteArray& bytes) {
        QFile f(log());
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(f.write(bytes), bytes.size());
    }
    // A log of `size` bytes without writing them all: a sparse file.
    void SizeLog(qint64 size) {
        QFile f(log());
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_TRUE(f.resize(size));
    }
    Form24* Open() {
        h.Click("Slog1");
        return h.form().findChild<Form24*>(QStringLiteral("Form24"));
    }
    // Closed for good: the window is deleted.
    static void Close(Form24* v) {
        v->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static QStringList Lines(Form24* v) { return v->Text1->toPlainText().split(u'\n'); }
    void SetUp() override { ASSERT_TRUE(h.Start()); }
};

TEST_F(LogViewerTest, AMissingLogIsSaidInTheLanguage) {
    Form24* v = Open();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->windowTitle(), QStringLiteral("ZOR JUKEBOX - LOGFILE"));
    EXPECT_EQ(v->Text1->toPlainText(), QStringLiteral("LOG file not found"));
    EXPECT_TRUE(h.boxes().shown.empty());
    Close(v);

    h.j().Language = QStringLiteral("0");
    EXPECT_EQ(Open()->Text1->toPlainText(), QStringLiteral("LOG bestand niet gevonden"));
    EXPECT_FALSE(QFile::exists(log()));
}

TEST_F(LogViewerTest, TheScrollBarWalksThePagesAndTheFileIsReadAnewEachTime) {
    WriteLog(SongLines(1, 50));
    Form24* v = Open();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->VScroll1->minimum(), 0);
    EXPECT_EQ(v->VScroll1->maximum(), 51);
    QStringList lines = Lines(v);
    ASSERT_EQ(lines.size(), 23);
    EXPECT_EQ(lines.first(), LineText(1));
    EXPECT_EQ(lines.last(), LineText(23));

    // Past the end the last line read stands in the rest of the page.
    v->VScroll1->setValue(40);
    lines = Lines(v);
    ASSERT_EQ(lines.size(), 23);
    EXPECT_EQ(lines[0], LineText(41));
    EXPECT_EQ(lines[9], LineText(50));
    EXPECT_EQ(lines[22], LineText(50));

    // Lines written while the window is open are there at the next page.
    {
        QFile f(log());
        ASSERT_TRUE(f.open(QIODevice::Append));
        f.write(SongLines(51, 52));
    }
    v->VScroll1->setValue(41);
    lines = Lines(v);
    EXPECT_EQ(lines[9], LineText(51));
    EXPECT_EQ(lines[10], LineText(52));

    // The menu again brings the open window forward; it is not loaded anew.
    EXPECT_EQ(Open(), v);
    EXPECT_EQ(v->VScroll1->value(), 41);
    EXPECT_EQ(h.form().findChildren<Form24*>().size(), 1);
    EXPECT_TRUE(h.boxes().shown.empty());
}

TEST_F(LogViewerTest, ALogThatIsNoMultipleOfEightyShowsShiftedText) {
    // An earlier line cut short by 30 bytes: every line after it stands 50
    // bytes into a page's record.
    const QByteArray bytes = SongLine(0).right(30) + SongLines(1, 100);
    WriteLog(bytes);
    Form24* v = Open();
    EXPECT_EQ(v->VScroll1->maximum(), 101);  // 8030 bytes: 100.375 lines
    QStringList lines = Lines(v);
    EXPECT_EQ(lines[0], QString::fromLatin1(SongLine(0).right(30).chopped(2)));
    EXPECT_EQ(lines[1], LineText(1));

    // A page starts at a multiple of 80, here in the middle of a line.
    v->VScroll1->setValue(1);
    lines = Lines(v);
    EXPECT_EQ(lines[0], LineText(1).mid(50));
    EXPECT_EQ(lines[1], LineText(2));

    // The last line's record holds only the file's last 30 bytes.
    v->VScroll1->setValue(100);
    EXPECT_TRUE(v->Text1->toPlainText().startsWith(LineText(100).mid(50) + u'\n'));
}

TEST_F(LogViewerTest, ALogOf32000LinesOrMoreIsTooBigToShow) {
    SizeLog(80 * 32000 - 41);  // 31999 lines: shown
    Form24* v = Open();
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_EQ(v->VScroll1->maximum(), 32000);
    Close(v);

    SizeLog(80 * 32000 - 40);  // 31999.5 lines, to the even 32000
    v = Open();
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_EQ(h.boxes().shown[0].title, QStringLiteral("ZOR JUKEBOX"));
    EXPECT_EQ(h.boxes().shown[0].flags, vbCritical + vbOKOnly);
    EXPECT_EQ(h.boxes().shown[0].text,
              QStringLiteral("ATTENTION!\n\nThe LOG file is full!  \n\nPlease move or delete the ZORjuke.log file  \n"
                             "in order for the ZOR JUKEBOX to create a new log file.  \n"));
    EXPECT_TRUE(v->Text1->toPlainText().isEmpty());
    EXPECT_EQ(v->VScroll1->maximum(), 0);
    Close(v);

    h.j().Language = QStringLiteral("0");
    Open();
    EXPECT_EQ(h.boxes().shown.back().text,
              QStringLiteral("ATTENTIE!\n\nHet LOG-bestand is vol!  \n\nVerplaats of wis ZORjuke.log zodat    \n"
                             "een nieuw log bestand wordt gemaakt. \n"));
}

TEST_F(LogViewerTest, ALogThatGoesWhileShownIsAnErrorBoxNotACrash) {
    WriteLog(SongLines(1, 30));
    Form24* v = Open();
    ASSERT_TRUE(QFile::remove(log()));
    v->VScroll1->setValue(2);
    ASSERT_EQ(h.boxes().shown.size(), 1u);
    EXPECT_TRUE(h.boxes().shown[0].text.startsWith(QStringLiteral("Run-time error '53':")));
    EXPECT_FALSE(QFile::exists(log()));
    EXPECT_EQ(Lines(v).first(), LineText(1));  // the page shown stays
}

}  // namespace
}  // namespace zor::testing
