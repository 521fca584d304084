// The trial and the saved trim of a real MP3 from lame, played by the real
// GStreamer player into a fake sink: a cut lands anywhere in a frame, and
// the player must find the next one and play on from there.
#include "mp3/trim.h"
#include "platform/file_system.h"
#include "platform/gst_player.h"
#include "tests/support/audio_tools.h"
#include "tests/support/disk_files.h"

#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace zor::testing {
namespace {

TEST(TrialPlay, TrialsAndSavedTrimsThatStartInsideAFramePlayWithTheirLength) {
    QTemporaryDir dir;
    const AudioTools tools;
    const QString song = dir.filePath(QStringLiteral("song.mp3")), trial = dir.filePath(QStringLiteral("ZOR1.mp3"));
    if (!tools.Usable() || !tools.Mp3(song, 12, {"-b", "128", "--id3v1-only", "--tt", "Waterloo"}))
        GTEST_SKIP() << "sox and lame are needed to make the MP3 files; not found";
    const QByteArray original = FileBytes(song);
    FileSystem fs;
    GstPlayer player(fs);
    const auto plays = [&](const QString& path, bool lengthFromSize) {
        SCOPED_TRACE(path.toStdString());
        player.Open(path);
        ASSERT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
        // Without lame's header in front the length is known once it plays.
        for (int i = 0; i < 250 && (player.CurrentPosition() < 0.2 || player.Duration() == 0); ++i)
            QThread::msleep(20);
        EXPECT_GE(player.CurrentPosition(), 0.2);
        // 128 kbit/s is 16000 bytes a second.
        if (lengthFromSize) EXPECT_NEAR(player.Duration(), FileBytes(path).size() / 16000.0, 0.3);
        // The player holds what it played; the trial is its scratch.
        player.Open(trial);
    };
    // 750 ms: 15000 bytes, inside the frame that holds byte 15001.
    ASSERT_TRUE(MakeTrial(fs, song, trial, TrimCut(750), TrimEnd::Beginning));
    plays(trial, true);
    ASSERT_TRUE(MakeTrial(fs, song, trial, TrimCut(750), TrimEnd::End));
    plays(trial, true);
    // A song cut at its end keeps lame's header, which tells the old length.
    ASSERT_TRUE(SaveTrim(fs, song, dir.filePath(QStringLiteral("ZOR2.mp3")), TrimCut(2000), TrimEnd::End));
    plays(song, false);
    EXPECT_EQ(FileBytes(song).right(128), original.right(128));
    ASSERT_TRUE(SaveTrim(fs, song, dir.filePath(QStringLiteral("ZOR2.mp3")), TrimCut(750), TrimEnd::Beginning));
    plays(song, true);
}

}  // namespace
}  // namespace zor::testing
