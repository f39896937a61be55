#include "Platform/Foundation/Timer.h"

#include "Platform/Foundation/MainQueue.h"

#include <utility>

namespace platform {

Timer::Timer(Instant interval, Repeats repeats, std::function<void()> action)
    : interval_(interval), repeats_(repeats), action_(std::move(action)) {}

std::shared_ptr<Timer> Timer::scheduledTimer(Instant interval, Repeats repeats,
                                             std::function<void()> action) {
    std::shared_ptr<Timer> timer(new Timer(interval, repeats, std::move(action)));
    timer->schedule(MainQueue::main().now());
    return timer;
}

void Timer::schedule(Instant from) {
    const Instant now = MainQueue::main().now();
    deadline_ = from + interval_;
    while (deadline_ <= now)
        deadline_ += interval_;
    MainQueue::main().asyncAfter(deadline_ - now, [weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->fire();
    });
}

void Timer::fire() {
    if (!isValid())
        return;
    // A copy, because the action may invalidate the timer that holds it.
    const auto action = action_;
    if (repeats_ == Repeats::Yes)
        schedule(deadline_);
    else
        invalidate();
    action();
}

void Timer::invalidate() {
    action_ = nullptr;
}

} // namespace platform
