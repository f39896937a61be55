#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Timer.h"
#include "Platform/Interface/ViewController.h"
#include "Tests/Hosts/EmbeddedScene.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PaintedView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A headless host with a painted view that has been drawn at 0.
struct Scene {
    explicit Scene(
        zanto::HeadlessHostOptions::Time time = zanto::HeadlessHostOptions::Time::Virtual) {
        zanto::HeadlessHostOptions options;
        options.size = {16, 12};
        options.time = time;
        auto created = zanto::HeadlessHost::create(options);
        host = std::move(created).value();
        painted = std::make_unique<PaintedView>(Rect{{2, 3}, {4, 5}}, kRedColor);
        controller->view()->addSubview(painted->view);
        host->embedded().setRootViewController(controller);
        host->embedded().appear();
        host->settle();
    }
    [[nodiscard]] int drawings() const { return painted->painter->drawings; }
    /// A block that notes when it runs.
    [[nodiscard]] MainQueue::Block note() {
        return [this] { at.push_back(host->now()); };
    }

    std::unique_ptr<zanto::HeadlessHost> host;
    std::shared_ptr<ViewController> controller = make<ViewController>();
    std::unique_ptr<PaintedView> painted;
    std::vector<Instant> at;
};

MainQueue& queue() {
    return MainQueue::main();
}

} // namespace

TEST(HeadlessHost, StartsAtZeroAndDrawsWhatAppears) {
    const Scene scene;
    EXPECT_EQ(scene.host->now(), Instant(0));
    EXPECT_EQ(scene.host->framesPresented(), 1);
    EXPECT_EQ(scene.drawings(), 1);
}

TEST(HeadlessHost, GoesToTheInstantAndNoFurther) {
    const Scene scene;
    scene.host->advanceTo(12345us);
    EXPECT_EQ(scene.host->now(), Instant(12345us));
    scene.host->advanceTo(1us);
    EXPECT_EQ(scene.host->now(), Instant(12345us));
}

TEST(HeadlessHost, DrawsNothingWhileNothingIsDirty) {
    const Scene scene;
    scene.host->advanceTo(1h);
    EXPECT_EQ(scene.host->framesPresented(), 1);
}

TEST(HeadlessHost, DrawsAViewThatAlwaysAsksSixtyTimesASecond) {
    const Scene scene;
    std::vector<Instant> at;
    scene.painted->painter->during = [&](GLView& view) {
        at.push_back(scene.host->now());
        view.setNeedsDisplay();
    };
    scene.painted->view->setNeedsDisplay();
    scene.host->advanceTo(1s);
    ASSERT_EQ(at.size(), 60U);
    for (int i = 0; i < 60; ++i)
        EXPECT_EQ(at[static_cast<std::size_t>(i)], frame(i + 1));
    EXPECT_EQ(scene.host->framesPresented(), 61);
}

TEST(HeadlessHost, DrawsAtOnceForDisplay) {
    const Scene scene;
    scene.host->advanceTo(5ms);
    scene.painted->view->display();
    scene.host->settle();
    EXPECT_EQ(scene.drawings(), 2);
    EXPECT_EQ(scene.host->now(), Instant(5ms));
}

TEST(HeadlessHost, StopsAtEveryDeadline) {
    Scene scene;
    for (const Instant delay : {3ms, 1ms, 20ms})
        queue().asyncAfter(delay, scene.note());
    queue().asyncAfter(0ms, scene.note());
    scene.host->advanceTo(19ms);
    EXPECT_EQ(scene.at, (std::vector<Instant>{1ms, 3ms, frame(1)}));
    scene.host->advanceTo(20ms);
    EXPECT_EQ(scene.at.back(), Instant(20ms));
}

