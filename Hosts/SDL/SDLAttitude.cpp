#include "Hosts/SDL/SDLAttitude.h"

#include "Platform/Motion/AttitudeMath.h"

#include <string_view>

namespace zanto {

using platform::Attitude;
using platform::AttitudeSource;
using platform::InterfaceOrientation;

namespace {

/// The natural orientation of the display.
InterfaceOrientation naturalOrientation() {
    const std::string_view system = SDL_GetPlatform();
    const bool isPhone = system == "Android" || system == "iOS";
    return isPhone ? InterfaceOrientation::Portrait : InterfaceOrientation::LandscapeRight;
}

} // namespace

SDLAttitude::SDLAttitude() {
    if (!SDLSensors::exist())
        return;
    AttitudeSource::shared().setAvailable(true);
    AttitudeSource::shared().setDemandListener([this](bool wanted) { setWanted(wanted); });
}

SDLAttitude::~SDLAttitude() {
    AttitudeSource::shared().setDemandListener(nullptr);
}

void SDLAttitude::setWanted(bool wanted) {
    if (!wanted) {
        sensors_.reset();
        return;
    }
    if (sensors_)
        return;
    fusion_.reset();
    sensors_ = SDLSensors::open();
}

void SDLAttitude::take(const SDL_Event& event) {
    if (const auto sample = sensors_ ? sensors_->sampleOf(event) : std::nullopt)
        follow(*sample);
}

void SDLAttitude::follow(const SensorSample& sample) {
    if (sample.type == SDL_SENSOR_ACCEL)
        fusion_.addAcceleration(sample.values, sample.seconds);
    if (sample.type != SDL_SENSOR_GYRO)
        return;
    fusion_.addRotationRate(sample.values, sample.seconds);
    if (const auto upright = isMuted_ ? std::nullopt : fusion_.attitude())
        AttitudeSource::shared().publish(attitudeOfDevice(*upright, uprightOrientation()));
}

InterfaceOrientation SDLAttitude::uprightOrientation() const {
    return sensors_->areInController()
               ? platform::Application::sharedApplication().statusBarOrientation()
               : naturalOrientation();
}

Attitude SDLAttitude::attitudeOfDevice(const Attitude& upright, InterfaceOrientation orientation) {
    return upright * platform::turnAbout({0, 0, platform::rollOf(orientation)});
}

} // namespace zanto
