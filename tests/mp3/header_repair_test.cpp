// Header repair: the scan for the first frame start from position 2000 on,
// the 30000-byte copy, the whole repair of a song with junk put in front of
// it, and RemoveLeadIn from the main window.
#include "mp3/header_repair.h"
#include "mp3/mp3_frame.h"
#include "mp3/ui/header_repair_ops.h"
#include "platform/binary_file.h"
#include "platform/runtime_error.h"
#include "tests/support/disk_files.h"
#include "tests/support/form_harness.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

// `n` bytes that hold no frame start; `at` positions (1-based) get one.
QByteArray Junk(qint64 n, std::initializer_list<qint64> frameStartsAt = {}) {
    QByteArray b(n, '\0');
    // 255 and a byte below 224 by turns.
    for (qint64 i = 0; i < n; ++i) b[i] = char(i % 2 ? 0xD0 + i % 16 : 0xFF);
    for (qint64 p : frameStartsAt) {
        if (p >= 2) b[p - 2] = '\0';
        b[p - 1] = char(0xFF);
        b[p] = char(0xFB);
    }
    return b;
}

// A song that starts with its first frame (128 kbit/s, 44.1 kHz) and ends
// with its tag; between them, filler for two blocks of the copy and more.
QByteArray CleanSong() {
    return QByteArray("\xFF\xFB\x90\x64").leftJustified(70000, 'a') + "TAG" + QByteArray(125, 't');
}

TEST(RepairScan, OnlyAFrameStartFrom2000OnEndsTheLeadInElse3000) {
    int events = 0;
    // Frame starts before 2000 are passed over, each letting events through.
    EXPECT_EQ(RepairStart(Junk(5000, {1, 100, 1999, 2500, 2800}), [&events] { ++events; }), 2500);
    EXPECT_EQ(events, 4);
    EXPECT_EQ(RepairStart(Junk(5000, {2000}), nullptr), 2000);
    // None from 2000 to 2999: the scan stops at 3000, frame start or not.
    EXPECT_EQ(RepairStart(Junk(5000, {1, 3000}), nullptr), 3000);
    EXPECT_EQ(RepairStart(Junk(100, {10}), nullptr), 3000);
    // 255 then 224 or more, and nothing looser.
    EXPECT_TRUE(IsRepairFrameStart("\xFF\xE0", 1));
    EXPECT_FALSE(IsRepairFrameStart("\xFF\xDF", 1));
    EXPECT_FALSE(IsRepairFrameStart("\xFF", 1));
}

TEST(RepairCopy, BlocksOf30000ThenTheRestExceptALastByteAtTheBlocksEnd) {
    QTemporaryDir dir;
    FileSystem fs;
    const QString in = dir.filePath(QStringLiteral("in")), out = dir.filePath(QStringLiteral("out"));
    const struct {
        qint64 length, from, dropped;
    } cases[] = {
        {100000, 2000, 0},  // three blocks and 8001 bytes
        {61999, 2000, 0},   // a block, then exactly a block's worth
        {20000, 3000, 0},   // shorter than a block: the rest alone
        {32000, 2000, 1},   // a last block one byte short of the end leaves that byte
        {2500, 3000, 0},    // no longer than the lead-in: nothing
        {3000, 3000, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.length);
        QByteArray bytes(c.length, '\0');
        for (qint64 i = 0; i < c.length; ++i) bytes[i] = char(i * 7 + i / 251);
        ASSERT_TRUE(WriteFileBytes(in, bytes));
        QFile::remove(out);
        {
            BinaryFile a(fs, in), b(fs, out);
            CopyFromPosition(a, c.length, c.from, b);
        }
        const QByteArray rest = bytes.mid(c.from - 1);
        EXPECT_EQ(FileBytes(out), rest.left(rest.size() - c.dropped));
    }
}

TEST(Repair, JunkBeforeTheFirstFrameGoesTheTagComesAlongAndAFailedCopyHarmsNothing) {
    QTemporaryDir dir;
    TestPlatform tp;
    const QByteArray clean = CleanSong();
    const QString song = dir.filePath(QStringLiteral("song.mp3")), scratch = dir.filePath(QStringLiteral("ZOR1.mp3"));
    // Junk with a decoy frame start and bytes above 200, which the analyser
    // would take for the header.
    const QByteArray junked = Junk(2400, {700}) + clean;
    ASSERT_TRUE(WriteFileBytes(song, junked));
    CopyPastLeadIn(tp.files, tp.events, song, scratch);
    EXPECT_EQ(FileBytes(scratch), clean);

    // A copy that fails leaves the song whole (how the copy stays whole on
    // the disk itself is the file system's test).
    tp.files.FailNext(QStringLiteral("Name"), 61);
    EXPECT_THROW(ReplaceFromScratch(tp.files, song, scratch), RuntimeError);
    EXPECT_EQ(FileBytes(song), junked);

    ReplaceFromScratch(tp.files, song, scratch);
    EXPECT_EQ(FileBytes(song), clean);  // the tag at the end comes along
    EXPECT_FALSE(QFile::exists(scratch));
    Mp3FrameInfo info;
    ASSERT_EQ(ScanMp3File(tp.files, song, info, true).outcome, Mp3Outcome::Analysed);
    EXPECT_EQ(info.BitRateText + info.SampleRateText, QStringLiteral("12844100"));
}