TEST(HeadlessHost, AdvancesAChainOfZeroDelaysOnceAFrameThoughNothingIsDirty) {
    Scene scene;
    const std::function<void()> link = [&] {
        scene.at.push_back(scene.host->now());
        queue().asyncAfter(0ms, link);
    };
    queue().asyncAfter(0ms, link);
    scene.host->advanceTo(frame(4));
    EXPECT_EQ(scene.at, (std::vector<Instant>{frame(1), frame(2), frame(3), frame(4)}));
    EXPECT_EQ(scene.host->framesPresented(), 1);
}

TEST(HeadlessHost, RunsQueuedBlocksAtTheirInstantAndNeverInsideTheCall) {
    Scene scene;
    std::string ran;
    queue().async([&] {
        queue().async([&] { ran += "b"; });
        ran += "a";
    });
    EXPECT_EQ(ran, "");
    scene.host->settle();
    EXPECT_EQ(ran, "ab");
    EXPECT_EQ(scene.host->now(), Instant(0));
}

TEST(HeadlessHost, KeepsATimerInStep) {
    Scene scene;
    const auto timer = Timer::scheduledTimer(5ms, Timer::Repeats::Yes, scene.note());
    scene.host->advanceTo(21ms);
    EXPECT_EQ(scene.at, (std::vector<Instant>{5ms, 10ms, 15ms, 20ms}));
}

TEST(HeadlessHost, HoldsVirtualTimeStillForOutstandingWork) {
    Scene scene;
    std::promise<void> started;
    std::thread worker(
        [&scene, token = queue().beginWork(), start = started.get_future()]() mutable {
            start.wait(); // so the work goes on after the clock wants to
            queue().async(scene.note());
            token.reset();
        });
    queue().async([&] { started.set_value(); });
    queue().asyncAfter(1ms, scene.note());
    scene.host->advanceTo(1s);
    worker.join();
    EXPECT_EQ(scene.at, (std::vector<Instant>{0ms, 1ms}));
}

TEST(HeadlessHost, HoldsStillForWorkThatBeginsOnTheWay) {
    Scene scene;
    std::thread worker;
    queue().asyncAfter(5ms, [&] {
        worker = std::thread([&scene, token = queue().beginWork()]() mutable {
            queue().async(scene.note());
            token.reset();
        });
    });
    queue().asyncAfter(6ms, scene.note());
    scene.host->advanceTo(1s);
    worker.join();
    EXPECT_EQ(scene.at, (std::vector<Instant>{5ms, 6ms}));
}

TEST(HeadlessHost, WaitsForWorkThatWorkBegins) {
    Scene scene;
    std::vector<std::thread> workers;
    std::function<void(int)> begin = [&](int left) {
        workers.emplace_back([&, left, token = queue().beginWork()]() mutable {
            queue().async([&, left] {
                scene.at.push_back(scene.host->now());
                if (left > 0)
                    begin(left - 1);
            });
            token.reset();
        });
    };
    begin(5);
    scene.host->settle();
    for (std::thread& worker : workers)
        worker.join();
    EXPECT_EQ(scene.at, std::vector<Instant>(6, Instant(0)));
}

TEST(HeadlessHost, SettlesOnceTheWorkHasBeenDrawn) {
    Scene scene;
    std::thread worker([&scene, token = queue().beginWork()]() mutable {
        queue().async([&scene] { scene.painted->view->display(); });
        token.reset();
    });
    scene.host->settle();
    worker.join();
    EXPECT_EQ(scene.drawings(), 2);
}

TEST(HeadlessHost, GivesTheSamePicturesForTheSameCalls) {
    std::vector<std::uint8_t> first;
    for (int i = 0; i < 2; ++i) {
        Scene scene;
        scene.host->advanceTo(100ms);
        const auto picture = scene.host->embedded().snapshot(2);
        ASSERT_TRUE(picture.ok());
        const auto pixels = picture.value()->pixels();
        const std::vector<std::uint8_t> bytes(pixels.begin(), pixels.end());
        if (i == 0)
            first = bytes;
        EXPECT_EQ(bytes, first);
    }
}

