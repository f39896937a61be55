#include "Tests/Support/QueueDriver.h"

#include "Hosts/Embedded/WakeUpSignal.h"

#include <algorithm>
#include <utility>

using platform::Instant;
using platform::MainQueue;

namespace tests {

QueueDriver::QueueDriver(Time time) : signal_(std::make_shared<zanto::WakeUpSignal>()) {
    auto& queue = MainQueue::main();
    if (time == Time::Virtual) {
        virtualClock_ = std::make_shared<platform::VirtualClock>();
        queue.setClock(virtualClock_);
    } else {
        queue.setClock(std::make_shared<platform::SystemClock>());
    }
    queue.setWakeUp([signal = signal_] { signal->ring(); });
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
        const Instant left = limit - steadyNow;
        signal_->wait(comes ? std::min(left, *next - now()) : left);
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
