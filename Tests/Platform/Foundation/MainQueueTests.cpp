#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/MainQueue.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A queue of its own in virtual time, and what ran on it.
struct QueueInVirtualTime {
    QueueInVirtualTime() { queue.setClock(clock); }

    /// A block that notes its name.
    [[nodiscard]] MainQueue::Block note(const std::string& name) {
        return [this, name] { ran += name; };
    }
    void runAt(Instant instant) {
        clock->advanceTo(instant);
        queue.runDue();
    }

    std::shared_ptr<VirtualClock> clock = std::make_shared<VirtualClock>();
    MainQueue queue;
    std::string ran;
};

Instant frame(int index) {
    return fromSeconds(index / 60.0);
}

/// Does something in its destructor, from inside a block that is dropped.
struct AtEnd {
    explicit AtEnd(std::function<void()> action) : run(std::move(action)) {}
    ~AtEnd() { run(); }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    std::function<void()> run;
};

} // namespace

TEST(MainQueue, HasNoDeadlineWhileEmpty) {
    QueueInVirtualTime q;
    EXPECT_FALSE(q.queue.nextDeadline().has_value());
    q.queue.runDue();
    EXPECT_FALSE(q.queue.nextDeadline().has_value());
}

TEST(MainQueue, RunsAQueuedBlockInTheNextTurnOnly) {
    QueueInVirtualTime q;
    q.queue.async(q.note("a"));
    EXPECT_EQ(q.ran, "");
    EXPECT_EQ(q.queue.nextDeadline(), q.queue.now());
    q.queue.runDue();
    EXPECT_EQ(q.ran, "a");
    q.queue.runDue();
    EXPECT_EQ(q.ran, "a");
}

TEST(MainQueue, RunsInTheOrderOfQueueing) {
    QueueInVirtualTime q;
    for (const char* name : {"a", "b", "c", "d"})
        q.queue.async(q.note(name));
    q.queue.runDue();
    EXPECT_EQ(q.ran, "abcd");
}

TEST(MainQueue, LeavesABlockQueuedByABlockToTheTurnAfter) {
    QueueInVirtualTime q;
    q.queue.async([&] {
        q.ran += "a";
        q.queue.async(q.note("c"));
    });
    q.queue.async(q.note("b"));
    q.queue.runDue();
    EXPECT_EQ(q.ran, "ab");
    EXPECT_EQ(q.queue.nextDeadline(), q.queue.now());
    q.queue.runDue();
    EXPECT_EQ(q.ran, "abc");
}

TEST(MainQueue, RunsAPositiveDelayAtItsOwnDeadline) {
    QueueInVirtualTime q;
    q.clock->advanceTo(3ms);
    q.queue.asyncAfter(5ms, q.note("a"));
    EXPECT_EQ(q.queue.nextDeadline(), Instant(8ms));
    q.runAt(8ms - Instant(1));
    EXPECT_EQ(q.ran, "");
    q.runAt(8ms);
    EXPECT_EQ(q.ran, "a");
}

TEST(MainQueue, RunsADelayOfZeroOrLessAtTheNextFrameInstant) {
    QueueInVirtualTime q;
    for (const Instant delay : {Instant(0), Instant(-1), Instant(-5s)}) {
        q.queue.asyncAfter(delay, q.note("a"));
        EXPECT_EQ(q.queue.nextDeadline(), q.queue.frameGrid().after(q.queue.now()));
        const Instant next = *q.queue.nextDeadline();
        q.runAt(next - Instant(1));
        EXPECT_EQ(q.ran, "");
        q.runAt(next);
        EXPECT_EQ(q.ran, "a");
        q.ran.clear();
    }
}

TEST(MainQueue, TakesTheInstantAfterWhenItStandsOnOne) {
    QueueInVirtualTime q;
    q.clock->advanceTo(frame(7));
    q.queue.asyncAfter(0ms, q.note("a"));
    EXPECT_EQ(q.queue.nextDeadline(), frame(8));
}

TEST(MainQueue, AdvancesAChainOfZeroDelaysOncePerFrame) {
    QueueInVirtualTime q;
    std::vector<Instant> at;
    const std::function<void()> link = [&] {
        at.push_back(q.queue.now());
        if (at.size() < 5)
            q.queue.asyncAfter(0ms, link);
    };
    q.queue.asyncAfter(0ms, link);
    while (q.queue.nextDeadline())
        q.runAt(*q.queue.nextDeadline());
    EXPECT_EQ(at, (std::vector<Instant>{frame(1), frame(2), frame(3), frame(4), frame(5)}));
}

TEST(MainQueue, FollowsTheHostsFrameGrid) {
    QueueInVirtualTime q;
    q.queue.setFrameGrid(FrameGrid(30));
    q.queue.asyncAfter(0ms, q.note("a"));
    EXPECT_EQ(q.queue.nextDeadline(), fromSeconds(1 / 30.0));
}

TEST(MainQueue, RunsOverdueBlocksByDeadlineThenByOrderOfQueueing) {
    QueueInVirtualTime q;
    q.queue.asyncAfter(9ms, q.note("d"));
    q.queue.asyncAfter(5ms, q.note("b"));
    q.queue.asyncAfter(5ms, q.note("c"));
    q.queue.async(q.note("a"));
    q.queue.asyncAfter(2s, q.note("later"));
    q.runAt(1s);
    EXPECT_EQ(q.ran, "abcd");
    EXPECT_EQ(q.queue.nextDeadline(), Instant(2s));
}

