#pragma once

#include "Platform/Motion/Vector3.h"

#include <SDL.h>

#include <memory>
#include <optional>

/// What a sensor measured: rad/s of a gyroscope, m/s² of an accelerometer.
struct SensorSample {
    SDL_SensorType type = SDL_SENSOR_INVALID;
    platform::Vector3 values;
    double seconds = 0; ///< on the sensor's clock
};

/// A gyroscope and an accelerometer, of the machine or of one game controller, open while this
/// lives.
///
/// Thread: main.
class SDLSensors {
public:
    /// Whether there are any, found out without opening one.
    [[nodiscard]] static bool exist();
    /// The machine's own first; null without any.
    [[nodiscard]] static std::unique_ptr<SDLSensors> open();
    virtual ~SDLSensors() = default;
    SDLSensors(const SDLSensors&) = delete;
    SDLSensors& operator=(const SDLSensors&) = delete;

    /// What an event says if it comes from one of the two.
    [[nodiscard]] virtual std::optional<SensorSample> sampleOf(const SDL_Event& event) const = 0;
    /// They are not in the machine that shows the picture.
    [[nodiscard]] virtual bool areInController() const = 0;

protected:
    SDLSensors() = default;
};
