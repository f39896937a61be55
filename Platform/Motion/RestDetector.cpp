#include "Platform/Motion/RestDetector.h"

#include "Platform/Motion/AttitudeMath.h"

#include <algorithm>

namespace platform {

namespace {

constexpr double kBlockSeconds = 0.25;
// Fewer samples do not show the scatter.
constexpr int kLeastRates = 8;
constexpr int kLeastAccelerations = 3;
// A hand that holds still trembles several times as much: rad/s and m/s².
constexpr double kRateScatter = 0.01;
constexpr double kAccelerationScatter = 0.12;
// More than a gyroscope measures at rest: rad/s.
constexpr double kGreatestBias = 0.08;
// What rounding and drift add to the difference of two blocks: rad/s and m/s².
constexpr double kRateSlack = 0.0005;
constexpr double kAccelerationSlack = 0.01;
// Means of blocks at rest differ by less than this many standard deviations.
constexpr double kAgreement = 4.0;
// The minimum error of the mean of a block, whatever its scatter is: rad/s.
constexpr double kRateError = 1e-4;

constexpr Vector3 squared(const Vector3& a) {
    return {a.x * a.x, a.y * a.y, a.z * a.z};
}

double largest(const Vector3& a) {
    return std::max({a.x, a.y, a.z});
}

} // namespace

void RestDetector::Samples::add(const Vector3& sample) {
    ++count;
    const Vector3 before = sample - mean;
    mean = mean + (1.0 / count) * before;
    const Vector3 after = sample - mean;
    squares = squares + Vector3{before.x * after.x, before.y * after.y, before.z * after.z};
}

Vector3 RestDetector::Samples::variance() const {
    return (1.0 / std::max(count - 1, 1)) * squares;
}

bool RestDetector::Samples::agreesWith(const Samples& other, double slack) const {
    const Vector3 distance = squared(mean - other.mean);
    const Vector3 scatter = (1.0 / count) * variance() + (1.0 / other.count) * other.variance();
    const auto near = [slack](double apart, double spread) {
        return apart <= kAgreement * kAgreement * spread + slack * slack;
    };
    return near(distance.x, scatter.x) && near(distance.y, scatter.y) &&
           near(distance.z, scatter.z);
}

bool RestDetector::Block::isStill() const {
    return rates.count >= kLeastRates && accelerations.count >= kLeastAccelerations &&
           largest(rates.variance()) <= kRateScatter * kRateScatter &&
           largest(accelerations.variance()) <= kAccelerationScatter * kAccelerationScatter &&
           largest(squared(rates.mean)) <= kGreatestBias * kGreatestBias;
}

std::optional<RestDetector::Rest> RestDetector::addRotationRate(const Vector3& radiansPerSecond,
                                                                double seconds) {
    std::optional<Rest> rest;
    if (open_ && seconds - open_->start >= kBlockSeconds)
        rest = closeBlock();
    if (!open_)
        open_.emplace(seconds);
    open_->rates.add(radiansPerSecond);
    return rest;
}

void RestDetector::addAcceleration(const Vector3& metresPerSecondSquared) {
    if (open_)
        open_->accelerations.add(metresPerSecondSquared);
}

std::optional<RestDetector::Rest> RestDetector::closeBlock() {
    std::optional<Rest> rest;
    const bool still = open_->isStill();
    if (still && still_ && open_->rates.agreesWith(still_->rates, kRateSlack) &&
        open_->accelerations.agreesWith(still_->accelerations, kAccelerationSlack))
        rest = Rest{still_->rates.mean, largest(still_->rates.variance()) / still_->rates.count +
                                            kRateError * kRateError};
    still_ = still ? open_ : std::nullopt;
    open_.reset();
    return rest;
}

void RestDetector::reset() {
    open_.reset();
    still_.reset();
}

} // namespace platform
