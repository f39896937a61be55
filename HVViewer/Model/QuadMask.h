#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Quads of the sphere's strip that are drawn together: `count` quads from `first`, counted over
/// all rings. A quad is four vertices of the strip.
struct QuadRun {
    std::int32_t first = 0;
    std::int32_t count = 0;
    friend bool operator==(const QuadRun&, const QuadRun&) = default;
};

/// Which of the 180 quads of a ring are meant, segment by segment.
class RingMask {
public:
    static constexpr int kSegments = 180;

    [[nodiscard]] static RingMask all() {
        return RingMask({~0ULL, ~0ULL, (1ULL << (kSegments - 128)) - 1});
    }
    /// None.
    RingMask() = default;

    [[nodiscard]] bool test(int segment) const { return (word(segment) >> bit(segment) & 1U) != 0; }
    void set(int segment) { words_[index(segment)] |= 1ULL << bit(segment); }
    /// Takes out `count` segments from `first` on, round the ring; `first` may be any number.
    void clearRange(int first, int count);
    [[nodiscard]] bool isEmpty() const { return (words_[0] | words_[1] | words_[2]) == 0; }
    /// The first segment at or after `from` whose state is `value`, or `kSegments`.
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

/// Which quads of the whole sphere are meant, ring by ring from the nadir.
class QuadMask {
public:
    static constexpr int kRings = 90;
    static constexpr std::int32_t kQuads = kRings * RingMask::kSegments;

    /// None.
    QuadMask() = default;
    [[nodiscard]] static QuadMask all();

    [[nodiscard]] RingMask& ring(int index) { return rings_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const RingMask& ring(int index) const {
        return rings_[static_cast<std::size_t>(index)];
    }
    QuadMask& operator&=(const QuadMask& other);

    /// At most `most` runs that together hold every quad meant. Where there are more, those with
    /// the fewest quads between them are joined.
    [[nodiscard]] std::vector<QuadRun> runs(std::size_t most) const;

private:
    std::array<RingMask, kRings> rings_;
};
