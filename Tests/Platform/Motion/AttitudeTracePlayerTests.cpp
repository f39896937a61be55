#include "Platform/Motion/AttitudeTracePlayer.h"
#include "Tests/Platform/Motion/MotionScene.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

using Seen = std::vector<std::pair<Instant, Attitude>>;

/// A player of a trace, and what a listener of the source sees of it and when.
struct PlayerScene : MotionScene {
    explicit PlayerScene(std::string_view text)
        : player(
              std::make_unique<AttitudeTracePlayer>(AttitudeTrace::read(text, "trace").value())) {
        token = source.subscribe(
            [this] { seen.emplace_back(MainQueue::main().now(), *source.latest()); });
    }

    Seen seen;
    std::unique_ptr<AttitudeTracePlayer> player;
    std::shared_ptr<AttitudeSource::Subscription> token;
};

constexpr std::string_view kThree = "0,1,0,0,0\n0.010,0,1,0,0\n0.025,0,0,1,0\n";

} // namespace

TEST(AttitudeTracePlayer, DoesNothingUntilStarted) {
    PlayerScene scene(kThree);
    scene.time.runTo(1s);
    EXPECT_FALSE(scene.source.isAvailable());
    EXPECT_TRUE(scene.seen.empty());
}

TEST(AttitudeTracePlayer, IsAvailableFromTheStartEvenBeforeASample) {
    PlayerScene scene("5,0,0,0,1\n");
    scene.player->start();
    EXPECT_TRUE(scene.source.isAvailable());
    EXPECT_EQ(scene.source.latest(), std::nullopt);
}

TEST(AttitudeTracePlayer, IsAvailableEvenIfTheTraceIsEmpty) {
    PlayerScene scene("");
    scene.player->start();
    EXPECT_TRUE(scene.source.isAvailable());
    scene.time.runTo(1s);
    EXPECT_TRUE(scene.seen.empty());
}

TEST(AttitudeTracePlayer, PublishesEachSampleAtItsTimeSinceTheStart) {
    PlayerScene scene(kThree);
    scene.time.jumpTo(100ms);
    scene.player->start();
    EXPECT_EQ(scene.source.latest(), std::nullopt);
    scene.time.runTo(1s);
    EXPECT_EQ(scene.seen, (Seen{{100ms, kFirst}, {110ms, kSecond}, {125ms, kThird}}));
}

TEST(AttitudeTracePlayer, SkipsToTheNewestSampleThatIsDue) {
    PlayerScene scene(kThree);
    scene.player->start();
    scene.time.jumpTo(17ms);
    scene.time.runTo(1s);
    EXPECT_EQ(scene.seen, (Seen{{17ms, kSecond}, {25ms, kThird}}));
}

TEST(AttitudeTracePlayer, PublishesTheNewestOfWhatLiesBeforeZeroAtOnce) {
    PlayerScene scene("-2,1,0,0,0\n-1,0,1,0,0\n1,0,0,1,0\n");
    scene.player->start();
    scene.time.runTo(2s);
    EXPECT_EQ(scene.seen, (Seen{{0ms, kSecond}, {1s, kThird}}));
}

TEST(AttitudeTracePlayer, KeepsOneBlockWaitingAtATime) {
    PlayerScene scene(kThree);
    scene.player->start();
    scene.time.runTo(0ms);
    EXPECT_EQ(MainQueue::main().nextDeadline(), 10ms);
    scene.time.runTo(25ms);
    EXPECT_EQ(MainQueue::main().nextDeadline(), std::nullopt);
}

TEST(AttitudeTracePlayer, StopsWhenItEndsAndLeavesTheLastSample) {
    PlayerScene scene(kThree);
    scene.player->start();
    scene.time.runTo(10ms);
    scene.player.reset();
    scene.time.runTo(1s);
    EXPECT_EQ(scene.seen, (Seen{{0ms, kFirst}, {10ms, kSecond}}));
    EXPECT_TRUE(scene.source.isAvailable());
    EXPECT_EQ(scene.source.latest(), kSecond);
}

TEST(AttitudeTracePlayer, PlaysFromTheBeginningWhenStartedAgain) {
    PlayerScene scene("0,1,0,0,0\n0.010,0,1,0,0\n");
    scene.player->start();
    scene.time.runTo(5ms);
    scene.player->start();
    scene.time.runTo(1s);
    EXPECT_EQ(scene.seen, (Seen{{0ms, kFirst}, {5ms, kFirst}, {15ms, kSecond}}));
}
