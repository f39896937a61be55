#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/MainQueue.h"

#include <chrono>
#include <functional>
#include <memory>

namespace zanto {
class WakeUpSignal;
}

namespace tests {

/// Runs the main queue as a host would that shows nothing, in virtual or in real time.
///
/// Owner:  one at a time; the queue is empty after it.
/// Thread: main. Every wait has a limit, which only a broken test reaches.
class QueueDriver {
public:
    enum class Time { Virtual, Real };
    static constexpr std::chrono::seconds kLimit{60};

    explicit QueueDriver(Time time);
    ~QueueDriver();
    QueueDriver(const QueueDriver&) = delete;
    QueueDriver& operator=(const QueueDriver&) = delete;

    [[nodiscard]] platform::Instant now() const { return platform::MainQueue::main().now(); }

    /// Runs what is due until `condition` holds; false after the limit. Virtual time stands.
    bool runUntil(const std::function<bool()>& condition);
    /// Has a running wait look at its condition again then, whatever else happens.
    void lookAgainIn(platform::Instant delay);
    /// Runs what is due and waits until no work is outstanding.
    bool settle();
    /// Virtual time only: stops at every deadline on the way, and for outstanding work.
    bool advanceTo(platform::Instant instant);

private:
    std::shared_ptr<platform::VirtualClock> virtualClock_;
    std::shared_ptr<zanto::WakeUpSignal> signal_;
    bool isLookingAgain_ = false;
};

} // namespace tests
