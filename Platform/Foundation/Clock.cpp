#include "Platform/Foundation/Clock.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace platform {

Instant fromSeconds(double seconds) {
    return Instant(std::llround(seconds * 1e9));
}

double toSeconds(Instant instant) {
    return static_cast<double>(instant.count()) / 1e9;
}

Instant SystemClock::now() const {
    return std::chrono::steady_clock::now() - start_;
}

void VirtualClock::advanceTo(Instant instant) {
    now_ = std::max(now_.load(), instant.count());
}

FrameGrid::FrameGrid(double framesPerSecond) : framesPerSecond_(framesPerSecond) {}

Instant FrameGrid::at(std::int64_t index) const {
    // Computed from the index each time, because adding up a rounded interval would drift.
    return fromSeconds(static_cast<double>(index) / framesPerSecond_);
}

Instant FrameGrid::atOrBefore(Instant instant) const {
    auto index = static_cast<std::int64_t>(std::floor(toSeconds(instant) * framesPerSecond_)) + 1;
    while (at(index) > instant)
        --index;
    return at(index);
}

Instant FrameGrid::after(Instant instant) const {
    auto index = static_cast<std::int64_t>(std::floor(toSeconds(instant) * framesPerSecond_));
    while (at(index) <= instant)
        ++index;
    return at(index);
}

} // namespace platform
