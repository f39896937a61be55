#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"

#include <cstdint>

namespace platform {

/// A time in media: `value` / `timescale` seconds. A timescale of 0 is no time at all: invalid, or,
/// as the duration of a live stream or of media that has not been opened yet, indefinite.
struct ZANTO_EXPORT MediaTime {
    std::int64_t value = 0;
    std::int32_t timescale = 0;

    /// To the nearest unit, halves away from zero. Invalid for a timescale of 0 and for seconds
    /// that are not finite or too many.
    [[nodiscard]] static MediaTime makeWithSeconds(double seconds, std::int32_t timescale);
    /// In nanoseconds.
    [[nodiscard]] static MediaTime make(Instant instant);

    [[nodiscard]] bool isNumeric() const { return timescale > 0; }
    /// NaN for what is no time.
    [[nodiscard]] double seconds() const;
    /// Only of a numeric time; to the nearest nanosecond.
    [[nodiscard]] Instant instant() const;

    friend bool operator==(const MediaTime&, const MediaTime&) = default;
};

/// The start of every item.
inline constexpr MediaTime kMediaTimeZero{0, 1};

/// Seconds of the host's clock: the one that paces media, drawing and everything else.
[[nodiscard]] double currentMediaTime();

} // namespace platform
