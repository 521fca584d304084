// The GStreamer player against real files made at test time,
// played into a synced fake sink (ZOR_AUDIO_SINK=fake): what it reports of
// a song while it plays, pauses, stops and ends, how it fails on files it
// cannot play, and how it holds its file open. Waits are for events, with
// generous limits; nothing here measures time.
#include "platform/file_system.h"
#include "platform/gst_player.h"
#include "platform/runtime_error.h"
#include "tests/support/audio_tools.h"
#include "tests/support/disk_files.h"
#include "tests/support/errors.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace zor {
namespace {

using testing::ErrorOf;
using Events = std::vector<std::pair<int, int>>;

// Lets events through until `done` holds or the limit passes.
bool WaitUntil(const std::function<bool()>& done, int limitMs = 20000) {
    QElapsedTimer elapsed;
    elapsed.start();
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, &QEventLoop::quit);
    poll.start(10);
    while (!done()) {
        if (elapsed.elapsed() > limitMs) return false;
        loop.exec();
    }
    return true;
}

// Lets events through for a while, whatever happens.
void LetRun(int ms) { WaitUntil([] { return false; }, ms); }

struct GstPlayerTest : ::testing::Test {
    QTemporaryDir dir;
    FileSystem files;
    GstPlayer player{files};
    Events events;
    testing::AudioTools tools;

    void SetUp() override {
        if (!tools.Usable()) GTEST_SKIP() << "sox and lame are needed to make the songs; not found";
        player.PlayStateChange = [this](int from, int to) { events.emplace_back(from, to); };
    }
    QString Path(const QString& name) const { return dir.filePath(name); }
    // A tone of `seconds` in the format the name's extension says.
    QString Tone(const QString& name, double seconds) {
        EXPECT_TRUE(tools.Tone(Path(name), seconds)) << name.toStdString();
        return Path(name);
    }
    QString Mp3(const QString& name, double seconds) {
        EXPECT_TRUE(tools.Mp3(Path(name), seconds)) << name.toStdString();
        return Path(name);
    }
};

TEST_F(GstPlayerTest, AnMp3PlaysPausesResumesEndsAndStopsWithItsEvents) {
    const QString song = Mp3(QStringLiteral("song.mp3"), 2);
    player.Open(song);
    EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
    EXPECT_EQ(player.FileName(), song);
    EXPECT_NEAR(player.Duration(), 2.0, 0.1);  // known as Open returns

    ASSERT_TRUE(WaitUntil([&] { return player.CurrentPosition() > 0.3; }));
    player.Pause();
    EXPECT_EQ(player.PlayState(), mpPaused);
    const double paused = player.CurrentPosition();
    LetRun(400);
    EXPECT_NEAR(player.CurrentPosition(), paused, 0.05);
    EXPECT_LT(paused, 2.0);

    player.Play();
    ASSERT_TRUE(WaitUntil([&] { return player.PlayState() == mpStopped; }));
    EXPECT_DOUBLE_EQ(player.CurrentPosition(), player.Duration());  // the end stays at the end
    EXPECT_EQ(events, (Events{{0, 2}, {2, 1}, {1, 2}, {2, 0}}));

    player.Play();  // from the end: again from the start
    EXPECT_EQ(player.PlayState(), mpPlaying);
    EXPECT_LT(player.CurrentPosition(), 1.0);
    // Stop goes back to the start and keeps the song loaded.
    player.Stop();
    EXPECT_EQ(player.PlayState(), mpStopped);
    LetRun(200);
    EXPECT_EQ(player.CurrentPosition(), 0);
    EXPECT_NEAR(player.Duration(), 2.0, 0.1);
    player.SetCurrentPosition(1.5);
    player.Play();
    EXPECT_GE(player.CurrentPosition(), 1.4);
    EXPECT_EQ(events.size(), 7u);
}

TEST_F(GstPlayerTest, WavFlacAndOggPlayWithTheirLength) {
    for (const char* name : {"tone.wav", "tone.flac", "tone.ogg"}) {
        SCOPED_TRACE(name);
        player.Open(Tone(QString::fromLatin1(name), 1.5));
        EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
        EXPECT_NEAR(player.Duration(), 1.5, 0.1);
        EXPECT_TRUE(WaitUntil([&] { return player.CurrentPosition() > 0.1; }));
    }
}

