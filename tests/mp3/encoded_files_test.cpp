// Real MP3 files, encoded at test time from a five-second tone: MPEG-1 at
// 32000, 44100 and 48000 Hz and MPEG-2 at 16000 and 22050 Hz, mono and
// stereo, with and without CRC. What the analyser says of each is worked
// out here by hand from the header lame writes and the one bit-rate table.
#include "mp3/id3_tag.h"
#include "mp3/mp3_frame.h"
#include "platform/file_system.h"
#include "platform/vb.h"
#include "tests/support/audio_tools.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

// Failures show texts as text.
static void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace zor {
namespace {

constexpr int kToneSeconds = 5;

struct EncodedFileTest : ::testing::Test {
    testing::AudioTools tools;
    QTemporaryDir dir;
    FileSystem fs;
    Mp3FrameInfo info;
    int count = 0;
    void SetUp() override {
        if (!tools.Usable()) GTEST_SKIP() << "sox and lame are needed to make the MP3 files; not found";
    }
    QString Encode(int rate, int channels, const QStringList& options) {
        const QString path = dir.filePath(QStringLiteral("%1.mp3").arg(++count));
        EXPECT_TRUE(tools.Mp3(path, kToneSeconds, options, rate, channels));
        return path;
    }
};

TEST_F(EncodedFileTest, HeaderTextsAndLengthFollowTheOneTableForEveryRateModeAndCrc) {
    struct Encoding {
        int rate, channels;
        QStringList lame;
        QStringList texts;  // bit rate, protection, sample rate, copyright, original, emphasis
        int bytesPerSecond;  // of the label's row
        const char* version;
        const char* mark;
    };
    const char* v1 = "Version 1.0";
    const char* v2 = "Version 2.0";
    const Encoding encodings[] = {
        // MPEG-1. The sample rate bits of 44100 and 48000 Hz leave B2 / 16 on the bit-rate index.
        {44100, 2, {"-b", "128"}, {"128", "None", "44100", "None", "Original", "None"}, 16000, v1, "S:"},
        // 48 kbit/s is the row read as "VBR"; copyright, copy and emphasis set.
        {44100, 1, {"-b", "48", "-c", "-o", "-e", "5"}, {"VBR", "None", "44100", "Yes", "Copy", "50/15 ms"}, 6000, v1, "M:"},
        {48000, 1, {"-b", "128", "-p"}, {"128", "by CRC", "48000", "None", "Original", "None"}, 16000, v1, "M:"},
        // Dual channel with no low bits is stereo.
        {48000, 2, {"-m", "d", "-b", "32"}, {" 32", "None", "48000", "None", "Original", "None"}, 4000, v1, "S:"},
        // 32000 Hz pushes the index up: 0x98 is 9.5, the even 10.
        {32000, 2, {"-m", "s", "-b", "128"}, {"160", "None", "32000", "None", "Original", "None"}, 20000, v1, "S:"},
        // MPEG-2 numbers its bit rates otherwise, so 64 kbit/s is index 8: "112".
        {22050, 2, {"-b", "64"}, {"112", "None", "22050", "None", "Original", "None"}, 14000, v2, "S:"},
        // 0x48 is 4.5, which stays at 4.
        {16000, 2, {"-m", "s", "-b", "32"}, {" 56", "None", "16000", "None", "Original", "None"}, 7000, v2, "S:"},
    };
    for (const Encoding& e : encodings) {
        SCOPED_TRACE(::testing::Message() << e.rate << " Hz, " << e.channels << " channels, "
                                          << e.lame.join(u' ').toStdString());
        const QString path = Encode(e.rate, e.channels, e.lame);
        const qint64 size = QFile(path).size();
        ASSERT_EQ(ScanMp3File(fs, path, info, true).outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(QStringList({info.BitRateText, info.ProtectionText, info.SampleRateText, info.CopyrightText,
                               info.OriginalText, info.EmphasisText}),
                  e.texts);
        EXPECT_EQ(info.VersionText, QString::fromLatin1(e.version));
        EXPECT_EQ(info.LayerText, u"Layer III");
        EXPECT_EQ(info.ChannelMark, QString::fromLatin1(e.mark));
        EXPECT_EQ(info.FileBytes, size);
        // The whole file over the row's rate, halves to even; where the row's
        // rate is the file's own, that is the tone's length.
        const int seconds = int(std::nearbyint(double(size) / e.bytesPerSecond));
        EXPECT_EQ(info.DurationSeconds, seconds);
        EXPECT_EQ(info.DurationText, QStringLiteral("0:0%1").arg(seconds));
        if (e.rate >= 44100) EXPECT_LE(std::abs(seconds - kToneSeconds), 1);
    }
}

TEST_F(EncodedFileTest, LamesOwnTagsInFrontAreReadAsTheHeaderAndItsEndTagAsTheTag) {
    const QString path = Encode(44100, 2, {"-b", "128", "--tt", "A Title", "--ta", "An Artist", "--ty", "1999",
                                           "--tg", "Rock", "--add-id3v2"});
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray bytes = f.readAll();
    // lame writes the title as UTF-16: its byte-order mark comes before the first frame.
    const qsizetype mark = bytes.indexOf(QByteArray("\xFF\xFE" "A", 3));
    if (mark < 0 || mark > bytes.indexOf("\xFF\xFB"))
        GTEST_SKIP() << "this lame writes its tag text in a way the test does not foresee";

    // B1 = 0xFE, B2 = "A" (0x41, 4.06 rounds to 4), B3 = 0.
    ASSERT_EQ(ScanMp3File(fs, path, info, true).outcome, Mp3Outcome::Analysed);
    EXPECT_EQ(QStringList({info.BitRateText, info.VersionText, info.LayerText, info.ProtectionText,
                           info.SampleRateText, info.ChannelMark}),
              QStringList({" 56", "Version 1.0", "Layer I", "by CRC", "44100", "S:"}));
    EXPECT_EQ(info.DurationSeconds, int(std::nearbyint(bytes.size() / 7000.0)));

    Id3TagRecord tag;
    ASSERT_TRUE(ReadId3Tag(fs, path, tag));
    EXPECT_EQ(vb::RTrim(tag.Title.Text()).remove(QChar(0)), u"A Title");
    EXPECT_EQ(vb::RTrim(tag.Artist.Text()).remove(QChar(0)), u"An Artist");
    EXPECT_EQ(tag.Year.Text(), u"1999");
    EXPECT_EQ(StyleName(tag.Style), u"Rock");
}

}  // namespace
}  // namespace zor
