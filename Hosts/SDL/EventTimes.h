#pragma once

#include "Platform/Foundation/Clock.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

/// When events happened, on the host's clock. SDL stamps them in milliseconds of a counter of its
/// own, which comes round after 49 days.
///
/// Many systems stamp an event when SDL collects it. After a stall a whole drag is collected at
/// once and its stamps differ by next to nothing, so events of one pump that are less than a frame
/// apart count as of one instant.
class EventTimes {
public:
    /// `ticks` is SDL's counter and `now` the host's clock at the moment of the call. Never later
    /// than `now`, and never earlier than the result before.
    [[nodiscard]] platform::Instant instantOf(std::uint32_t timestamp, std::uint32_t ticks,
                                              platform::Instant now) {
        // An event of the future, by the counter's coarseness, counts as one of this moment.
        const auto age = std::max(static_cast<std::int32_t>(ticks - timestamp), 0);
        const platform::Instant then = now - std::chrono::milliseconds(age);
        if (isPumping_ && then - last_ < kFrame)
            return last_;
        isPumping_ = true;
        return last_ = std::max(last_, std::min(then, now));
    }

    /// No event is left: the next one belongs to another pump.
    void endPump() { isPumping_ = false; }

private:
    static constexpr platform::Instant kFrame =
        std::chrono::nanoseconds(std::chrono::seconds(1)) / 60;

    platform::Instant last_{0};
    bool isPumping_ = false;
};
