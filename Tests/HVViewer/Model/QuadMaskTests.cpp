#include "HVViewer/Model/QuadMask.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <vector>

namespace {

/// The quads of a mask, one by one.
std::vector<bool> quadsOf(const QuadMask& mask) {
    std::vector<bool> quads;
    for (int ring = 0; ring < QuadMask::kRings; ++ring) {
        for (int segment = 0; segment < RingMask::kSegments; ++segment)
            quads.push_back(mask.ring(ring).test(segment));
    }
    return quads;
}

QuadMask randomMask(std::mt19937& random, int cuts) {
    QuadMask mask = QuadMask::all();
    for (int i = 0; i < cuts; ++i)
        mask.ring(static_cast<int>(random() % 90))
            .clearRange(static_cast<int>(random() % 180), static_cast<int>(random() % 60));
    return mask;
}

} // namespace

TEST(RingMask, ClearsARangeRoundTheRing) {
    std::mt19937 random(1);
    for (int i = 0; i < 5000; ++i) {
        const int first = static_cast<int>(random() % 1000) - 500;
        const int count = static_cast<int>(random() % 200) - 5;
        RingMask mask = RingMask::all();
        mask.clearRange(first, count);
        std::array<bool, 180> expected{};
        expected.fill(true);
        for (int k = 0; k < count; ++k)
            expected[static_cast<std::size_t>(((first + k) % 180 + 180) % 180)] = false;
        for (int segment = 0; segment < 180; ++segment)
            ASSERT_EQ(mask.test(segment), expected[static_cast<std::size_t>(segment)])
                << first << " + " << count << " at " << segment;
    }
}

TEST(RingMask, FindsTheNextOfEitherKind) {
    RingMask mask;
    EXPECT_TRUE(mask.isEmpty());
    EXPECT_EQ(mask.find(0, true), 180);
    mask.set(63);
    mask.set(64);
    mask.set(179);
    EXPECT_EQ(mask.find(0, true), 63);
    EXPECT_EQ(mask.find(63, false), 65);
    EXPECT_EQ(mask.find(65, true), 179);
    EXPECT_EQ(mask.find(179, false), 180);
    EXPECT_EQ(RingMask::all().find(0, false), 180);
    EXPECT_FALSE(mask.isEmpty());
}

TEST(QuadMask, OfAllIsOneRun) {
    EXPECT_EQ(QuadMask::all().runs(64), (std::vector<QuadRun>{{0, 16200}}));
    EXPECT_TRUE(QuadMask().runs(64).empty());
}

TEST(QuadMask, RunsOnFromOneRingToTheNext) {
    QuadMask mask;
    mask.ring(0).set(179);
    mask.ring(1).set(0);
    mask.ring(1).set(2);
    EXPECT_EQ(mask.runs(64), (std::vector<QuadRun>{{179, 2}, {182, 1}}));
}

TEST(QuadMask, HoldsExactlyWhatIsMeantWhileThereAreFewRuns) {
    std::mt19937 random(2);
    for (int i = 0; i < 200; ++i) {
        const QuadMask mask = randomMask(random, 40);
        std::vector<bool> drawn(QuadMask::kQuads);
        for (const QuadRun& run : mask.runs(1000)) {
            for (std::int32_t q = run.first; q < run.first + run.count; ++q)
                drawn[static_cast<std::size_t>(q)] = true;
        }
        ASSERT_EQ(drawn, quadsOf(mask));
    }
}

TEST(QuadMask, BridgesTheNarrowestGapsWhenThereAreTooManyRuns) {
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
        const QuadMask mask = randomMask(random, 300);
        const auto runs = mask.runs(20);
        ASSERT_LE(runs.size(), 20U);
        std::vector<bool> drawn(QuadMask::kQuads);
        for (const QuadRun& run : runs) {
            for (std::int32_t q = run.first; q < run.first + run.count; ++q)
                drawn[static_cast<std::size_t>(q)] = true;
        }
        const auto meant = quadsOf(mask);
        for (std::size_t q = 0; q < meant.size(); ++q)
            ASSERT_TRUE(drawn[q] || !meant[q]) << q;
    }
}

TEST(QuadMask, IsCutByAnother) {
    QuadMask mask = QuadMask::all();
    QuadMask other;
    other.ring(4).set(7);
    mask &= other;
    EXPECT_EQ(mask.runs(64), (std::vector<QuadRun>{{4 * 180 + 7, 1}}));
}
