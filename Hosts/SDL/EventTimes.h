#pragma once

#include "Platform/Foundation/Clock.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace zanto {

/// Converts event timestamps to the host's clock. SDL timestamps are milliseconds of its own
/// counter, which wraps around after 49 days.
///
/// Many systems set the timestamp when SDL collects the event. After a stall, a whole drag is
/// collected at once, with timestamps that hardly differ. Therefore events of one pump that are
/// less than a frame apart get the same time.
class EventTimes {
public:
    /// `ticks` is SDL's counter and `now` the host's clock, both at the moment of the call. The
    /// result is never later than `now` and never earlier than the previous result.
    [[nodiscard]] platform::Instant instantOf(std::uint32_t timestamp, std::uint32_t ticks,
                                              platform::Instant now) {
        // The counter is coarse, so that an event may appear to be in the future. It gets the
        // current time.
        const auto age = std::max(static_cast<std::int32_t>(ticks - timestamp), 0);
        const platform::Instant then = now - std::chrono::milliseconds(age);
        if (isPumping_ && then - last_ < kFrame)
            return last_;
        isPumping_ = true;
        return last_ = std::max(last_, std::min(then, now));
    }

    /// The event queue is empty: the next event belongs to a new pump.
    void endPump() { isPumping_ = false; }

private:
    static constexpr platform::Instant kFrame =
        std::chrono::nanoseconds(std::chrono::seconds(1)) / 60;

    platform::Instant last_{0};
    bool isPumping_ = false;
};

} // namespace zanto
