#pragma once

#include "Platform/Foundation/Export.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>

namespace platform {

/// A point in time, counted from the clock's own zero.
using Instant = std::chrono::nanoseconds;

/// Turns seconds into an instant or a span, rounded to the nearest nanosecond.
[[nodiscard]] ZANTO_EXPORT Instant fromSeconds(double seconds);
[[nodiscard]] ZANTO_EXPORT double toSeconds(Instant instant);

/// Where the library's time comes from; nothing in it reads another.
///
/// Thread: any.
class ZANTO_EXPORT Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Instant now() const = 0;
    /// Whether it moves only when told, and so can stand still until other work is done.
    [[nodiscard]] virtual bool isVirtual() const { return false; }
};

/// The machine's steady clock, zero at its creation.
class ZANTO_EXPORT SystemClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override;

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// A clock that moves only when told, for rendering and tests.
///
/// Thread: one moves it; any reads it.
class ZANTO_EXPORT VirtualClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override { return Instant(now_.load()); }
    [[nodiscard]] bool isVirtual() const override { return true; }

    /// Moves on; an earlier instant than now changes nothing, time never runs backwards.
    void advanceTo(Instant instant);

private:
    std::atomic<Instant::rep> now_{0};
};

/// The display's refreshes: instants at whole multiples of an interval.
class ZANTO_EXPORT FrameGrid {
public:
    /// `framesPerSecond`: above 0.
    explicit FrameGrid(double framesPerSecond = 60.0);

    /// The last refresh at or before `instant`.
    [[nodiscard]] Instant atOrBefore(Instant instant) const;
    /// The first refresh strictly after `instant`.
    [[nodiscard]] Instant after(Instant instant) const;

private:
    [[nodiscard]] Instant at(std::int64_t index) const;
    double framesPerSecond_;
};

} // namespace platform
