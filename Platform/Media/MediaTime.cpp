#include "Platform/Media/MediaTime.h"

#include "Platform/Foundation/MainQueue.h"

#include <cmath>
#include <limits>

namespace platform {

MediaTime MediaTime::makeWithSeconds(double seconds, std::int32_t timescale) {
    const double units = std::round(seconds * timescale);
    constexpr auto kMost = static_cast<double>(std::numeric_limits<std::int64_t>::max());
    if (timescale <= 0 || !(std::abs(units) < kMost))
        return {};
    return {static_cast<std::int64_t>(units), timescale};
}

MediaTime MediaTime::make(Instant instant) {
    return {instant.count(), static_cast<std::int32_t>(std::nano::den)};
}

double MediaTime::seconds() const {
    if (!isNumeric())
        return std::numeric_limits<double>::quiet_NaN();
    return static_cast<double>(value) / timescale;
}

Instant MediaTime::instant() const {
    if (timescale == std::nano::den)
        return Instant(value);
    return fromSeconds(seconds());
}

double currentMediaTime() {
    return toSeconds(MainQueue::main().now());
}

} // namespace platform
