#pragma once

#include "Hosts/SDL/SDLSensors.h"
#include "Platform/Interface/Application.h"
#include "Platform/Motion/AttitudeFusion.h"
#include "Platform/Motion/AttitudeSource.h"

#include <SDL.h>

#include <memory>

/// The process's attitudes from SDL's sensors: a gyroscope and an accelerometer of the machine, or
/// else those of a game controller.
///
/// Whether there are any is found out at the start. They are opened once somebody listens, and
/// closed when nobody does: while SDL has joysticks or sensors at hand it looks at them a thousand
/// times a second, which an idle program must not.
///
/// Axes: SDL's are those of the display in its natural position, upright on a phone and wider than
///       high on other machines. A game controller that lies flat stands for a device whose screen
///       is upright: its upper side for the upper edge, the side with the shoulder buttons for the
///       back that looks ahead, whichever way the interface is held.
/// Thread: main.
class SDLAttitude {
public:
    SDLAttitude();
    ~SDLAttitude();
    SDLAttitude(const SDLAttitude&) = delete;
    SDLAttitude& operator=(const SDLAttitude&) = delete;

    /// Events of other sensors, and not of sensors at all, change nothing.
    void take(const SDL_Event& event);
    /// Another source speaks instead; the sensors are still followed.
    void setMuted(bool muted) { isMuted_ = muted; }

    /// A device's attitude, from that of axes that are as a device's would be if it were a portrait
    /// one while its interface stands upright in that orientation.
    [[nodiscard]] static platform::Attitude
    attitudeOfDevice(const platform::Attitude& upright, platform::InterfaceOrientation orientation);

private:
    void setWanted(bool wanted);
    void follow(const SensorSample& sample);
    [[nodiscard]] platform::InterfaceOrientation uprightOrientation() const;

    platform::AttitudeFusion fusion_;
    std::unique_ptr<SDLSensors> sensors_; // while somebody listens
    bool isMuted_ = false;
};
