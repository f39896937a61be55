#pragma once

#include "Platform/Motion/AttitudeSource.h"
#include "Platform/Motion/Vector3.h"

#include <array>
#include <cstddef>

namespace platform {

/// Error-state Kalman filter that estimates the attitude of a device and the bias of its gyroscope.
///
/// The 6×6 error covariance belongs to a small rotation about the axes of the reference frame (rad)
/// and to the bias about the device's axes (rad/s). Because the two are correlated, an observation
/// of the bias also corrects the rotation that the bias has caused. Gravity does not observe
/// heading: a rotation about the frame's z axis does not change its direction.
///
/// Thread: any; not thread-safe, one thread at a time.
class AttitudeFilter {
public:
    /// The tilt is roughly known at first; the bias is not known.
    explicit AttitudeFilter(const Attitude& attitude);

    [[nodiscard]] const Attitude& attitude() const { return attitude_; }
    [[nodiscard]] const Vector3& bias() const { return bias_; }

    /// Prediction: the device has rotated by `radians` about its own axes within `seconds`. The
    /// function subtracts the bias itself.
    void turn(const Vector3& radians, double seconds);
    /// Raises the uncertainty of the attitude: the device may have rotated in any way.
    void forgetTilt();

    /// Correction by gravity. `up`: the measured direction of the frame's z axis, transformed into
    /// the frame by `attitude()`, of unit length. `variance`: of its error, rad².
    void observeUp(const Vector3& up, double variance);
    /// Correction by the rate that the gyroscope has measured while the device was at rest. A rate
    /// that is not plausible as a bias cannot come from a device at rest and changes nothing.
    /// `variance`: of its error, (rad/s)².
    void observeRest(const Vector3& rate, double variance);

private:
    static constexpr std::size_t kErrors = 6; // three rotations, then three biases
    using Errors = std::array<double, kErrors>;

    void observe(Errors& found, std::size_t index, double value, double variance);
    void take(const Errors& found);

    Attitude attitude_;
    Vector3 bias_;
    std::array<Errors, kErrors> covariance_{};
};

} // namespace platform
