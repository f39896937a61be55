#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Consecutive quads of the sphere's strip that are drawn together: `count` quads from `first`,
/// counted over all rings. A quad is four vertices of the strip.
struct QuadRun {
    std::int32_t first = 0;
    std::int32_t count = 0;
    friend bool operator==(const QuadRun&, const QuadRun&) = default;
};

/// A set of the 180 quads (segments) of one ring.
class RingMask {
public:
    static constexpr int kSegments = 180;

    [[nodiscard]] static RingMask all() {
        return RingMask({~0ULL, ~0ULL, (1ULL << (kSegments - 128)) - 1});
    }
    /// The empty set.
    RingMask() = default;

    [[nodiscard]] bool test(int segment) const { return (word(segment) >> bit(segment) & 1U) != 0; }
    void set(int segment) { words_[index(segment)] |= 1ULL << bit(segment); }
    /// Removes `count` segments from `first` on, wrapping around the ring. `first` may be any
    /// number.
    void clearRange(int first, int count);
    [[nodiscard]] bool isEmpty() const { return (words_[0] | words_[1] | words_[2]) == 0; }
    /// Returns the first segment at or after `from` that is in the set (`value` is true) or not in
    /// it (false), or `kSegments` if there is none.
    [[nodiscard]] int find(int from, bool value) const;

    RingMask& operator&=(const RingMask& other);

private:
    explicit RingMask(std::array<std::uint64_t, 3> words) : words_(words) {}
    [[nodiscard]] static std::size_t index(int segment) {
        return static_cast<std::size_t>(segment) / 64;
    }
    [[nodiscard]] static unsigned bit(int segment) { return static_cast<unsigned>(segment) % 64; }
    [[nodiscard]] std::uint64_t word(int segment) const { return words_[index(segment)]; }
    void clearStraight(int first, int end);

    std::array<std::uint64_t, 3> words_{};
};

/// A set of the quads of the whole sphere, as one ring mask for each ring from the nadir up.
class QuadMask {
public:
    static constexpr int kRings = 90;
    static constexpr std::int32_t kQuads = kRings * RingMask::kSegments;

    /// The empty set.
    QuadMask() = default;
    [[nodiscard]] static QuadMask all();

    [[nodiscard]] RingMask& ring(int index) { return rings_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const RingMask& ring(int index) const {
        return rings_[static_cast<std::size_t>(index)];
    }
    QuadMask& operator&=(const QuadMask& other);

    /// Returns at most `most` runs that together cover every quad of the set. If there are more
    /// runs, the ones with the fewest quads between them are merged.
    [[nodiscard]] std::vector<QuadRun> runs(std::size_t most) const;

private:
    std::array<RingMask, kRings> rings_;
};
