#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/Hosts/EmbeddedScene.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A scene whose view has appeared and been drawn at 0.
struct Shown : EmbeddedScene {
    explicit Shown(double framesPerSecond = 60.0) : EmbeddedScene(framesPerSecond) {
        host().appear();
        turn();
        painter().drawings = 0;
    }
};

void onMain(Instant delay, MainQueue::Block block) {
    MainQueue::main().asyncAfter(delay, std::move(block));
}

} // namespace

TEST(Pacing, WantsAPassWhenTheViewHasAppeared) {
    EmbeddedScene scene;
    EXPECT_FALSE(scene.ask().drawNow);
    scene.host().appear();
    EXPECT_TRUE(scene.turn());
    EXPECT_EQ(scene.painter().drawings, 1);
}

TEST(Pacing, WantsNothingAndNamesNoDeadlineWhileNothingIsDirty) {
    Shown scene;
    for (int i = 0; i < 10; ++i) {
        scene.jumpTo(frame(i));
        const zanto::EmbeddedHostStatus status = scene.ask();
        EXPECT_FALSE(status.drawNow);
        EXPECT_FALSE(status.nextDeadline.has_value());
    }
}

TEST(Pacing, DrawsAViewDirtiedBetweenInstantsAtTheNext) {
    Shown scene;
    scene.jumpTo(5ms);
    scene.view().setNeedsDisplay();
    EXPECT_FALSE(scene.ask().drawNow);
    EXPECT_EQ(scene.ask().nextDeadline, frame(1));
    scene.jumpTo(frame(1) - Instant(1));
    EXPECT_FALSE(scene.turn());
    scene.jumpTo(frame(1));
    EXPECT_TRUE(scene.turn());
    EXPECT_EQ(scene.painter().drawings, 1);
    EXPECT_FALSE(scene.ask().nextDeadline.has_value());
}

TEST(Pacing, FollowsADisplayOfAnotherRate) {
    Shown scene;
    scene.jumpTo(frame(1));
    scene.view().setNeedsDisplay();
    EXPECT_TRUE(scene.turn());
    scene.jumpTo(frame(1) + 1ms);
    scene.view().setNeedsDisplay();
    EXPECT_EQ(scene.ask().nextDeadline, frame(2));
    scene.host().setFramesPerSecond(20);
    EXPECT_EQ(scene.ask().nextDeadline, 50ms);
    scene.jumpTo(frame(2));
    EXPECT_FALSE(scene.turn());
    scene.jumpTo(50ms);
    EXPECT_TRUE(scene.turn());
    EXPECT_EQ(MainQueue::main().frameGrid().after(50ms), 100ms);
}

TEST(Pacing, DrawsAViewDirtiedAtAnInstantThere) {
    Shown scene;
    scene.jumpTo(frame(3));
    scene.view().setNeedsDisplay();
    EXPECT_TRUE(scene.turn());
}

TEST(Pacing, DrawsOnceAnInstant) {
    Shown scene;
    scene.jumpTo(frame(1));
    scene.view().setNeedsDisplay();
    EXPECT_TRUE(scene.turn());
    scene.view().setNeedsDisplay();
    EXPECT_FALSE(scene.turn());
    EXPECT_EQ(scene.ask().nextDeadline, frame(2));
    scene.jumpTo(frame(2));
    EXPECT_TRUE(scene.turn());
    EXPECT_EQ(scene.painter().drawings, 2);
}

TEST(Pacing, KeepsAViewThatAsksWhileItIsDrawnToOnePassAnInstant) {
    Shown scene;
    scene.painter().during = [](GLView& view) { view.setNeedsDisplay(); };
    scene.jumpTo(frame(1));
    scene.view().setNeedsDisplay();
    for (int i = 1; i <= 5; ++i) {
        scene.jumpTo(frame(i));
        EXPECT_TRUE(scene.turn());
        EXPECT_FALSE(scene.turn());
        EXPECT_EQ(scene.ask().nextDeadline, frame(i + 1));
    }
}

