#pragma once

#include "Platform/Motion/Vector3.h"

#include <optional>

namespace platform {

/// Detects the times at which a device is certainly at rest, on a table or a tripod: the samples of
/// two consecutive blocks of a quarter of a second scatter no more than a sensor's noise, and their
/// means agree.
///
/// Thread: any; not thread-safe, one thread at a time.
class RestDetector {
public:
    /// What the gyroscope measures in a block at rest: the mean in rad/s, and the variance of the
    /// mean.
    struct Rest {
        Vector3 rate;
        double variance;
    };

    /// Returns a block that has been found at rest. It is always the block before the last one,
    /// which may contain the beginning of a movement.
    [[nodiscard]] std::optional<Rest> addRotationRate(const Vector3& radiansPerSecond,
                                                      double seconds);
    void addAcceleration(const Vector3& metresPerSecondSquared);
    void reset();

private:
    /// Number, mean and scatter of samples.
    struct Samples {
        void add(const Vector3& sample);
        [[nodiscard]] Vector3 variance() const;
        /// Whether the difference of the means is within their scatter plus `slack`.
        [[nodiscard]] bool agreesWith(const Samples& other, double slack) const;
        int count = 0;
        Vector3 mean;
        Vector3 squares; // sums of squared distances from the mean
    };
    struct Block {
        explicit Block(double seconds) : start(seconds) {}
        [[nodiscard]] bool isStill() const;
        double start;
        Samples rates;
        Samples accelerations;
    };
    [[nodiscard]] std::optional<Rest> closeBlock();

    std::optional<Block> open_;
    std::optional<Block> still_; // the previous block, if it was at rest
};

} // namespace platform
