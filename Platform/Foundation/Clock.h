#pragma once

#include "Platform/Foundation/Export.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>

namespace platform {

/// A point in time, counted from the clock's zero, or a time span.
using Instant = std::chrono::nanoseconds;

/// Converts seconds to an instant or a span, rounded to the nearest nanosecond.
[[nodiscard]] ZANTO_EXPORT Instant fromSeconds(double seconds);
[[nodiscard]] ZANTO_EXPORT double toSeconds(Instant instant);

/// The source of the library's time; the library reads no other clock.
///
/// Thread: any; thread-safe.
class ZANTO_EXPORT Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Instant now() const = 0;
    /// Whether the clock advances only on request, and so can stand still until other work is done.
    [[nodiscard]] virtual bool isVirtual() const { return false; }
};

/// The machine's steady clock; it is zero when the object is created.
class ZANTO_EXPORT SystemClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override;

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// A clock that advances only on request, for rendering and tests.
///
/// Thread: any; thread-safe, except `advanceTo`, which is any; not thread-safe, one thread at a
///         time.
class ZANTO_EXPORT VirtualClock final : public Clock {
public:
    [[nodiscard]] Instant now() const override { return Instant(now_.load()); }
    [[nodiscard]] bool isVirtual() const override { return true; }

    /// Advances to `instant`. An earlier instant than now changes nothing: time never runs
    /// backwards.
    void advanceTo(Instant instant);

private:
    std::atomic<Instant::rep> now_{0};
};

/// The refreshes of the display, which are the frame times: instants at whole multiples of an
/// interval.
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
