#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/ReplaceableFunction.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <string_view>
#include <thread>

using platform::LogLevel;
using platform::MainQueue;
using platform::ReplaceableFunction;

namespace {

/// A function that stays in its call long enough for a replacement that does not wait to be
/// noticed.
class SlowFunction {
public:
    void operator()() {
        entered_.set_value();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        hasEnded_ = true;
    }
    void waitUntilEntered() { entered_.get_future().wait(); }
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }

private:
    std::promise<void> entered_;
    std::atomic<bool> hasEnded_ = false;
};

} // namespace

TEST(ReplaceableFunction, IsCalledWithItsArguments) {
    int sum = 0;
    ReplaceableFunction<int, int> function([&](int a, int b) { sum = 10 * a + b; });
    function(1, 2);
    EXPECT_EQ(sum, 12);
}

TEST(ReplaceableFunction, MayBeEmpty) {
    ReplaceableFunction<> function;
    function();
    EXPECT_FALSE(function.replace(nullptr));
}

TEST(ReplaceableFunction, GivesBackTheEarlierOne) {
    int calls = 0;
    ReplaceableFunction<> function([&] { ++calls; });
    function.replace(nullptr)();
    function();
    EXPECT_EQ(calls, 1);
}

TEST(ReplaceableFunction, MayReplaceItself) {
    int first = 0;
    int second = 0;
    ReplaceableFunction<> function;
    function.replace([&] {
        ++first;
        function.replace([&] { ++second; });
        ++first;
    });
    function();
    function();
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 1);
}

TEST(ReplaceableFunction, HasEndedOnOtherThreadsOnceItIsReplaced) {
    SlowFunction slow;
    ReplaceableFunction<> function(std::ref(slow));
    std::thread other([&] { function(); });
    slow.waitUntilEntered();
    function.replace(nullptr);
    EXPECT_TRUE(slow.hasEnded());
    other.join();
}

TEST(MainQueue, WakeUpHasEndedOnOtherThreadsOnceTheQueueIsReset) {
    SlowFunction slow;
    MainQueue queue;
    queue.setWakeUp(std::ref(slow));
    std::thread other([&] { queue.wakeUp(); });
    slow.waitUntilEntered();
    queue.reset();
    EXPECT_TRUE(slow.hasEnded());
    other.join();
}

TEST(MainQueue, MayBeDestroyedWithABlockThatHoldsWork) {
    int wakeUps = 0;
    {
        MainQueue queue;
        queue.async([work = queue.beginWork()] {});
        queue.setWakeUp([&] { ++wakeUps; });
    }
    EXPECT_EQ(wakeUps, 0);
}

TEST(LogSink, HasEndedOnOtherThreadsOnceItIsReplaced) {
    SlowFunction slow;
    const auto before = platform::setLogSink([&](LogLevel, std::string_view) { slow(); });
    std::thread other([] { platform::log(LogLevel::Info, "line"); });
    slow.waitUntilEntered();
    platform::setLogSink(before);
    EXPECT_TRUE(slow.hasEnded());
    other.join();
}
