// The media players. GStreamer's against real files made at test time,
// played into a synced fake sink (ZOR_AUDIO_SINK=fake): what it reports of
// a song while it plays, pauses, stops and ends, how it fails on files it
// cannot play, and how it holds its file open. Waits are for events, with
// generous limits; nothing here measures time. Then the fake player the
// form tests play on, where it must behave as the real one.
#include "platform/file_system.h"
#include "platform/gst_player.h"
#include "platform/testing/fakes.h"
#include "tests/support/audio_tools.h"
#include "tests/support/disk_files.h"

#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace zor {
namespace {

using Events = std::vector<std::pair<int, int>>;

// The limit of a wait for an event.
constexpr int kLimitMs = 20000;

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
    QString Mp3(const QString& name, double seconds) {
        EXPECT_TRUE(tools.Mp3(Path(name), seconds)) << name.toStdString();
        return Path(name);
    }
};

TEST_F(GstPlayerTest, AnMp3PlaysPausesResumesEndsAndStopsWithItsEvents) {
    const QString song = Mp3(QStringLiteral("song.mp3"), 2);
    player.Open(song);
    EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
    EXPECT_NEAR(player.Duration(), 2.0, 0.1);  // known as Open returns

    ASSERT_TRUE(QTest::qWaitFor([&] { return player.CurrentPosition() > 0.3; }, kLimitMs));
    player.Pause();
    const double paused = player.CurrentPosition();
    QTest::qWait(400);
    EXPECT_NEAR(player.CurrentPosition(), paused, 0.05);

    player.Play();
    ASSERT_TRUE(QTest::qWaitFor([&] { return player.PlayState() == mpStopped; }, kLimitMs));
    EXPECT_DOUBLE_EQ(player.CurrentPosition(), player.Duration());  // the end stays at the end
    EXPECT_EQ(events, (Events{{0, 2}, {2, 1}, {1, 2}, {2, 0}}));

    player.Play();  // from the end: again from the start
    EXPECT_LT(player.CurrentPosition(), 1.0);
    // Stop goes back to the start and keeps the song loaded.
    player.Stop();
    QTest::qWait(200);
    EXPECT_EQ(player.CurrentPosition(), 0);
    EXPECT_NEAR(player.Duration(), 2.0, 0.1);
    player.SetCurrentPosition(1.5);
    player.Play();
    EXPECT_GE(player.CurrentPosition(), 1.4);
    EXPECT_EQ(events.size(), 7u);  // and playing, stopped, playing again
}

TEST_F(GstPlayerTest, WavFlacAndOggPlayWithTheirLength) {
    for (const char* name : {"tone.wav", "tone.flac", "tone.ogg"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(tools.Tone(Path(QString::fromLatin1(name)), 1.5));  // the format the extension says
        player.Open(Path(QString::fromLatin1(name)));
        EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
        EXPECT_NEAR(player.Duration(), 1.5, 0.1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return player.CurrentPosition() > 0.1; }, kLimitMs));
    }
}