TEST(Pacing, DrawsAtOnceForDisplay) {
    Shown scene;
    scene.jumpTo(5ms);
    scene.view().display();
    EXPECT_EQ(scene.painter().drawings, 0);
    EXPECT_TRUE(scene.turn());
    EXPECT_EQ(scene.painter().drawings, 1);
    scene.view().setNeedsDisplay();
    EXPECT_FALSE(scene.turn());
    EXPECT_EQ(scene.ask().nextDeadline, frame(1));
}

TEST(Pacing, DrawsAtOnceForDisplayThoughTheInstantHadItsPass) {
    Shown scene;
    scene.jumpTo(frame(1));
    scene.view().setNeedsDisplay();
    EXPECT_TRUE(scene.turn());
    scene.view().display();
    EXPECT_TRUE(scene.turn());
    EXPECT_EQ(scene.painter().drawings, 2);
    EXPECT_FALSE(scene.turn());
}

TEST(Pacing, GoesOnFromALateCallAtTheGridsOwnInstants) {
    Shown scene;
    scene.jumpTo(5ms);
    scene.view().setNeedsDisplay();
    EXPECT_FALSE(scene.turn());
    scene.jumpTo(20ms);
    EXPECT_TRUE(scene.turn()) << "the pass of 16.7 ms, come late";
    scene.jumpTo(21ms);
    scene.view().setNeedsDisplay();
    EXPECT_FALSE(scene.turn());
    EXPECT_EQ(scene.ask().nextDeadline, frame(2));
}

TEST(Pacing, CountsAPassThatTheApplicationMakesUnasked) {
    Shown scene;
    scene.jumpTo(frame(1));
    scene.view().setNeedsDisplay();
    scene.draw();
    EXPECT_EQ(scene.painter().drawings, 1);
    EXPECT_FALSE(scene.ask().drawNow);
    EXPECT_FALSE(scene.ask().nextDeadline.has_value());
}

TEST(Pacing, WantsNothingForWhatIsNotVisible) {
    Shown scene;
    scene.host().disappear();
    scene.jumpTo(frame(1));
    scene.view().setNeedsDisplay();
    EXPECT_FALSE(scene.ask().drawNow);
    EXPECT_FALSE(scene.ask().nextDeadline.has_value());
    scene.host().appear();
    EXPECT_TRUE(scene.turn());
}

TEST(Pacing, ForgetsAPassThatNobodyNeedsAnyMore) {
    Shown scene;
    scene.jumpTo(5ms);
    scene.view().setNeedsDisplay();
    EXPECT_TRUE(scene.ask().nextDeadline.has_value());
    scene.host().disappear();
    EXPECT_FALSE(scene.ask().nextDeadline.has_value());
}

TEST(Pacing, FollowsTheDisplaysOwnRate) {
    Shown scene(30);
    scene.jumpTo(frame(1));
    scene.view().setNeedsDisplay();
    EXPECT_FALSE(scene.turn());
    EXPECT_EQ(scene.ask().nextDeadline, frame(2));
    scene.jumpTo(frame(2));
    EXPECT_TRUE(scene.turn());
}

TEST(DueWork, RunsAQueuedBlockInTheNextTurn) {
    Shown scene;
    scene.jumpTo(5ms);
    int runs = 0;
    MainQueue::main().async([&] { ++runs; });
    EXPECT_EQ(runs, 0);
    scene.ask();
    EXPECT_EQ(runs, 1);
}

TEST(DueWork, LeavesABlockQueuedByABlockToTheTurnAfterAndAsksForIt) {
    Shown scene;
    std::string ran;
    MainQueue::main().async([&] {
        ran += "a";
        MainQueue::main().async([&] { ran += "b"; });
    });
    EXPECT_EQ(scene.ask().nextDeadline, scene.host().now());
    EXPECT_EQ(ran, "a");
    EXPECT_FALSE(scene.ask().nextDeadline.has_value());
    EXPECT_EQ(ran, "ab");
}

