#include "Tests/Support/QueueDriver.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <utility>

using platform::Instant;
using platform::MainQueue;

namespace tests {

/// Lets the driver sleep until something is queued.
struct QueueDriver::WakeUp {
    std::mutex mutex; // guards rung
    std::condition_variable condition;
    bool rung = false;

    void ring() {
        {
            const std::scoped_lock lock(mutex);
            rung = true;
        }
        condition.notify_one();
    }
    void wait(std::chrono::steady_clock::time_point until) {
        std::unique_lock lock(mutex);
        condition.wait_until(lock, until, [this] { return rung; });
        rung = false;
    }
};

QueueDriver::QueueDriver(Time time) : wakeUp_(std::make_shared<WakeUp>()) {
    auto& queue = MainQueue::main();
    if (time == Time::Virtual) {
        virtualClock_ = std::make_shared<platform::VirtualClock>();
        queue.setClock(virtualClock_);
    } else {
        queue.setClock(std::make_shared<platform::SystemClock>());
    }
    queue.setWakeUp([wakeUp = wakeUp_] { wakeUp->ring(); });
}

QueueDriver::~QueueDriver() {
    MainQueue::main().reset();
    MainQueue::main().setClock(std::make_shared<platform::SystemClock>());
}

bool QueueDriver::runUntil(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + kLimit;
    auto& queue = MainQueue::main();
    for (;;) {
        queue.runDue();
        if (condition())
            return true;
        const auto steadyNow = std::chrono::steady_clock::now();
        if (steadyNow >= limit)
            return false;
        const auto next = queue.nextDeadline();
        if (next && *next <= now())
            continue;
        // A virtual deadline does not come by waiting.
        const bool comes = next && !virtualClock_;
        wakeUp_->wait(comes ? std::min(limit, steadyNow + (*next - now())) : limit);
    }
}

void QueueDriver::lookAgainIn(Instant delay) {
    if (std::exchange(isLookingAgain_, true))
        return;
    MainQueue::main().asyncAfter(delay, [this] { isLookingAgain_ = false; });
}

bool QueueDriver::settle() {
    return runUntil([this] {
        const auto next = MainQueue::main().nextDeadline();
        return MainQueue::main().outstandingWork() == 0 && !(next && *next <= now());
    });
}

bool QueueDriver::advanceTo(Instant instant) {
    for (;;) {
        if (!settle())
            return false;
        const auto next = MainQueue::main().nextDeadline();
        if (!next || *next > instant)
            break;
        virtualClock_->advanceTo(*next);
    }
    virtualClock_->advanceTo(instant);
    return settle();
}

} // namespace tests
