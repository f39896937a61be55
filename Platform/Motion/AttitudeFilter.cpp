#include "Platform/Motion/AttitudeFilter.h"

#include "Platform/Motion/AttitudeMath.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double square(double value) {
    return value * value;
}

/// Error of the first sample of gravity in a moving hand, rad.
constexpr double kFirstTiltError = 0.2;
/// Standard deviation of the bias of a telephone's gyroscope, rad/s. More than twice this is rare.
constexpr double kFirstBiasError = 0.03;
/// Random walk of the bias, mainly with temperature, rad/s per root of a second.
constexpr double kBiasWalk = 2e-5;
/// White noise of the gyroscope, rad/s per root of a hertz.
constexpr double kRateNoise = 3.5e-4;
/// Relative error of a gyroscope's scale…
constexpr double kScaleError = 0.002;
/// …and the time for which a hand rotates in one direction, s.
constexpr double kScaleTime = 0.1;
/// Beyond this many standard deviations a difference loses weight.
constexpr double kTrusted = 0.5;
/// Beyond this many standard deviations a rate at rest is not a bias.
constexpr double kPlausible = 4.0;

/// The rotation matrix: its columns are the device's axes in the reference frame.
std::array<std::array<double, 3>, 3> matrix(const Attitude& attitude) {
    const Vector3 x = rotate(attitude, {1, 0, 0});
    const Vector3 y = rotate(attitude, {0, 1, 0});
    const Vector3 z = rotate(attitude, {0, 0, 1});
    return {{{x.x, y.x, z.x}, {x.y, y.y, z.y}, {x.z, y.z, z.z}}};
}

} // namespace

AttitudeFilter::AttitudeFilter(const Attitude& attitude) : attitude_(attitude) {
    for (const std::size_t i : {0U, 1U})
        covariance_[i][i] = square(kFirstTiltError);
    for (const std::size_t i : {3U, 4U, 5U})
        covariance_[i][i] = square(kFirstBiasError);
}

void AttitudeFilter::turn(const Vector3& radians, double seconds) {
    const auto axes = matrix(attitude_);
    attitude_ = normalized(attitude_ * turnAbout(radians - seconds * bias_));

    // An error of the bias rotates the attitude the other way, about the device's axes: rows first,
    // then columns.
    auto& p = covariance_;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            for (std::size_t j = 0; j < kErrors; ++j)
                p[i][j] -= seconds * axes[i][k] * p[3 + k][j];
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            for (std::size_t j = 0; j < kErrors; ++j)
                p[j][i] -= seconds * axes[i][k] * p[j][3 + k];

    const double rate = length(radians) / seconds;
    const double noise = square(kRateNoise) + square(kScaleError * rate) * kScaleTime;
    for (std::size_t i = 0; i < 3; ++i) {
        p[i][i] += noise * seconds;
        p[3 + i][3 + i] += square(kBiasWalk) * seconds;
    }
}

void AttitudeFilter::forgetTilt() {
    // A variance of 1 rad² about each axis is enough for gravity to set the tilt again.
    for (std::size_t i = 0; i < 3; ++i)
        covariance_[i][i] += 1;
}

void AttitudeFilter::observeUp(const Vector3& up, double variance) {
    // The smallest rotation that brings `up` to the z axis; its axis is horizontal.
    const double sine = std::hypot(up.x, up.y);
    const double angle = std::atan2(sine, up.z);
    const double factor = sine > 1e-9 ? angle / sine : 1.0;
    const std::array<double, 2> turn = {factor * up.y, -factor * up.x};

    const double distance = std::sqrt(square(turn[0]) / (covariance_[0][0] + variance) +
                                      square(turn[1]) / (covariance_[1][1] + variance));
    // A push of the hand looks like a tilt, so the weight of an outlier is bounded.
    const double doubted = variance * std::max(1.0, distance / kTrusted);
    Errors found{};
    observe(found, 0, turn[0], doubted);
    observe(found, 1, turn[1], doubted);
    take(found);
}

void AttitudeFilter::observeRest(const Vector3& rate, double variance) {
    const Vector3 difference = rate - bias_;
    const std::array<double, 3> values = {difference.x, difference.y, difference.z};
    for (std::size_t i = 0; i < 3; ++i)
        if (square(values[i]) > square(kPlausible) * (covariance_[3 + i][3 + i] + variance))
            return;
    Errors found{};
    for (std::size_t i = 0; i < 3; ++i)
        observe(found, 3 + i, values[i], variance);
    take(found);
}

/// Applies one scalar observation. `found` is the estimate of the errors so far.
void AttitudeFilter::observe(Errors& found, std::size_t index, double value, double variance) {
    const Errors column = covariance_[index];
    const double total = column[index] + variance;
    const double surprise = value - found[index];
    for (std::size_t i = 0; i < kErrors; ++i) {
        found[i] += column[i] / total * surprise;
        for (std::size_t j = 0; j < kErrors; ++j)
            covariance_[i][j] -= column[i] * column[j] / total;
    }
}

void AttitudeFilter::take(const Errors& found) {
    attitude_ = normalized(turnAbout({found[0], found[1], found[2]}) * attitude_);
    bias_ = bias_ + Vector3{found[3], found[4], found[5]};
}

} // namespace platform
