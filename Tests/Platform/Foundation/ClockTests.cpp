#include "Platform/Foundation/Clock.h"

#include <gtest/gtest.h>

using namespace platform;

TEST(FrameGrid, IsExactOnTheSixtieths) {
    const FrameGrid grid(60);
    for (int i = 0; i < 100000; ++i) {
        const Instant instant = fromSeconds(i / 60.0);
        ASSERT_EQ(grid.atOrBefore(instant), instant);
        ASSERT_EQ(grid.after(instant), fromSeconds((i + 1) / 60.0));
        ASSERT_EQ(grid.atOrBefore(instant + Instant(1)), instant);
    }
}

TEST(VirtualClock, NeverRunsBackwards) {
    VirtualClock clock;
    clock.advanceTo(fromSeconds(2));
    clock.advanceTo(fromSeconds(1));
    EXPECT_EQ(clock.now(), fromSeconds(2));
}
