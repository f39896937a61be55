#pragma once

#include "Platform/Motion/AttitudeFusion.h"
#include "Platform/Motion/AttitudeMath.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

/// What a device's sensors would say on a known path, with their faults, and how far the estimate
/// is off. Angles in radians, times in seconds.
class SensorTrace {
public:
    using Vector3 = platform::Vector3;
    using Attitude = platform::Attitude;

    /// The true attitude, and the acceleration along the frame's axes besides gravity.
    struct Path {
        std::function<Attitude(double)> attitude;
        std::function<Vector3(double)> acceleration = [](double) { return Vector3{}; };
    };

    double rateNoise = 0.005;        // rad/s, each sample
    double accelerationNoise = 0.05; // m/s², each sample
    Vector3 bias{0.02, 0.02, 0.02};  // rad/s
    double ratePeriod = 1.0 / 200;
    double accelerationPeriod = 1.0 / 100;
    double jitter = 0; // of the times of sampling: up to this either way

    explicit SensorTrace(Path path, unsigned seed = 1) : path_(std::move(path)), random_(seed) {}

    /// Feeds the samples up to that time; what `eachTime` is called with is the time.
    void runTo(double end, const std::function<void(double)>& eachTime = {}) {
        while (std::min(nextRate_, nextAcceleration_) <= end) {
            if (nextAcceleration_ <= nextRate_) {
                const double at = nextAcceleration_ + uneven();
                fusion.addAcceleration(measuredAcceleration(at), at);
                nextAcceleration_ += accelerationPeriod;
                continue;
            }
            now_ = nextRate_ + uneven();
            fusion.addRotationRate(measuredRate(now_), now_);
            nextRate_ += ratePeriod;
            if (eachTime)
                eachTime(now_);
        }
    }

    /// The angle between the estimate and the truth.
    [[nodiscard]] double error() const {
        const Attitude apart = inverse(path_.attitude(now_)) * fusion.attitude().value();
        return 2 * std::atan2(std::hypot(apart.x, apart.y, apart.z), std::abs(apart.w));
    }
    /// The angle between where up is and where the estimate has it.
    [[nodiscard]] double tiltError() const {
        const Vector3 up = rotate(inverse(path_.attitude(now_)), {0, 0, 1});
        const Vector3 believed = rotate(fusion.attitude().value(), up);
        return std::atan2(std::hypot(believed.x, believed.y), believed.z);
    }
    /// Runs on, and says what the greatest tilt error was.
    double greatestTiltErrorTo(double end) {
        double greatest = 0;
        runTo(end, [&](double) { greatest = std::max(greatest, tiltError()); });
        return greatest;
    }

    [[nodiscard]] Vector3 trueRate(double at) const {
        constexpr double kStep = 1e-4;
        const Attitude turn = inverse(path_.attitude(at - kStep)) * path_.attitude(at + kStep);
        const double sign = turn.w < 0 ? -1 : 1; // either quaternion may stand for the turn
        return (sign / kStep) * Vector3{turn.x, turn.y, turn.z};
    }
    [[nodiscard]] Vector3 trueAcceleration(double at) const {
        return rotate(inverse(path_.attitude(at)), path_.acceleration(at) + Vector3{0, 0, 9.81});
    }

    platform::AttitudeFusion fusion;

private:
    Vector3 measuredRate(double at) { return trueRate(at) + bias + noise(rateNoise); }
    Vector3 measuredAcceleration(double at) {
        return trueAcceleration(at) + noise(accelerationNoise);
    }

    [[nodiscard]] double uniform() { return static_cast<double>(random_()) / std::mt19937::max(); }
    double uneven() { return jitter > 0 ? jitter * (2 * uniform() - 1) : 0; }
    // Twelve uniform numbers add up to a variance of one; the library's own distributions differ
    // from one implementation to the next.
    double gaussian() {
        double sum = -6;
        for (int i = 0; i < 12; ++i)
            sum += uniform();
        return sum;
    }
    Vector3 noise(double sigma) {
        const double x = gaussian();
        const double y = gaussian();
        return sigma * Vector3{x, y, gaussian()};
    }

    Path path_;
    std::mt19937 random_;
    double nextRate_ = 0;
    double nextAcceleration_ = 0;
    double now_ = 0;
};
