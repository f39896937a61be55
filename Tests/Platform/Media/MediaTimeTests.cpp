#include "Platform/Media/MediaTime.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace platform;

TEST(MediaTime, IsSecondsInWholeUnits) {
    EXPECT_EQ(MediaTime::makeWithSeconds(0.5, 600), (MediaTime{300, 600}));
    EXPECT_EQ(MediaTime::makeWithSeconds(-1.5, 10), (MediaTime{-15, 10}));
    EXPECT_EQ(MediaTime::makeWithSeconds(0.26, 2), (MediaTime{1, 2})) << "to the nearest unit";
    EXPECT_EQ(MediaTime::makeWithSeconds(0.25, 2), (MediaTime{1, 2})) << "halves away from zero";
    EXPECT_EQ((MediaTime{300, 600}).seconds(), 0.5);
}

TEST(MediaTime, IsNoTimeWithoutATimescale) {
    EXPECT_FALSE(MediaTime{}.isNumeric());
    EXPECT_TRUE(std::isnan(MediaTime{}.seconds()));
    EXPECT_FALSE(MediaTime::makeWithSeconds(1, 0).isNumeric());
}

TEST(MediaTime, IsNoTimeForSecondsThatCannotBeHeld) {
    for (const double seconds : {std::nan(""), std::numeric_limits<double>::infinity(), 1e300})
        EXPECT_EQ(MediaTime::makeWithSeconds(seconds, 600), MediaTime{}) << seconds;
}

TEST(MediaTime, KeepsNanosecondsExactly) {
    const Instant instant(86'400'000'000'001);
    EXPECT_EQ(MediaTime::make(instant).instant(), instant);
    EXPECT_EQ((MediaTime{1, 3}).instant(), Instant(333'333'333));
    EXPECT_EQ(kMediaTimeZero.instant(), Instant(0));
}
