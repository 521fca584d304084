// Trimming: the trial's arithmetic and the saved trim on files of awkward
// sizes and shapes, with positions worked out by hand from the window's
// rules; the song kept whole whenever the trim can't finish.
#include "mp3/trim.h"
#include "platform/runtime_error.h"
#include "platform/testing/fakes.h"
#include "tests/support/disk_files.h"
#include "tests/support/errors.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

constexpr auto kBeg = TrimEnd::Beginning;
constexpr auto kEnd = TrimEnd::End;

// `n` bytes without a frame start; a frame start (255, 251) at each of the
// 1-based positions `at`; the last 128 bytes a tag when `tagged`.
QByteArray Song(qint64 n, std::initializer_list<qint64> at = {}, bool tagged = false) {
    QByteArray b(n, '\0');
    for (qint64 i = 0; i < n; ++i) b[i] = char('a' + i % 23 + (i / 23) % 3);
    for (qint64 p : at) b.replace(p - 1, 2, "\xFF\xFB");
    if (tagged) b.replace(n - 128, 128, QByteArray("TAGWaterloo").leftJustified(128, ' '));
    return b;
}

TEST(TrimArithmetic, TrialsAreTheFirstStretchAfterTheCutOrTheLastBeforeIt) {
    const struct {
        qint64 length, cut;
        TrimEnd end;
        std::optional<BlockCopy> copy;
    } cases[] = {
        // From cut + 1, ending after the block that reads beyond 150000.
        {1000000, 0, kBeg, BlockCopy{1, 5, 0}},
        {1000000, 40000, kBeg, BlockCopy{40001, 4, 0}},
        {100000, 0, kBeg, BlockCopy{1, 3, 0}},     // last block from 60001
        {40000, 20000, kBeg, BlockCopy{20001, 0, 0}},  // nothing to play
        // Three blocks from length - 130000, then a fourth and 10000 - cut,
        // or 50000 - cut above 10000.
        {1000000, 0, kEnd, BlockCopy{870000, 4, 10000}},
        {1000000, 10000, kEnd, BlockCopy{870000, 4, 0}},
        {1000000, 10020, kEnd, BlockCopy{870000, 3, 39980}},
        {1000000, 40000, kEnd, BlockCopy{870000, 3, 10000}},
        {130001, 0, kEnd, BlockCopy{1, 4, 10000}},
        {130000, 0, kEnd, std::nullopt},
        {0, 0, kEnd, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.length << " cut " << c.cut);
        EXPECT_EQ(TrialCopy(c.length, c.cut, c.end), c.copy);
    }
    EXPECT_EQ(TrimCut(2000), 40000);
}

struct SaveTrimTest : ::testing::Test {
    QTemporaryDir dir;
    TestPlatform tp;
    QString song = dir.filePath(QStringLiteral("song.mp3"));
    QString scratch = dir.filePath(QStringLiteral("ZOR2.mp3"));
    bool Save(qint64 cut, TrimEnd end) { return SaveTrim(tp.files, song, scratch, cut, end); }
    void ExpectNoScratchLeft() {
        EXPECT_FALSE(QFile::exists(scratch));
        EXPECT_FALSE(QFile::exists(song + QStringLiteral(".zorcopy")));
    }
};

TEST_F(SaveTrimTest, AwkwardSongsAreTrimmedByTheRulesOrLeftAsTheyAre) {
    const QByteArray tagged200k = Song(200000, {1}, true), tagged3001 = Song(3001, {1}, true);
    const QByteArray id3v2 = QByteArray("ID3\x03").leftJustified(2000, '\x10') + Song(8000, {1});
    const struct {
        const char* what;
        QByteArray bytes;
        qint64 cut;
        TrimEnd end;
        QByteArray after;  // empty: left as it was
    } cases[] = {
        {"empty", {}, 0, kBeg, {}},
        {"127 bytes", Song(127), 10020, kEnd, {}},
        {"a tag alone", QByteArray("TAG").leftJustified(128, ' '), 10020, kEnd, {}},
        {"3000 bytes, end", Song(3000, {1}), 0, kEnd, {}},
        {"3000 bytes, frame first", Song(3000, {1}), 0, kBeg, Song(3000, {1})},
        {"3001 bytes, no frame", Song(3001), 0, kBeg, Song(3001).mid(999)},
        {"junk before the frame", Song(50000, {601}), 0, kBeg, Song(50000, {601}).mid(600)},
        {"a frame in reach of the cut", Song(50000, {20999}), 20000, kBeg, Song(50000, {20999}).mid(20998)},
        // The scan doesn't reach past an ID3v2 head of 2000 bytes.
        {"ID3v2 head", id3v2, 0, kBeg, id3v2.mid(999)},
        {"cut beyond the song", Song(30000, {1}), 40000, kBeg, {}},
        // Six blocks and 200000 - 180001 - cut bytes, one short of the cut.
        {"end of 200000", tagged200k, 10000, kEnd, tagged200k.left(189999) + tagged200k.right(128)},
        {"end of 200000, no cut", tagged200k, 0, kEnd, tagged200k.left(199999) + tagged200k.right(128)},
        // Above 10000, five blocks and 200000 - 150001 - (cut - 10000).
        {"end of 200000, 2 s", tagged200k, 40000, kEnd, tagged200k.left(169999) + tagged200k.right(128)},
        // The old tag's first 107 bytes stay in front of the new one.
        {"end of 3001", tagged3001, 10020, kEnd, tagged3001.left(2980) + tagged3001.right(128)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_TRUE(WriteFileBytes(song, c.bytes));
        EXPECT_EQ(Save(c.cut, c.end), !c.after.isEmpty());
        EXPECT_EQ(FileBytes(song), c.after.isEmpty() ? c.bytes : c.after);
        ExpectNoScratchLeft();
    }
}

TEST_F(SaveTrimTest, ASongThatCannotBeReplacedStaysWhole) {
    const QByteArray bytes = Song(100000, {1}, true);
    ASSERT_TRUE(WriteFileBytes(song, bytes));
    const auto refused = [&](int error) {
        EXPECT_EQ(ErrorOf([&] { Save(40000, kEnd); }), error);
        EXPECT_EQ(FileBytes(song), bytes);
        ExpectNoScratchLeft();
    };
    {
        SCOPED_TRACE("held open, as the catalogue or a player's song is");
        FileHold hold(tp.files, song);
        refused(70);
    }
    {
        SCOPED_TRACE("read-only");
        tp.files.SetAttr(song, vbReadOnly);
        refused(70);
        tp.files.SetAttr(song, vbNormal);
    }
    {
        SCOPED_TRACE("the move beside the song fails, then the rename over it");
        tp.files.FailNext(QStringLiteral("Name"), 61);
        refused(61);
        tp.files.FailOn(QStringLiteral("Rename"), song, 61);
        refused(61);
    }
    {
        SCOPED_TRACE("gone");
        QFile::remove(song);
        EXPECT_EQ(ErrorOf([&] { Save(0, kBeg); }), 53);
        EXPECT_FALSE(QFile::exists(song));
    }
}

}  // namespace
}  // namespace zor::testing
