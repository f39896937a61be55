#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/InterfaceOrientation.h"
#include "Platform/Motion/AttitudeSource.h"

namespace platform {

/// Emulates a device that is rotated with a pointer, for machines without sensors. The device is
/// held with its screen vertical, and looks out of its back, straight ahead at first.
///
/// Thread: any; not thread-safe, one thread at a time.
class ZANTO_EXPORT EmulatedAttitude {
public:
    /// Rotates the device; angles are in radians. Positive yaw looks further to the right, positive
    /// pitch further up. Pitch is clamped to the zenith and the nadir. Angles that are not finite
    /// change nothing.
    void turnBy(double yaw, double pitch);

    /// In radians, to the right of the initial direction, from -π to π.
    [[nodiscard]] double yaw() const { return yaw_; }
    /// In radians, above the horizon.
    [[nodiscard]] double pitch() const { return pitch_; }

    /// The attitude of the device while its interface is upright in that orientation. The device
    /// looks in the same direction, without roll, in every orientation.
    [[nodiscard]] Attitude attitude(InterfaceOrientation orientation) const;

private:
    double yaw_ = 0;
    double pitch_ = 0;
};

} // namespace platform
