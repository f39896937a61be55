#include "Hosts/SDL/WindowMetrics.h"

#include <gtest/gtest.h>

TEST(WindowMetrics, CountPixelsPerPoint) {
    EXPECT_EQ((zanto::WindowMetrics{{640, 360}, {640, 360}}.scale()), 1.0);
    EXPECT_EQ((zanto::WindowMetrics{{640, 360}, {1280, 720}}.scale()), 2.0);
    EXPECT_EQ((zanto::WindowMetrics{{640, 360}, {960, 540}}.scale()), 1.5);
}

TEST(WindowMetrics, GoByTheLongerSideWhereRoundingParts) {
    EXPECT_EQ((zanto::WindowMetrics{{3, 1000}, {5, 1500}}.scale()), 1.5);
    EXPECT_EQ((zanto::WindowMetrics{{1000, 3}, {1500, 4}}.scale()), 1.5);
}

TEST(WindowMetrics, HaveAScaleThoughThereIsNothing) {
    EXPECT_EQ((zanto::WindowMetrics{{0, 0}, {0, 0}}.scale()), 1.0);
    EXPECT_EQ((zanto::WindowMetrics{{10, 10}, {0, 0}}.scale()), 1.0);
}
