#include "Backends/GStreamer/MediaTimeline.h"

#include <algorithm>

namespace platform {

Instant MediaTimeline::at(Instant host) const {
    return isRunning_ ? std::max(least_, onLine(host)) : position_;
}

void MediaTimeline::moveTo(Instant position, Instant host) {
    position_ = position;
    host_ = host;
    least_ = position;
}

void MediaTimeline::run(Instant host) {
    if (isRunning_)
        return;
    moveTo(position_, host);
    isRunning_ = true;
}

void MediaTimeline::hold(Instant host) {
    position_ = at(host);
    isRunning_ = false;
}

void MediaTimeline::correct(Instant host, Instant position) {
    constexpr Instant kLetBe = std::chrono::milliseconds(5);
    const Instant ahead = onLine(host) - position;
    if (!isRunning_ || (ahead >= Instant::zero() && ahead < kLetBe))
        return;
    least_ = std::max(least_, at(host));
    position_ = position;
    host_ = host;
}

} // namespace platform
