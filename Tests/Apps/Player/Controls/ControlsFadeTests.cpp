#include "Apps/Player/Controls/ControlsFade.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(ControlsFade, BeginsWithNothing) {
    const ControlsFade fade;
    EXPECT_EQ(fade.opacity(0ms), 0);
    EXPECT_FALSE(fade.isShown(0ms));
    EXPECT_FALSE(fade.nextChange(0ms));
}

TEST(ControlsFade, AppearsRestsAndGoes) {
    ControlsFade fade;
    fade.show(1s);
    EXPECT_EQ(fade.opacity(1s), 0);
    EXPECT_DOUBLE_EQ(fade.opacity(1075ms), 0.5);
    EXPECT_EQ(fade.opacity(1150ms), 1);
    EXPECT_EQ(fade.opacity(4s), 1);
    EXPECT_DOUBLE_EQ(fade.opacity(4175ms), 0.5);
    EXPECT_EQ(fade.opacity(4350ms), 0);
}

TEST(ControlsFade, SaysWhenItChangesNext) {
    ControlsFade fade;
    fade.show(1s);
    EXPECT_EQ(fade.nextChange(1100ms), 1100ms);
    EXPECT_EQ(fade.nextChange(1150ms), 4s);
    EXPECT_EQ(fade.nextChange(4100ms), 4100ms);
    EXPECT_FALSE(fade.nextChange(4350ms));
}

TEST(ControlsFade, RestsAnewAfterEveryStir) {
    ControlsFade fade;
    fade.show(1s);
    fade.show(3s);
    EXPECT_EQ(fade.opacity(5900ms), 1);
    EXPECT_EQ(fade.nextChange(5900ms), 6s);
}

TEST(ControlsFade, ComesBackFromWhereItIs) {
    ControlsFade fade;
    fade.show(1s);
    fade.show(4175ms); // half gone
    EXPECT_DOUBLE_EQ(fade.opacity(4175ms), 0.5);
    EXPECT_EQ(fade.opacity(4250ms), 1);
}

TEST(ControlsFade, GoesAtOnceWhenItIsHidden) {
    ControlsFade fade;
    fade.show(1s);
    fade.hide(2s);
    EXPECT_FALSE(fade.isShown(2s));
    EXPECT_EQ(fade.opacity(2350ms), 0);
}

TEST(ControlsFade, NeverGrowsOnceItIsHidden) {
    ControlsFade fade;
    fade.show(1s);
    fade.hide(1075ms);
    EXPECT_DOUBLE_EQ(fade.opacity(1075ms), 0.5);
    EXPECT_LT(fade.opacity(1150ms), 0.5);
}

TEST(ControlsFade, StaysWhileItIsHeldAndRestsAfterwards) {
    ControlsFade fade;
    fade.setHeld(true, 1s);
    EXPECT_EQ(fade.opacity(100s), 1);
    EXPECT_FALSE(fade.nextChange(100s));
    fade.setHeld(false, 100s);
    EXPECT_EQ(fade.opacity(103s), 1);
    EXPECT_EQ(fade.opacity(104s), 0);
}
