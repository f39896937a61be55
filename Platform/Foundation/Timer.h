#pragma once

#include "Platform/Foundation/Clock.h"

#include <functional>
#include <memory>

namespace platform {

/// Calls an action on the main queue, once or repeatedly.
///
/// Deadlines are whole multiples of the interval after the start. A deadline that is missed by a
/// full interval is skipped.
///
/// Owner:  the holders of the pointer. Releasing the last one or calling `invalidate()` stops the
///         timer, also from inside the action.
/// Thread: main.
class Timer : public std::enable_shared_from_this<Timer> {
public:
    enum class Repeats { No, Yes };

    /// `interval`: above zero.
    [[nodiscard]] static std::shared_ptr<Timer> scheduledTimer(Instant interval, Repeats repeats,
                                                               std::function<void()> action);
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    void invalidate();
    [[nodiscard]] bool isValid() const { return static_cast<bool>(action_); }

private:
    Timer(Instant interval, Repeats repeats, std::function<void()> action);
    void schedule(Instant from);
    void fire();

    Instant interval_;
    Repeats repeats_;
    std::function<void()> action_;
    Instant deadline_{0};
};

} // namespace platform