// The song is held open, so that it can't be deleted or renamed under the
// player, until the next Open, which lets it go whether or not the new file
// can play. A file that can't play is not held, and its flag stays up until
// the next Open.
TEST_F(GstPlayerTest, TheSongIsHeldUntilTheNextOpenAndAFileThatCannotPlayRaisesTheFlag) {
    const QString song = Mp3(QStringLiteral("song.mp3"), 1);
    // The scratch song as start-up writes it: a thousand zeros, which no
    // player can play; words; and no file at all.
    const QString scratch = Path(QStringLiteral("ZOR3.mp3")), text = Path(QStringLiteral("text.mp3"));
    ASSERT_TRUE(testing::WriteFileBytes(scratch, QByteArray(1000, '\0')));
    ASSERT_TRUE(testing::WriteFileBytes(text, QByteArray("These are the words of a song.\n").repeated(50)));
    for (const QString& bad : {scratch, text, Path(QStringLiteral("missing.mp3"))}) {
        SCOPED_TRACE(bad.toStdString());
        player.Open(song);
        EXPECT_EQ(player.PlayState(), mpPlaying) << player.ErrorText().toStdString();
        player.Stop();  // stopping alone does not let go
        EXPECT_TRUE(files.IsHeldOpen(song));

        events.clear();
        player.Open(bad);
        EXPECT_NE(player.PlayerErrorFlag(), 0);
        EXPECT_FALSE(files.IsHeldOpen(song) || files.IsHeldOpen(bad));
        EXPECT_EQ(player.Duration(), 0);
        player.Play();  // nothing to play
        QTest::qWait(300);  // a late message of the failed file changes nothing
        EXPECT_TRUE(events.empty());
    }
    // A name ended by a tag's zeros is the file up to them.
    player.Open(song + QString(3, QChar(0)) + QStringLiteral("junk"));
    EXPECT_EQ(player.PlayerErrorFlag(), 0) << player.ErrorText().toStdString();
    EXPECT_TRUE(files.IsHeldOpen(song));
}

TEST_F(GstPlayerTest, TwoPlayersPlayAtOnceWithTheirOwnVolumeAndBalance) {
    GstPlayer other(files);
    player.SetBalance(-20000);  // beyond the end: kept at the end
    other.SetVolume(500);       // no gain above full
    EXPECT_EQ(player.Balance(), -10000);
    EXPECT_EQ(other.Volume(), 0);

    player.Open(Mp3(QStringLiteral("a.mp3"), 2));
    other.Open(Mp3(QStringLiteral("b.mp3"), 2));
    player.Pause();
    ASSERT_TRUE(QTest::qWaitFor([&] { return other.PlayState() == mpStopped; }, kLimitMs));
    EXPECT_EQ(player.PlayState(), mpPaused);
}

TEST(PlayerLevels, HundredthsOfADecibelBecomeGainsAndTheBalanceAPanorama) {
    EXPECT_DOUBLE_EQ(GainOfHundredthsDb(-2000), 0.1);
    EXPECT_NEAR(GainOfHundredthsDb(-602), 0.5, 0.001);
    EXPECT_EQ(GainOfHundredthsDb(-10000), 0.0);
    EXPECT_DOUBLE_EQ(GainOfHundredthsDb(300), 1.0);  // no gain above full

    EXPECT_EQ(PanoramaOfBalance(-10000), -1.0);
    EXPECT_NEAR(PanoramaOfBalance(-602), -0.5, 0.001);  // the right at half
    EXPECT_NEAR(PanoramaOfBalance(2000), 0.9, 1e-9);    // the left at a tenth
}

// Form tests can't tell these of the fake: that it reports the real player's
// events, the end coming from inside the event pump once the clock passes the
// song's length, and that it holds its file until the next Open as the real
// one does (a form test deleting a song would otherwise pass whether or not
// the program had let go of it).
TEST(FakePlayer, EndsInsideThePumpWithTheRealPlayersEventsAndHoldsItsFileUntilTheNextOpen) {
    testing::TestPlatform tp;
    QTemporaryDir dir;
    const QString song = dir.filePath(QStringLiteral("song.mp3"));
    ASSERT_TRUE(testing::WriteFileBytes(song, "x"));
    tp.players.durations[song] = 10;
    const std::unique_ptr<MediaPlayer> player = tp.platform.players.MakePlayer();
    Events events;
    player->PlayStateChange = [&](int from, int to) { events.emplace_back(from, to); };
    player->Open(song);
    player->Pause();
    player->Play();
    tp.events.Wait(10500);
    EXPECT_EQ(events, (Events{{0, 2}, {2, 1}, {1, 2}, {2, 0}}));
    EXPECT_TRUE(tp.files.IsHeldOpen(song));
    player->Open(dir.filePath(QStringLiteral("ZOR3.mp3")));
    EXPECT_FALSE(tp.files.IsHeldOpen(song));
}

}  // namespace
}  // namespace zor
