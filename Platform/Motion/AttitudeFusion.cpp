#include "Platform/Motion/AttitudeFusion.h"

#include "Platform/Motion/AttitudeFilter.h"
#include "Platform/Motion/AttitudeMath.h"
#include "Platform/Motion/RestDetector.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

constexpr double kGravity = 9.81;
constexpr double kLongestGap = 0.5;
// Faster than any hand-held rotation, and slow enough for the sums to stay accurate: rad/s.
constexpr double kFastest = 1000;
// Too little to define a direction: m/s².
constexpr double kLeastAcceleration = 1e-6;
// An acceleration is compared with the attitude extrapolated to its own time, up to this far from
// the last rotation rate, s.
constexpr double kLongestReach = 0.05;
// Error of gravity's direction per sample in a moving hand: rad times root of a second. It is much
// larger than a sensor's noise, because a push lasts for many samples.
constexpr double kUpNoise = 0.0015;
// The relative error of gravity's length at which its direction begins to lose weight…
constexpr double kTrustedShare = 0.02;
// …and at which it is ignored.
constexpr double kWorthlessShare = 0.5;
// A device is not accelerated in one direction for long. If the average direction of gravity over
// this many seconds is off by more than this, in rad, the tilt is wrong.
constexpr double kLastingError = 0.15;
constexpr double kLastingSeconds = 3;

// If the upward part of the screen's normal is larger than this, the upper edge shows better than
// the back where the device points.
constexpr double kNearlyLevel = std::numbers::sqrt2 / 2;

/// The first attitude of a device that measures `up` along its own axes; see `attitude()`.
Attitude firstAttitude(const Vector3& up) {
    const Attitude level = turnBetween(up, {0, 0, 1}, {1, 0, 0});
    const Vector3 edge{0, up.z < 0 ? -1.0 : 1.0, 0};
    const Vector3 ahead = rotate(level, std::abs(up.z) > kNearlyLevel ? edge : Vector3{0, 0, -1});
    const double size = std::hypot(ahead.x, ahead.y);
    return turnBetween({ahead.x / size, ahead.y / size, 0}, {0, 1, 0}, {0, 0, 1}) * level;
}

/// The times of one kind of sample.
class Stream {
public:
    enum class Step { First, On, Old, Gap };

    Step stepTo(double seconds) {
        if (!last_) {
            last_ = seconds;
            return Step::First;
        }
        step_ = seconds - *last_;
        if (std::abs(step_) > kLongestGap) {
            last_ = seconds;
            return Step::Gap;
        }
        if (step_ <= 0)
            return Step::Old;
        last_ = seconds;
        return Step::On;
    }

    [[nodiscard]] const std::optional<double>& last() const { return last_; }
    /// The time between the last two samples.
    [[nodiscard]] double step() const { return step_; }

private:
    std::optional<double> last_;
    double step_ = 0;
};

} // namespace

class AttitudeFusion::Fusion {
public:
    void addRotationRate(const Vector3& rate, double seconds) {
        const auto step = rates_.stepTo(seconds);
        if (step == Stream::Step::Old)
            return;
        if (step != Stream::Step::On)
            beginAnew();
        else if (filter_)
            filter_->turn(turnSince(rate), rates_.step());
        rate_ = rate;
        const auto rest = rest_.addRotationRate(rate, seconds);
        if (rest && filter_)
            filter_->observeRest(rest->rate, rest->variance);
    }

    void addAcceleration(const Vector3& acceleration, double seconds) {
        const double size = length(acceleration);
        const auto step = accelerations_.stepTo(seconds);
        if (step == Stream::Step::Old)
            return;
        const Vector3 up = (1 / size) * acceleration;
        if (!filter_) {
            filter_.emplace(firstAttitude(up));
            return;
        }
        rest_.addAcceleration(acceleration);
        const double error = size / kGravity - 1;
        if (std::abs(error) < kWorthlessShare && rates_.last())
            observe(up, error, seconds, step);
    }

    [[nodiscard]] std::optional<Attitude> attitude() const {
        if (!filter_ || !rates_.last())
            return std::nullopt;
        return filter_->attitude();
    }

private:
    void beginAnew() {
        rest_.reset();
        if (filter_)
            filter_->forgetTilt();
    }

    /// The rotation about the device's axes since the last rate: the mean of both rates, plus a
    /// correction for an axis that itself rotates.
    [[nodiscard]] Vector3 turnSince(const Vector3& rate) const {
        const double seconds = rates_.step();
        return (seconds / 2) * (rate_ + rate) + (seconds * seconds / 12) * cross(rate_, rate);
    }

    void observe(const Vector3& up, double error, double seconds, Stream::Step step) {
        const double apart = seconds - *rates_.last();
        if (std::abs(apart) > kLongestGap)
            return;
        const double reach = std::clamp(apart, -kLongestReach, kLongestReach);
        const Vector3 rate = rate_ - filter_->bias();
        const Attitude then = filter_->attitude() * turnAbout(reach * rate);
        const double missed = (apart - reach) * length(rate);

        const double period = step == Stream::Step::On
                                  ? std::clamp(accelerations_.step(), 0.002, kLongestReach)
                                  : kLongestReach;
        const double share = error / kTrustedShare;
        const double variance =
            kUpNoise * kUpNoise / period * (1 + share * share) + missed * missed;
        const Vector3 found = rotate(then, up);
        if (isLastinglyOff(found, period))
            filter_->forgetTilt();
        filter_->observeUp(found, variance);
    }

    bool isLastinglyOff(const Vector3& up, double period) {
        const Vector3 sideways{up.x, up.y, up.z < 0 ? 1.0 - up.z : 0.0};
        averageError_ = averageError_ + (period / kLastingSeconds) * (sideways - averageError_);
        if (length(averageError_) < kLastingError)
            return false;
        averageError_ = {};
        return true;
    }

    Stream rates_;
    Stream accelerations_;
    Vector3 rate_;         // the last rate
    Vector3 averageError_; // horizontal error in the frame, and the vertical one where gravity
                           // points below the horizon
    RestDetector rest_;
    std::optional<AttitudeFilter> filter_; // from the first acceleration on
};

AttitudeFusion::AttitudeFusion() : fusion_(std::make_unique<Fusion>()) {}
AttitudeFusion::~AttitudeFusion() = default;

void AttitudeFusion::addRotationRate(const Vector3& radiansPerSecond, double seconds) {
    if (isFinite(radiansPerSecond) && length(radiansPerSecond) < kFastest && std::isfinite(seconds))
        fusion_->addRotationRate(radiansPerSecond, seconds);
}

void AttitudeFusion::addAcceleration(const Vector3& metresPerSecondSquared, double seconds) {
    const double size = isFinite(metresPerSecondSquared) ? length(metresPerSecondSquared) : 0;
    if (size > kLeastAcceleration && std::isfinite(size) && std::isfinite(seconds))
        fusion_->addAcceleration(metresPerSecondSquared, seconds);
}

std::optional<Attitude> AttitudeFusion::attitude() const {
    return fusion_->attitude();
}

void AttitudeFusion::reset() {
    fusion_ = std::make_unique<Fusion>();
}

} // namespace platform
