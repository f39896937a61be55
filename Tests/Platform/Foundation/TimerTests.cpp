#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Timer.h"
#include "Tests/Platform/Foundation/VirtualTime.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// Virtual time, and a timer's calls in it.
struct TimerScene {
    void start(Instant interval, Timer::Repeats repeats) {
        timer = Timer::scheduledTimer(interval, repeats,
                                      [this] { calls.push_back(MainQueue::main().now()); });
    }

    VirtualTime time;
    std::vector<Instant> calls;
    std::shared_ptr<Timer> timer;
};

} // namespace

TEST(Timer, NeverCallsInsideTheCallThatStartsIt) {
    TimerScene scene;
    scene.start(5ms, Timer::Repeats::Yes);
    EXPECT_TRUE(scene.calls.empty());
    EXPECT_TRUE(scene.timer->isValid());
}

TEST(Timer, RepeatsAtWholeMultiplesOfItsInterval) {
    TimerScene scene;
    scene.time.jumpTo(1ms);
    scene.start(5ms, Timer::Repeats::Yes);
    scene.time.runTo(22ms);
    EXPECT_EQ(scene.calls, (std::vector<Instant>{6ms, 11ms, 16ms, 21ms}));
}

TEST(Timer, CallsOnceAndIsInvalidThenIfItDoesNotRepeat) {
    TimerScene scene;
    scene.start(5ms, Timer::Repeats::No);
    scene.time.runTo(1s);
    EXPECT_EQ(scene.calls, std::vector<Instant>{5ms});
    EXPECT_FALSE(scene.timer->isValid());
}

TEST(Timer, ComesBackToItsMultiplesAfterALateCall) {
    TimerScene scene;
    scene.start(10ms, Timer::Repeats::Yes);
    scene.time.jumpTo(14ms);
    scene.time.runTo(30ms);
    EXPECT_EQ(scene.calls, (std::vector<Instant>{14ms, 20ms, 30ms}));
}

TEST(Timer, SkipsWhatItMissedByAFullInterval) {
    TimerScene scene;
    scene.start(10ms, Timer::Repeats::Yes);
    scene.time.jumpTo(57ms);
    scene.time.runTo(70ms);
    EXPECT_EQ(scene.calls, (std::vector<Instant>{57ms, 60ms, 70ms}));
}

TEST(Timer, StopsWhenInvalidated) {
    TimerScene scene;
    scene.start(5ms, Timer::Repeats::Yes);
    scene.time.runTo(5ms);
    scene.timer->invalidate();
    scene.timer->invalidate();
    EXPECT_FALSE(scene.timer->isValid());
    scene.time.runTo(1s);
    EXPECT_EQ(scene.calls.size(), 1U);
}

TEST(Timer, StopsWithItsLastHolder) {
    TimerScene scene;
    scene.start(5ms, Timer::Repeats::Yes);
    scene.timer.reset();
    scene.time.runTo(1s);
    EXPECT_TRUE(scene.calls.empty());
}

TEST(Timer, MayBeInvalidatedByItsOwnCall) {
    VirtualTime time;
    int calls = 0;
    std::shared_ptr<Timer> timer;
    timer = Timer::scheduledTimer(5ms, Timer::Repeats::Yes, [&] {
        ++calls;
        timer->invalidate();
    });
    time.runTo(20ms);
    EXPECT_EQ(calls, 1);
}

TEST(Timer, MayLoseItsLastHolderInItsOwnCall) {
    VirtualTime time;
    std::shared_ptr<Timer> timer;
    const auto captured = std::make_shared<int>(0);
    timer = Timer::scheduledTimer(5ms, Timer::Repeats::Yes, [&timer, captured] {
        timer.reset();
        ++*captured; // what the call captured is still there
    });
    time.runTo(20ms);
    EXPECT_EQ(*captured, 1);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST(Timer, MayStartAnotherInItsCall) {
    VirtualTime time;
    std::vector<Instant> calls;
    std::shared_ptr<Timer> second;
    const auto first = Timer::scheduledTimer(5ms, Timer::Repeats::No, [&] {
        second = Timer::scheduledTimer(5ms, Timer::Repeats::No,
                                       [&] { calls.push_back(MainQueue::main().now()); });
    });
    time.runTo(20ms);
    EXPECT_EQ(calls, std::vector<Instant>{10ms});
}

TEST(Timer, KeepsEachOfSeveralApart) {
    TimerScene fast;
    fast.start(5ms, Timer::Repeats::Yes);
    std::vector<Instant> slow;
    const auto other = Timer::scheduledTimer(8ms, Timer::Repeats::Yes,
                                             [&] { slow.push_back(MainQueue::main().now()); });
    fast.time.runTo(16ms);
    EXPECT_EQ(fast.calls, (std::vector<Instant>{5ms, 10ms, 15ms}));
    EXPECT_EQ(slow, (std::vector<Instant>{8ms, 16ms}));
}
