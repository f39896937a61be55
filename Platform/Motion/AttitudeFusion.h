#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Platform/Motion/Vector3.h"

#include <memory>
#include <optional>

namespace platform {

/// Estimates the attitude of a device from its gyroscope and its accelerometer.
///
/// Every gyroscope sample is integrated. Gravity keeps the tilt from drifting, with less weight the
/// more the device is accelerated. The gyroscope's bias is estimated from gravity while the device
/// rotates, and from times at which it rests. Nothing measures the heading, so it is arbitrary, and
/// drifts with the part of the bias about the vertical that is still unknown: by about a degree a
/// minute after two seconds of rest, less the longer the device rests or tilts.
///
/// Units:  seconds of the sensors' clock, rad/s about the device's axes (`Attitude`) and m/s² along
///         them; at rest the accelerometer measures 9.81 along the axis that points up.
/// Thread: any; not thread-safe, one thread at a time.
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

    /// The two kinds of samples may come at different and uneven rates. A sample that is not newer
    /// than the last of its kind is ignored. One that is more than half a second newer or older
    /// starts the estimate again: the rotation in between is unknown, so gravity sets the tilt
    /// again; the heading stays.
    void addRotationRate(const Vector3& radiansPerSecond, double seconds);
    void addAcceleration(const Vector3& metresPerSecondSquared, double seconds);

    /// The attitude at the time of the last rotation rate; `nullopt` until samples of both kinds
    /// have come. The first acceleration sets the tilt. The heading starts such that the frame's y
    /// axis points where the device's back looks or, with the screen within 45° of level, where its
    /// upper edge points (its lower one if the screen faces down).
    [[nodiscard]] std::optional<Attitude> attitude() const;

    /// Forgets all samples.
    void reset();

private:
    class Fusion;
    std::unique_ptr<Fusion> fusion_;
};

} // namespace platform
