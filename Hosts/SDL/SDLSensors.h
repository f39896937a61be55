#pragma once

#include "Platform/Motion/Vector3.h"

#include <SDL.h>

#include <memory>
#include <optional>

namespace zanto {

/// A sensor sample: rad/s for a gyroscope, m/s² for an accelerometer.
struct SensorSample {
    SDL_SensorType type = SDL_SENSOR_INVALID;
    platform::Vector3 values;
    double seconds = 0; ///< on the clock of the sensor
};

/// A gyroscope and an accelerometer, of the machine or of one game controller. They are open while
/// this object exists.
///
/// Thread: main.
class SDLSensors {
public:
    /// Whether there are any. This does not open them.
    [[nodiscard]] static bool exist();
    /// Opens the sensors of the machine or, if it has none, of a game controller. Returns null
    /// without any.
    [[nodiscard]] static std::unique_ptr<SDLSensors> open();
    virtual ~SDLSensors() = default;
    SDLSensors(const SDLSensors&) = delete;
    SDLSensors& operator=(const SDLSensors&) = delete;

    /// The sample in an event; none if the event is from another source.
    [[nodiscard]] virtual std::optional<SensorSample> sampleOf(const SDL_Event& event) const = 0;
    /// Whether the sensors are in a game controller instead of the machine.
    [[nodiscard]] virtual bool areInController() const = 0;

protected:
    SDLSensors() = default;
};

} // namespace zanto
