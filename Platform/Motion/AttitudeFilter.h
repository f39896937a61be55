#pragma once

#include "Platform/Motion/AttitudeSource.h"
#include "Platform/Motion/Vector3.h"

#include <array>
#include <cstddef>

namespace platform {

/// The estimate behind `AttitudeFusion`: attitude and gyroscope bias, and how far each may be off.
///
/// Six errors are followed together: a small turn about the axes of the reference frame (radians)
/// and the bias about the device's axes (rad/s). Because they are followed together, whatever shows
/// the bias also takes back the turn that the bias has caused. Gravity never moves the heading of
/// its own: a turn about the frame's z axis does not change what it measures.
///
/// Thread: none of its own; one at a time.
class AttitudeFilter {
public:
    /// Tilt known roughly, bias not at all.
    explicit AttitudeFilter(const Attitude& attitude);

    [[nodiscard]] const Attitude& attitude() const { return attitude_; }
    [[nodiscard]] const Vector3& bias() const { return bias_; }

    /// The device turned by `radians` about its own axes within `seconds`; the bias is taken off
    /// here.
    void turn(const Vector3& radians, double seconds);
    /// The device may have turned anyhow meanwhile.
    void forgetTilt();

    /// `up`: where gravity shows the frame's z axis to be, in the frame that `attitude()` believes
    /// in, of unit length. `variance`: of its error, rad².
    void observeUp(const Vector3& up, double variance);
    /// The gyroscope showed `rate` while the device rested. A rate that cannot well be a bias is no
    /// rest and changes nothing. `variance`: of its error, (rad/s)².
    void observeRest(const Vector3& rate, double variance);

private:
    static constexpr std::size_t kErrors = 6; // three turns, then three biases
    using Errors = std::array<double, kErrors>;

    void observe(Errors& found, std::size_t index, double value, double variance);
    void take(const Errors& found);

    Attitude attitude_;
    Vector3 bias_;
    std::array<Errors, kErrors> covariance_{};
};

} // namespace platform
