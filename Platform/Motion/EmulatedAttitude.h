#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/InterfaceOrientation.h"
#include "Platform/Motion/AttitudeSource.h"

namespace platform {

/// A device that a pointer turns, for machines without sensors: it is held with its screen
/// vertical, and looks out of its back, straight ahead at first.
///
/// Thread: none of its own; one at a time.
class ZANTO_EXPORT EmulatedAttitude {
public:
    /// Turns the device by radians: positive yaw looks further to the right, positive pitch further
    /// up. Pitch ends at the zenith and at the nadir, a quarter turn from level. Angles that are
    /// not finite change nothing.
    void turnBy(double yaw, double pitch);

    /// In radians: to the right of where it looked at first, within half a turn either way.
    [[nodiscard]] double yaw() const { return yaw_; }
    /// In radians: above the horizon.
    [[nodiscard]] double pitch() const { return pitch_; }

    /// As the device is turned when its interface stands upright in that orientation. Level in
    /// each, and looking the same way.
    [[nodiscard]] Attitude attitude(InterfaceOrientation orientation) const;

private:
    double yaw_ = 0;
    double pitch_ = 0;
};

} // namespace platform
