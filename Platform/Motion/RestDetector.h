#pragma once

#include "Platform/Motion/Vector3.h"

#include <optional>

namespace platform {

/// Finds the times at which a device demonstrably rests, on a table or a tripod: the samples of two
/// blocks of a quarter of a second each scatter no more than a sensor's noise, and agree.
///
/// Thread: none of its own; one at a time.
class RestDetector {
public:
    /// What the gyroscope showed in a block at rest: mean in rad/s, and the variance of the mean.
    struct Rest {
        Vector3 rate;
        double variance;
    };

    /// The block that has been shown to be at rest: always the one before the last, so that the
    /// beginning of a movement is in none.
    [[nodiscard]] std::optional<Rest> addRotationRate(const Vector3& radiansPerSecond,
                                                      double seconds);
    void addAcceleration(const Vector3& metresPerSecondSquared);
    void reset();

private:
    /// Number, mean and scatter of samples.
    struct Samples {
        void add(const Vector3& sample);
        [[nodiscard]] Vector3 variance() const;
        /// Whether the means are as near as their scatter lets them be, and `slack` besides.
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
    std::optional<Block> still_; // the block before, if it was still
};

} // namespace platform
