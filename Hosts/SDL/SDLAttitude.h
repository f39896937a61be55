#pragma once

#include "Hosts/SDL/SDLSensors.h"
#include "Platform/Interface/Application.h"
#include "Platform/Motion/AttitudeFusion.h"
#include "Platform/Motion/AttitudeSource.h"

#include <SDL.h>

#include <memory>

namespace zanto {

/// Publishes attitudes from SDL sensors: a gyroscope and an accelerometer of the machine or, if it
/// has none, of a game controller.
///
/// The constructor finds out whether there are any. They are opened when the attitude source gets a
/// listener and closed when it has none, because SDL polls open joysticks and sensors a thousand
/// times a second, which would keep an idle program busy.
///
/// Axes: SDL uses the axes of the display in its natural orientation, which is portrait on a phone
/// and landscape on other machines. A game controller that lies flat corresponds to a device with
/// an upright screen: its top side is the upper edge of the screen, and the side with the shoulder
/// buttons is the back, which looks ahead, in every interface orientation.
///
/// Thread: main.
class SDLAttitude {
public:
    SDLAttitude();
    ~SDLAttitude();
    SDLAttitude(const SDLAttitude&) = delete;
    SDLAttitude& operator=(const SDLAttitude&) = delete;

    /// Handles sensor samples. All other events are ignored.
    void take(const SDL_Event& event);
    /// While muted, attitudes are computed but not published, because another source publishes its
    /// own.
    void setMuted(bool muted) { isMuted_ = muted; }

    /// Converts an attitude whose axes are those of a portrait device, held so that its interface
    /// is upright in `orientation`, to the attitude of the device.
    [[nodiscard]] static platform::Attitude
    attitudeOfDevice(const platform::Attitude& upright, platform::InterfaceOrientation orientation);

private:
    void setWanted(bool wanted);
    void follow(const SensorSample& sample);
    [[nodiscard]] platform::InterfaceOrientation uprightOrientation() const;

    platform::AttitudeFusion fusion_;
    std::unique_ptr<SDLSensors> sensors_; // non-null while the source has a listener
    bool isMuted_ = false;
};

} // namespace zanto