TEST(MainQueue, LetsAnAssertionFailureOutAndKeepsTheBlocksBehindIt) {
    QueueInVirtualTime q;
    q.queue.async(q.note("a"));
    q.queue.async([] { throw AssertionFailure("File", 1, "broken"); });
    q.queue.async(q.note("b"));
    EXPECT_THROW(q.queue.runDue(), AssertionFailure);
    EXPECT_EQ(q.ran, "a");
    q.queue.runDue();
    EXPECT_EQ(q.ran, "ab");
}

TEST(MainQueue, LetsGoOfABlockOnceItHasRun) {
    QueueInVirtualTime q;
    const auto held = std::make_shared<int>(1);
    q.queue.async([held] {});
    EXPECT_EQ(held.use_count(), 2);
    q.queue.runDue();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(MainQueue, CallsTheWakeUpForEveryBlockAndOnRequest) {
    QueueInVirtualTime q;
    int calls = 0;
    q.queue.setWakeUp([&] { ++calls; });
    q.queue.async([] {});
    EXPECT_EQ(calls, 1);
    q.queue.asyncAfter(5ms, [] {});
    EXPECT_EQ(calls, 2);
    q.queue.wakeUp();
    EXPECT_EQ(calls, 3);
}

TEST(MainQueue, CallsTheWakeUpOutsideItsLock) {
    QueueInVirtualTime q;
    q.queue.setWakeUp([&] { EXPECT_TRUE(q.queue.nextDeadline().has_value()); });
    q.queue.async([] {});
}

TEST(MainQueue, WakesTheHostWhenWorkEnds) {
    QueueInVirtualTime q;
    int calls = 0;
    q.queue.setWakeUp([&] { ++calls; });
    auto work = q.queue.beginWork();
    EXPECT_EQ(calls, 0);
    work.reset();
    EXPECT_EQ(calls, 1);
}

TEST(MainQueue, CountsWorkWhileItsTokensLive) {
    MainQueue queue;
    EXPECT_EQ(queue.outstandingWork(), 0);
    auto one = queue.beginWork();
    auto other = queue.beginWork();
    const auto sameAsOne = one;
    EXPECT_EQ(queue.outstandingWork(), 2);
    one.reset();
    EXPECT_EQ(queue.outstandingWork(), 2);
    other.reset();
    EXPECT_EQ(queue.outstandingWork(), 1);
}

TEST(MainQueue, DropsEveryBlockUnrunWhenReset) {
    QueueInVirtualTime q;
    const auto held = std::make_shared<int>(1);
    int wakeUps = 0;
    q.queue.setWakeUp([&] { ++wakeUps; });
    q.queue.async([&q, held] { q.ran += "a"; });
    q.queue.asyncAfter(5ms, q.note("b"));
    q.queue.reset();
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_FALSE(q.queue.nextDeadline().has_value());
    q.runAt(1s);
    EXPECT_EQ(q.ran, "");
    wakeUps = 0;
    q.queue.async([] {});
    EXPECT_EQ(wakeUps, 0) << "the wake-up belongs to the host that went";
}

TEST(MainQueue, StandsADroppedBlockThatQueuesAnother) {
    QueueInVirtualTime q;
    q.queue.async([last = std::make_shared<AtEnd>([&] { q.queue.async(q.note("b")); })] {});
    q.queue.reset();
    EXPECT_FALSE(q.queue.nextDeadline().has_value()) << "nothing of the old host may reach the new";
}

TEST(MainQueue, KeepsTheDistanceOfDeadlinesWhenTheClockIsReplaced) {
    MainQueue queue;
    const auto old = std::make_shared<VirtualClock>();
    old->advanceTo(100s);
    queue.setClock(old);
    std::string ran;
    queue.asyncAfter(5ms, [&] { ran += "b"; });
    queue.async([&] { ran += "a"; });
    const auto clock = std::make_shared<VirtualClock>();
    queue.setClock(clock);
    EXPECT_EQ(queue.nextDeadline(), Instant(0));
    queue.runDue();
    EXPECT_EQ(ran, "a");
    EXPECT_EQ(queue.nextDeadline(), Instant(5ms));
    clock->advanceTo(5ms);
    queue.runDue();
    EXPECT_EQ(ran, "ab");
}

TEST(MainQueue, TakesBlocksFromManyThreadsEachInItsOrder) {
    constexpr int kThreads = 4;
    constexpr int kBlocks = 500;
    MainQueue queue;
    std::atomic<int> wakeUps = 0;
    queue.setWakeUp([&] { ++wakeUps; });
    std::vector<std::vector<int>> ran(kThreads); // only the draining thread touches it
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&queue, &ran, t] {
            for (int i = 0; i < kBlocks; ++i)
                queue.async([&ran, t, i] { ran[static_cast<std::size_t>(t)].push_back(i); });
        });
    }
    queue.runDue(); // while they are at it
    for (std::thread& thread : threads)
        thread.join();
    while (queue.nextDeadline())
        queue.runDue();
    EXPECT_EQ(wakeUps, kThreads * kBlocks);
    for (const std::vector<int>& one : ran) {
        ASSERT_EQ(one.size(), static_cast<std::size_t>(kBlocks));
        for (int i = 0; i < kBlocks; ++i)
            ASSERT_EQ(one[static_cast<std::size_t>(i)], i);
    }
}

TEST(MainQueue, CountsWorkOfManyThreads) {
    MainQueue queue;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&queue] {
            for (int i = 0; i < 1000; ++i) {
                const auto work = queue.beginWork();
                EXPECT_GE(queue.outstandingWork(), 1);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(queue.outstandingWork(), 0);
}