TEST(HeadlessHost, PresentsAfterEveryChangeOfSize) {
    Scene scene;
    int frames = 0;
    for (const Size size : {Size{12, 16}, Size{20, 20}, Size{100, 1}, Size{16, 12}}) {
        scene.host->embedded().resize(size, 2);
        scene.host->advanceTo(frame(++frames));
        EXPECT_EQ(scene.host->framesPresented(), frames + 1);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(HeadlessHost, GoesOnThoughNoFramebufferHoldsItsSize) {
    Scene scene;
    {
        const LogRecorder log;
        scene.host->embedded().resize({1e5, 10}, 1);
        scene.host->advanceTo(1s);
        EXPECT_EQ(log.count("100000 x 10"), 1);
    }
    const int presented = scene.host->framesPresented();
    scene.host->embedded().resize({16, 12}, 1);
    scene.host->advanceTo(2s);
    EXPECT_EQ(scene.host->framesPresented(), presented + 1);
}

TEST(HeadlessHost, IsCreatedAgainAfterTheFirstIsGone) {
    for (int i = 0; i < 3; ++i) {
        const Scene scene;
        scene.host->advanceTo(1s);
        EXPECT_EQ(scene.host->framesPresented(), 1);
    }
}

TEST(RealTime, GoesOnWithTheMachine) {
    Scene scene(zanto::HeadlessHostOptions::Time::Real);
    const Instant start = scene.host->now();
    queue().asyncAfter(2ms, scene.note());
    scene.host->advanceTo(start + 4ms);
    EXPECT_GE(scene.host->now(), start + 4ms);
    ASSERT_EQ(scene.at.size(), 1U);
    EXPECT_GE(scene.at[0], start + 2ms);
}

TEST(RealTime, DrawsAtMostOnceAnInstant) {
    Scene scene(zanto::HeadlessHostOptions::Time::Real);
    const FrameGrid grid;
    std::vector<Instant> instants;
    scene.painted->painter->during = [&](GLView& view) {
        instants.push_back(grid.atOrBefore(scene.host->now()));
        view.setNeedsDisplay();
    };
    scene.painted->view->setNeedsDisplay();
    scene.host->advanceTo(scene.host->now() + 50ms);
    EXPECT_GE(instants.size(), 1U);
    EXPECT_LE(instants.size(), 5U);
    EXPECT_EQ(std::adjacent_find(instants.begin(), instants.end()), instants.end());
}

TEST(RealTime, DoesNotWaitForWorkUnderWay) {
    Scene scene(zanto::HeadlessHostOptions::Time::Real);
    const auto work = queue().beginWork();
    const Instant until = scene.host->now() + 1ms;
    scene.host->advanceTo(until);
    EXPECT_GE(scene.host->now(), until);
}

TEST(RealTime, SettlesWhenWorkOfAnotherThreadIsDone) {
    Scene scene(zanto::HeadlessHostOptions::Time::Real);
    std::promise<void> started;
    std::thread worker(
        [&scene, token = queue().beginWork(), start = started.get_future()]() mutable {
            start.wait();
            queue().async(scene.note());
            token.reset();
        });
    queue().async([&] { started.set_value(); });
    scene.host->settle();
    worker.join();
    EXPECT_EQ(scene.at.size(), 1U);
}

TEST(RealTime, SettlesWhenWorkOfADelayedBlockIsDone) {
    Scene scene(zanto::HeadlessHostOptions::Time::Real);
    queue().asyncAfter(2ms, [work = queue().beginWork(), note = scene.note()] { note(); });
    scene.host->settle();
    EXPECT_EQ(scene.at.size(), 1U);
}

TEST(RealTime, WakesForABlockOfAnotherThread) {
    Scene scene(zanto::HeadlessHostOptions::Time::Real);
    std::atomic<bool> ran = false;
    std::thread worker([&] { queue().async([&] { ran = true; }); });
    while (!ran)
        scene.host->advanceTo(scene.host->now() + 1ms);
    worker.join();
    EXPECT_TRUE(ran);
}
