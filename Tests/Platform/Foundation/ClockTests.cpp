#include "Platform/Foundation/Clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>

using namespace platform;

TEST(Instants, AreRoundedToTheNearestNanosecond) {
    EXPECT_EQ(fromSeconds(0).count(), 0);
    EXPECT_EQ(fromSeconds(1.5).count(), 1'500'000'000);
    EXPECT_EQ(fromSeconds(1.0 / 60).count(), 16'666'667);
    EXPECT_EQ(fromSeconds(-1.0 / 60).count(), -16'666'667);
    EXPECT_EQ(fromSeconds(0.4e-9).count(), 0);
}

TEST(Instants, SurviveTheWayThroughSeconds) {
    std::mt19937_64 random(1);
    std::uniform_int_distribution<std::int64_t> days(0, std::int64_t{86'400'000'000'000} * 30);
    for (int i = 0; i < 10000; ++i) {
        const Instant instant(days(random));
        ASSERT_EQ(fromSeconds(toSeconds(instant)), instant);
    }
}

TEST(FrameGrid, IsExactOnTheSixtieths) {
    const FrameGrid grid(60);
    for (int i = 0; i < 100000; ++i) {
        const Instant instant = fromSeconds(i / 60.0);
        ASSERT_EQ(grid.atOrBefore(instant), instant);
        ASSERT_EQ(grid.after(instant), fromSeconds((i + 1) / 60.0));
        ASSERT_EQ(grid.atOrBefore(instant + Instant(1)), instant);
        ASSERT_EQ(grid.after(instant - Instant(1)), instant);
    }
}

TEST(FrameGrid, BracketsAnyInstantAtAnyRate) {
    std::mt19937_64 random(2);
    std::uniform_int_distribution<std::int64_t> someHours(0, std::int64_t{3'600'000'000'000} * 5);
    for (const double rate : {1.0, 24.0, 30.0, 59.94, 60.0, 90.0, 120.0, 144.0}) {
        const FrameGrid grid(rate);
        for (int i = 0; i < 2000; ++i) {
            const Instant instant(someHours(random));
            const Instant before = grid.atOrBefore(instant);
            const Instant after = grid.after(instant);
            ASSERT_LE(before, instant) << rate;
            ASSERT_GT(after, instant) << rate;
            // Neighbours: nothing of the grid lies between the two.
            ASSERT_EQ(grid.after(before), after) << rate;
            ASSERT_NEAR(toSeconds(after - before), 1 / rate, 2e-9) << rate;
        }
    }
}

TEST(FrameGrid, HoldsBeforeZeroToo) {
    const FrameGrid grid(60);
    EXPECT_EQ(grid.after(fromSeconds(-0.001)), Instant(0));
    EXPECT_EQ(grid.atOrBefore(fromSeconds(-0.001)), fromSeconds(-1 / 60.0));
}

TEST(FrameGrid, RefreshesSixtyTimesASecondUnlessToldOtherwise) {
    EXPECT_EQ(FrameGrid().after(Instant(0)), fromSeconds(1 / 60.0));
}

TEST(VirtualClock, StartsAtZeroAndStandsStill) {
    const VirtualClock clock;
    EXPECT_EQ(clock.now(), Instant(0));
    EXPECT_EQ(clock.now(), Instant(0));
}

TEST(VirtualClock, GoesWhereItIsTold) {
    VirtualClock clock;
    clock.advanceTo(fromSeconds(2));
    EXPECT_EQ(clock.now(), fromSeconds(2));
}

TEST(VirtualClock, NeverRunsBackwards) {
    VirtualClock clock;
    clock.advanceTo(fromSeconds(2));
    clock.advanceTo(fromSeconds(1));
    EXPECT_EQ(clock.now(), fromSeconds(2));
}

TEST(SystemClock, CountsUpFromItsCreation) {
    const SystemClock clock;
    Instant last = clock.now();
    EXPECT_GE(last, Instant(0));
    for (int i = 0; i < 1000; ++i) {
        const Instant now = clock.now();
        ASSERT_GE(now, last);
        last = now;
    }
}