struct RemoveLeadInTest : ::testing::Test {
    FormHarness h;
    QTemporaryDir music;
    const QByteArray clean = CleanSong();
    const QByteArray junked = Junk(2600, {1}) + clean;
    QString song() const { return music.filePath(QStringLiteral("song.mp3")); }
    QString scratch() { return h.inst.File(QStringLiteral("ZOR1.mp3")); }
    QString catalogue() { return h.inst.File(QStringLiteral("Mp3data1.mdb")); }
    QString message() { return h.form().Text1->text(); }
    void SetUp() override {
        ASSERT_TRUE(WriteFileBytes(song(), junked));
        TestInstallation::AddSongs(catalogue(), {{"Waterloo", "", "", "", "", song()}});
        ASSERT_TRUE(h.Start());
        h.form().MFGrid1.SetRow(1);
        h.form().MFGrid1.SetCol(1);
    }
    void Repair(const QString& path) {
        h.form().MFGrid1.SetTextMatrix(1, 6, path);
        RemoveLeadIn(h.form(), h.form().MFGrid1);
    }
};

TEST_F(RemoveLeadInTest, TheCatalogueRefusesDeletionSoTheSongStaysAsItWas) {
    const QByteArray catalogueBytes = FileBytes(catalogue());
    ASSERT_TRUE(WriteFileBytes(scratch(), "left from before"));
    h.form().MFGrid1.SetRedraw(false);
    h.Click("RemHead");
    EXPECT_EQ(h.form().MFGrid1.Col(), 6);
    EXPECT_TRUE(h.form().MFGrid1.Redraw());
    EXPECT_EQ(FileBytes(song()), junked);
    EXPECT_EQ(FileBytes(catalogue()), catalogueBytes);
    EXPECT_EQ(FileBytes(scratch()), clean);  // made before the deletion failed
    EXPECT_EQ(message(), QStringLiteral("Non-standard MP3 header will be removed from: ") + song() +
                             QStringLiteral(" ; Please wait..."));
    EXPECT_TRUE(h.boxes().shown.empty());

    // A catalogue file that isn't held open is refused all the same.
    const QString other = h.inst.File(QStringLiteral("Mp3data0.mdb"));
    const QByteArray otherBytes = FileBytes(other);
    h.j().DatabaseFile = other;
    h.j().Language = QStringLiteral("0");
    Repair(song());
    EXPECT_EQ(FileBytes(other), otherBytes);
    EXPECT_EQ(message(), QStringLiteral("Non-standaard MP3 header wordt verwijderd van: ") + song() +
                             QStringLiteral(" ; Wacht s.v.p..."));
}

TEST_F(RemoveLeadInTest, NothingHappensToASongThatIsMissingOrCannotBeCopied) {
    const QString before = message();
    // A missing song: the scratch from before goes, nothing is said.
    ASSERT_TRUE(WriteFileBytes(scratch(), "left from before"));
    Repair(music.filePath(QStringLiteral("gone.mp3")));
    EXPECT_FALSE(QFile::exists(scratch()));
    EXPECT_EQ(message(), before);

    // A scratch that can't be written: the song stays, the box says nothing.
    ASSERT_TRUE(QDir(h.inst.programDir).mkdir(QStringLiteral("ZOR1.mp3")));
    Repair(song());
    EXPECT_EQ(FileBytes(song()), junked);
    EXPECT_TRUE(h.boxes().shown.empty());
    EXPECT_FALSE(h.inst.tp.files.IsHeldOpen(song()));

    // A song kept under the scratch's own name is left alone.
    ASSERT_TRUE(QDir(scratch()).removeRecursively());
    ASSERT_TRUE(WriteFileBytes(scratch(), junked));
    Repair(scratch());
    EXPECT_EQ(FileBytes(scratch()), junked);
}

}  // namespace
}  // namespace zor::testing