TEST_F(GstPlayerTest, AFileThatCannotPlayRaisesTheFlagUntilTheNextOpen) {
    const QString good = Mp3(QStringLiteral("good.mp3"), 1);
    // (A file of zeros is the scratch song below.)
    const QString text = Path(QStringLiteral("text.mp3")), empty = Path(QStringLiteral("empty.mp3"));
    ASSERT_TRUE(testing::WriteFileBytes(text, QByteArray("These are the words of a song.\n").repeated(50)));
    ASSERT_TRUE(testing::WriteFileBytes(empty, {}));
    for (const QString& bad : {text, empty, Path(QStringLiteral("missing.mp3"))}) {
        SCOPED_TRACE(bad.toStdString());
        events.clear();
        player.Open(bad);
        EXPECT_NE(player.PlayerErrorFlag(), 0);
        EXPECT_EQ(player.PlayState(), mpStopped);
        EXPECT_EQ(player.Duration(), 0);
        player.Play();  // nothing to play
        EXPECT_EQ(player.PlayState(), mpStopped);
        LetRun(300);  // a late message of the failed file changes nothing
        EXPECT_TRUE(events.empty());

        player.Open(good);
        EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
        EXPECT_EQ(player.PlayState(), mpPlaying);
    }
}

TEST_F(GstPlayerTest, TheSongIsHeldOpenUntilTheScratchFileIsOpened) {
    const QString song = Mp3(QStringLiteral("song.mp3"), 3);
    // The scratch song as start-up writes it: a thousand zeros, which no
    // player can play. Opening it lets go of the song all the same.
    const QString scratch = Path(QStringLiteral("ZOR3.mp3"));
    ASSERT_TRUE(testing::WriteFileBytes(scratch, QByteArray(1000, '\0')));
    player.Open(song);
    EXPECT_EQ(ErrorOf([&] { files.Kill(song); }), 75);
    player.Stop();  // stopping alone does not let go
    EXPECT_EQ(ErrorOf([&] { files.Name(song, Path(QStringLiteral("moved.mp3"))); }), 75);

    player.Open(scratch);
    EXPECT_NE(player.PlayerErrorFlag(), 0);
    EXPECT_EQ(ErrorOf([&] { files.Name(song, Path(QStringLiteral("moved.mp3"))); }), 0);
    EXPECT_EQ(ErrorOf([&] { files.Kill(scratch); }), 0);  // nor does it hold what it failed on

    player.Open(Path(QStringLiteral("moved.mp3")));
    EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
    player.Open(Mp3(QStringLiteral("next.mp3"), 1));  // one song after another
    EXPECT_EQ(ErrorOf([&] { files.Kill(Path(QStringLiteral("moved.mp3"))); }), 0);
    EXPECT_EQ(ErrorOf([&] { files.Kill(Path(QStringLiteral("next.mp3"))); }), 75);

    // A name ended by a tag's zeros is the file up to them.
    const QString tagged = Mp3(QStringLiteral("tagged.mp3"), 1);
    player.Open(tagged + QString(3, QChar(0)) + QStringLiteral("junk"));
    EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
    EXPECT_EQ(ErrorOf([&] { files.Kill(tagged); }), 75);
}

TEST_F(GstPlayerTest, TwoPlayersPlayAtOnceWithTheirOwnVolumeAndBalance) {
    GstPlayer other(files);
    player.SetVolume(-2000);
    player.SetBalance(-20000);  // beyond the end: kept at the end
    other.SetVolume(500);
    other.SetBalance(5000);
    EXPECT_EQ(player.Volume(), -2000);
    EXPECT_EQ(player.Balance(), -10000);
    EXPECT_EQ(other.Volume(), 0);
    EXPECT_EQ(other.Balance(), 5000);

    player.Open(Mp3(QStringLiteral("a.mp3"), 2));
    other.Open(Mp3(QStringLiteral("b.mp3"), 2));
    player.Pause();
    ASSERT_TRUE(WaitUntil([&] { return other.PlayState() == mpStopped; }));
    EXPECT_EQ(player.PlayState(), mpPaused);
}

TEST(PlayerLevels, HundredthsOfADecibelBecomeGainsAndTheBalanceAPanorama) {
    EXPECT_DOUBLE_EQ(GainOfHundredthsDb(0), 1.0);
    EXPECT_DOUBLE_EQ(GainOfHundredthsDb(-2000), 0.1);
    EXPECT_NEAR(GainOfHundredthsDb(-602), 0.5, 0.001);
    EXPECT_EQ(GainOfHundredthsDb(-10000), 0.0);
    EXPECT_DOUBLE_EQ(GainOfHundredthsDb(300), 1.0);  // no gain above full

    EXPECT_EQ(PanoramaOfBalance(0), 0.0);
    EXPECT_EQ(PanoramaOfBalance(-10000), -1.0);
    EXPECT_NEAR(PanoramaOfBalance(-602), -0.5, 0.001);  // the right at half
    EXPECT_NEAR(PanoramaOfBalance(2000), 0.9, 1e-9);    // the left at a tenth
}

}  // namespace
}  // namespace zor
