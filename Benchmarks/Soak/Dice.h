#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

/// A random number generator that can be repeated: equal seeds yield equal numbers.
class Dice {
public:
    // Runs must be repeatable. NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp)
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    /// Both bounds are inclusive.
    [[nodiscard]] int whole(int least, int most) {
        return std::uniform_int_distribution(least, most)(engine_);
    }
    [[nodiscard]] double real(double least, double most) {
        return std::uniform_real_distribution(least, most)(engine_);
    }
    [[nodiscard]] bool oneIn(int count) { return whole(1, count) == 1; }
    [[nodiscard]] bool either() { return oneIn(2); }
    template <class T>
    [[nodiscard]] const T& of(const std::vector<T>& several) {
        return several[static_cast<std::size_t>(whole(0, static_cast<int>(several.size()) - 1))];
    }

private:
    std::mt19937_64 engine_;
};
