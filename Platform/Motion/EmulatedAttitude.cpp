#include "Platform/Motion/EmulatedAttitude.h"

#include "Platform/Motion/AttitudeMath.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

constexpr double kQuarterTurn = std::numbers::pi / 2;

} // namespace

void EmulatedAttitude::turnBy(double yaw, double pitch) {
    if (!std::isfinite(yaw) || !std::isfinite(pitch))
        return;
    yaw_ = std::remainder(yaw_ + yaw, 4 * kQuarterTurn);
    pitch_ = std::clamp(pitch_ + pitch, -kQuarterTurn, kQuarterTurn);
}

Attitude EmulatedAttitude::attitude(InterfaceOrientation orientation) const {
    // The identity is a device that lies on its back; a quarter turn makes it upright.
    return turnAbout({0, 0, -yaw_}) * turnAbout({kQuarterTurn + pitch_, 0, 0}) *
           turnAbout({0, 0, rollOf(orientation)});
}

} // namespace platform
