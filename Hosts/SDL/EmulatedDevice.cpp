#include "Hosts/SDL/EmulatedDevice.h"

#include "Platform/Interface/Application.h"

#include <numbers>

namespace zanto {

using platform::AttitudeSource;
using platform::Point;

namespace {

constexpr double kRadiansPerPoint = std::numbers::pi / 2 / 640;

} // namespace

void EmulatedDevice::setOn(bool on) {
    if (on == isOn_)
        return;
    isOn_ = on;
    isHeld_ = false;
    if (on) {
        wasAvailable_ = AttitudeSource::shared().isAvailable();
        publish();
    } else if (!wasAvailable_) {
        AttitudeSource::shared().setAvailable(false);
    }
}

void EmulatedDevice::take(const SDL_MouseButtonEvent& event) {
    if (!isOn_ || event.which == SDL_TOUCH_MOUSEID || event.button != SDL_BUTTON_RIGHT)
        return;
    isHeld_ = event.state == SDL_PRESSED;
    place_ = {static_cast<double>(event.x), static_cast<double>(event.y)};
}

bool EmulatedDevice::take(const SDL_MouseMotionEvent& event) {
    if (!isHeld_ || event.which == SDL_TOUCH_MOUSEID)
        return false;
    const Point place{static_cast<double>(event.x), static_cast<double>(event.y)};
    if (place == place_)
        return false;
    attitude_.turnBy((place.x - place_.x) * kRadiansPerPoint,
                     (place_.y - place.y) * kRadiansPerPoint);
    place_ = place;
    publish();
    return true;
}

void EmulatedDevice::publish() const {
    if (!isOn_)
        return;
    const auto orientation = platform::Application::sharedApplication().statusBarOrientation();
    AttitudeSource::shared().publish(attitude_.attitude(orientation));
}

} // namespace zanto