TEST(DueWork, RunsAZeroDelayAtTheNextInstantThoughNothingIsDirty) {
    Shown scene;
    int runs = 0;
    scene.jumpTo(5ms);
    onMain(0ms, [&] { ++runs; });
    EXPECT_EQ(scene.ask().nextDeadline, frame(1));
    EXPECT_EQ(runs, 0);
    scene.jumpTo(frame(1));
    EXPECT_FALSE(scene.ask().drawNow);
    EXPECT_EQ(runs, 1);
}

TEST(DueWork, AdvancesAChainOfZeroDelaysOnceAFrame) {
    Shown scene;
    std::vector<Instant> at;
    const std::function<void()> link = [&] {
        at.push_back(scene.host().now());
        onMain(0ms, link);
    };
    onMain(0ms, link);
    for (int i = 0; i < 4; ++i)
        scene.jumpTo(*scene.ask().nextDeadline);
    scene.ask();
    EXPECT_EQ(at, (std::vector<Instant>{frame(1), frame(2), frame(3), frame(4)}));
}

TEST(DueWork, RunsAPositiveDelayAtItsOwnDeadline) {
    Shown scene;
    int runs = 0;
    onMain(7ms, [&] { ++runs; });
    EXPECT_EQ(scene.ask().nextDeadline, Instant(7ms));
    scene.jumpTo(7ms);
    scene.ask();
    EXPECT_EQ(runs, 1);
}

TEST(DueWork, IsDoneBeforeThePassOfItsInstant) {
    Shown scene;
    onMain(0ms, [&] { scene.view().setNeedsDisplay(); });
    scene.jumpTo(frame(1));
    EXPECT_TRUE(scene.turn());
    // Late, and still the pass of the instant at which the block was due.
    onMain(0ms, [&] { scene.view().setNeedsDisplay(); });
    scene.jumpTo(frame(2) + 3ms);
    EXPECT_TRUE(scene.turn());
}

TEST(DueWork, LeavesItsSmallStepsToOnePass) {
    Shown scene;
    std::function<void()> step = [&] {
        scene.view().setNeedsDisplay();
        onMain(5ms, step);
    };
    onMain(5ms, step);
    for (const Instant instant : {5ms, 10ms, 15ms}) {
        scene.jumpTo(instant);
        EXPECT_FALSE(scene.turn());
    }
    EXPECT_EQ(scene.ask().nextDeadline, frame(1));
    scene.jumpTo(frame(1));
    EXPECT_TRUE(scene.turn());
    EXPECT_EQ(scene.painter().drawings, 1);
}

TEST(DueWork, LetsAnAssertionFailureOutAndGoesOn) {
    Shown scene;
    int runs = 0;
    MainQueue::main().async([] { throw AssertionFailure("File", 1, "broken"); });
    MainQueue::main().async([&] { ++runs; });
    EXPECT_THROW(scene.ask(), AssertionFailure);
    scene.ask();
    EXPECT_EQ(runs, 1);
}

TEST(WakeUp, RingsForEverythingThatWantsATurn) {
    Shown scene;
    const int before = scene.wakeUps();
    MainQueue::main().async([] {});
    EXPECT_EQ(scene.wakeUps(), before + 1);
    scene.view().setNeedsDisplay();
    EXPECT_EQ(scene.wakeUps(), before + 2);
    const int beforeDisplay = scene.wakeUps();
    scene.view().display();
    EXPECT_GT(scene.wakeUps(), beforeDisplay);
}

TEST(WakeUp, IsSilentOnceTheHostIsGone) {
    Shown scene;
    scene.endHost();
    const int before = scene.wakeUps();
    MainQueue::main().async([] {});
    scene.view().setNeedsDisplay();
    EXPECT_EQ(scene.wakeUps(), before);
    MainQueue::main().reset();
}
