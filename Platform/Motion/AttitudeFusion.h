#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Platform/Motion/Vector3.h"

#include <memory>
#include <optional>

namespace platform {

/// Makes attitudes of what a gyroscope and an accelerometer measure.
///
/// The gyroscope is followed at every sample; gravity holds the tilt against drift, the less the
/// more the device is pushed about. The gyroscope's bias is learnt from gravity while the device
/// turns, and from times at which it rests. Nothing measures the heading, so it is free, and drifts
/// with what of the bias about the vertical is still unknown: by about a degree a minute after two
/// seconds of rest, less the longer the device rests or tilts.
///
/// Units:  seconds of the sensors' clock, rad/s and m/s² about and along the device's axes
///         (`Attitude`); at rest the accelerometer shows 9.81 along the axis that points up.
/// Thread: none of its own; one at a time.
/// Errors: samples that are not finite are ignored, as are rates of 1000 rad/s and more.
///
///     fusion.addAcceleration({0, 9.81, 0}, 0.00);
///     fusion.addRotationRate({0, 0.1, 0}, 0.00);
///     fusion.addRotationRate({0, 0.1, 0}, 0.01);
///     if (const auto attitude = fusion.attitude())
///         AttitudeSource::shared().publish(*attitude);
class ZANTO_EXPORT AttitudeFusion {
public:
    AttitudeFusion();
    ~AttitudeFusion();
    AttitudeFusion(const AttitudeFusion&) = delete;
    AttitudeFusion& operator=(const AttitudeFusion&) = delete;

    /// The two kinds may come at different and uneven rates. A sample that is not newer than the
    /// last of its kind is ignored; one that is more than half a second newer or older begins anew:
    /// nothing is assumed of how the device turned meanwhile, gravity sets the tilt again, and the
    /// heading stays.
    void addRotationRate(const Vector3& radiansPerSecond, double seconds);
    void addAcceleration(const Vector3& metresPerSecondSquared, double seconds);

    /// At the time of the last rotation rate. None until both kinds have come. The first
    /// acceleration sets the tilt; the heading begins so that the frame's y axis lies where the
    /// device's back looks, or, with the screen within 45° of level, where its upper edge points
    /// (its lower one with the screen downwards).
    [[nodiscard]] std::optional<Attitude> attitude() const;

    /// As if no sample had come.
    void reset();

private:
    class Fusion;
    std::unique_ptr<Fusion> fusion_;
};

} // namespace platform
