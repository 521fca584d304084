// The fake media player that form tests play songs on: it must follow the
// fake clock as a real song follows time, or play-engine tests prove nothing.
#include "platform/testing/fakes.h"
#include "tests/support/errors.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace zor::testing {
namespace {

using Events = std::vector<std::pair<int, int>>;

struct FakePlayerTest : ::testing::Test {
    TestPlatform tp;
    std::unique_ptr<MediaPlayer> player = tp.platform.players.MakePlayer();
    Events events;
    void SetUp() override {
        player->PlayStateChange = [this](int from, int to) { events.emplace_back(from, to); };
    }
};

// The position following the clock less the pauses, and the end coming with
// the clock, are the play engine's pause test: its song would end elsewhere.
TEST_F(FakePlayerTest, TheEndComesFromInsideThePumpWithTheRuntimesEvents) {
    tp.players.durations[QStringLiteral("a.mp3")] = 10;
    player->Open(QStringLiteral("a.mp3"));
    player->Pause();
    player->Play();
    tp.events.Wait(9500);
    EXPECT_EQ(player->PlayState(), mpPlaying);
    tp.events.Wait(1000);
    EXPECT_EQ(player->PlayState(), mpStopped);
    EXPECT_DOUBLE_EQ(player->CurrentPosition(), 10);
    EXPECT_EQ(events, (Events{{0, 2}, {2, 1}, {1, 2}, {2, 0}}));
    EXPECT_EQ(tp.players.Last().calls, (QStringList{"Open a.mp3", "Pause", "Play"}));
}

TEST_F(FakePlayerTest, TheFileIsHeldUntilAnotherOpenAndAStopEventMayEndThePlayer) {
    QTemporaryDir dir;
    const QString song = dir.filePath(QStringLiteral("song.mp3"));
    QFile(song).open(QIODevice::WriteOnly);
    tp.players.durations[song] = 2;
    player->Open(song);
    EXPECT_EQ(ErrorOf([&] { tp.files.Kill(song); }), 75);
    player->Open(dir.filePath(QStringLiteral("ZOR3.mp3")));
    EXPECT_EQ(ErrorOf([&] { tp.files.Kill(song); }), 0);

    // A handler that lets its player go at the end, as a closing mixer would.
    auto second = tp.players.MakePlayer();
    tp.players.durations[QStringLiteral("b.mp3")] = 1;
    second->PlayStateChange = [&](int, int to) {
        if (to == mpStopped) second.reset();
    };
    second->Open(QStringLiteral("b.mp3"));
    tp.clock.Advance(2);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(tp.players.made.size(), 1u);
}

}  // namespace
}  // namespace zor::testing
