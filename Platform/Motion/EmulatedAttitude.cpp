#include "Platform/Motion/EmulatedAttitude.h"

#include "Platform/Motion/AttitudeMath.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

constexpr double kQuarterTurn = std::numbers::pi / 2;

/// How far the device is turned about its own z axis, out of the screen, against portrait.
double roll(InterfaceOrientation orientation) {
    switch (orientation) {
    case InterfaceOrientation::LandscapeLeft:
        return -kQuarterTurn;
    case InterfaceOrientation::LandscapeRight:
        return kQuarterTurn;
    case InterfaceOrientation::PortraitUpsideDown:
        return 2 * kQuarterTurn;
    case InterfaceOrientation::Portrait:
    case InterfaceOrientation::Unknown:
        break;
    }
    return 0;
}

} // namespace

void EmulatedAttitude::turnBy(double yaw, double pitch) {
    if (!std::isfinite(yaw) || !std::isfinite(pitch))
        return;
    yaw_ = std::remainder(yaw_ + yaw, 4 * kQuarterTurn);
    pitch_ = std::clamp(pitch_ + pitch, -kQuarterTurn, kQuarterTurn);
}

Attitude EmulatedAttitude::attitude(InterfaceOrientation orientation) const {
    // A quarter turn stands the device up from lying on its back, which is no turn at all.
    return turnAbout({0, 0, -yaw_}) * turnAbout({kQuarterTurn + pitch_, 0, 0}) *
           turnAbout({0, 0, roll(orientation)});
}

} // namespace platform
