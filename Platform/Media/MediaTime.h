#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"

#include <cstdint>

namespace platform {

/// A time in media: `value` / `timescale` seconds. A time with a timescale of 0 is not numeric: it
/// is invalid or, as the duration of a live stream or of media that is not open yet, indefinite.
struct ZANTO_EXPORT MediaTime {
    std::int64_t value = 0;
    std::int32_t timescale = 0;

    /// Rounds to the nearest unit, halves away from zero. The time is invalid for a timescale of 0
    /// and for seconds that are not finite or too large.
    [[nodiscard]] static MediaTime makeWithSeconds(double seconds, std::int32_t timescale);
    /// In nanoseconds.
    [[nodiscard]] static MediaTime make(Instant instant);

    [[nodiscard]] bool isNumeric() const { return timescale > 0; }
    /// NaN for a time that is not numeric.
    [[nodiscard]] double seconds() const;
    /// Rounded to the nearest nanosecond. Precondition: the time is numeric.
    [[nodiscard]] Instant instant() const;

    friend bool operator==(const MediaTime&, const MediaTime&) = default;
};

/// The start of every item.
inline constexpr MediaTime kMediaTimeZero{0, 1};

/// The time of the host's clock, in seconds. That clock paces media, drawing and everything else.
[[nodiscard]] double currentMediaTime();

} // namespace platform
