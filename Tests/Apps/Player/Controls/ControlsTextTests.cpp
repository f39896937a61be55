#include "Apps/Player/Controls/ControlsText.h"

#include <gtest/gtest.h>

#include <limits>

TEST(TimeText, CountsMinutesAndSeconds) {
    EXPECT_EQ(timeText(0), "0:00");
    EXPECT_EQ(timeText(65.9), "1:05");
    EXPECT_EQ(timeText(3599), "59:59");
}

TEST(TimeText, CountsHoursWhereThereAreAny) {
    EXPECT_EQ(timeText(3600), "1:00:00");
    EXPECT_EQ(timeText(36125), "10:02:05");
}

TEST(TimeText, TakesWhatIsNoTimeForZeroAndStopsAtAHundredHours) {
    EXPECT_EQ(timeText(-1), "0:00");
    EXPECT_EQ(timeText(std::numeric_limits<double>::quiet_NaN()), "0:00");
    EXPECT_EQ(timeText(std::numeric_limits<double>::infinity()), "0:00");
    EXPECT_EQ(timeText(1e9), "100:00:00");
}

TEST(PercentText, IsWholeAndNeverOverAHundred) {
    EXPECT_EQ(percentText(0.0), "0 %");
    EXPECT_EQ(percentText(0.429), "42 %");
    EXPECT_EQ(percentText(1.5), "100 %");
    EXPECT_EQ(percentText(std::nullopt), "");
}
