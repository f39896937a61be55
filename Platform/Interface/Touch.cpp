#include "Platform/Interface/Touch.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

constexpr Instant kVelocitySpan = std::chrono::milliseconds(100);
constexpr Instant kLeastVelocitySpan = std::chrono::nanoseconds(std::chrono::seconds(1)) / 60;

} // namespace

Touch::Touch(const TouchEvent& down, double slop)
    : id_(down.id), slop_(slop), first_{down.time, down.location}, recent_{first_} {}

void Touch::report(const TouchEvent& event) {
    // Time must not go backwards, even if the host's clock does.
    const Report newest{std::max(event.time, last().time), event.location};
    // Of several reports with one time the last replaces the others, but never the first of the
    // touch.
    if (recent_.size() > 1 && newest.time == last().time)
        recent_.back() = newest;
    else
        recent_.push_back(newest);
    const Instant start = last().time - kVelocitySpan;
    const auto needed =
        std::find_if(recent_.rbegin(), recent_.rend(),
                     [start](const Report& report) { return report.time <= start; });
    if (needed != recent_.rend())
        recent_.erase(recent_.begin(), needed.base() - 1);
}

double Touch::distance() const {
    return std::hypot(last().location.x - first_.location.x, last().location.y - first_.location.y);
}

Point Touch::velocity() const {
    if (age() <= Instant(0))
        return {};
    const Instant span = std::clamp(age(), kLeastVelocitySpan, kVelocitySpan);
    // The oldest report that is kept is the finger's position at the beginning of the span.
    const Point from = recent_.front().location;
    const double seconds = toSeconds(span);
    return {(last().location.x - from.x) / seconds, (last().location.y - from.y) / seconds};
}

} // namespace platform
