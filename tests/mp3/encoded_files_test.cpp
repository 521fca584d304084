// Real MP3 files, encoded at test time from a five-second tone: MPEG-1 at
// 32000, 44100 and 48000 Hz and MPEG-2 at 22050 Hz, mono and stereo, with
// and without CRC. What the analyser says of each is worked out here by hand
// from the header lame writes and the one bit-rate table.
#include "mp3/mp3_frame.h"
#include "platform/file_system.h"
#include "tests/support/audio_tools.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

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

TEST_F(EncodedFileTest, LamesHeadersReadAsTheTablesSayAndTheLengthIsTheToneTimedAtTheRowsRate) {
    struct Encoding {
        int rate, channels;
        QStringList lame;
        QStringList texts;  // bit rate, version, protection, sample rate, copyright, original, emphasis, mark
        int seconds;  // the tone's five seconds at the file's own rate, over the rate of the label's row
    };
    const Encoding encodings[] = {
        {44100, 2, {"-b", "128"}, {"128", "Version 1.0", "None", "44100", "None", "Original", "None", "S:"}, 5},
        // 48 kbit/s is the row read as "VBR", timed at its own 6000 bytes a second.
        {44100, 1, {"-b", "48", "-c", "-o", "-e", "5"},
         {"VBR", "Version 1.0", "None", "44100", "Yes", "Copy", "50/15 ms", "M:"}, 5},
        {48000, 1, {"-b", "128", "-p"}, {"128", "Version 1.0", "by CRC", "48000", "None", "Original", "None", "M:"}, 5},
        // 32000 Hz pushes the index up to the "160" row: 16000 bytes a second timed at 20000.
        {32000, 2, {"-m", "s", "-b", "128"}, {"160", "Version 1.0", "None", "32000", "None", "Original", "None", "S:"}, 4},
        // MPEG-2 numbers its bit rates otherwise: 64 kbit/s lands on the "112" row, 8000 timed at 14000.
        {22050, 2, {"-b", "64"}, {"112", "Version 2.0", "None", "22050", "None", "Original", "None", "S:"}, 3},
    };
    for (const Encoding& e : encodings) {
        SCOPED_TRACE(::testing::Message() << e.rate << " Hz, " << e.channels << " channels, "
                                          << e.lame.join(u' ').toStdString());
        const QString path = Encode(e.rate, e.channels, e.lame);
        ASSERT_EQ(ScanMp3File(fs, path, info, true).outcome, Mp3Outcome::Analysed);
        EXPECT_EQ(QStringList({info.BitRateText, info.VersionText, info.ProtectionText, info.SampleRateText,
                               info.CopyrightText, info.OriginalText, info.EmphasisText, info.ChannelMark}),
                  e.texts);
        EXPECT_EQ(info.LayerText, u"Layer III");
        EXPECT_EQ(info.FileBytes, QFile(path).size());
        // The encoder's few padding frames stay well inside the rounding.
        EXPECT_EQ(info.DurationSeconds, e.seconds);
        EXPECT_EQ(info.DurationText, QStringLiteral("0:0%1").arg(e.seconds));
    }
}

}  // namespace
}  // namespace zor
