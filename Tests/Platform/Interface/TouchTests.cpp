#include "Platform/Interface/Touch.h"

#include <gtest/gtest.h>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A finger that goes down at the origin at 0.
struct Finger {
    explicit Finger(Point start = {})
        : touch({TouchPhase::Down, 1, start, TouchKind::Finger, 0ns}, TouchSlop().finger) {}
    void to(Point location, Instant time) {
        touch.report({TouchPhase::Move, 1, location, TouchKind::Finger, time});
    }
    Touch touch;
};

constexpr double kNear = 1e-6;

} // namespace

TEST(Touch, HasTheSlopOfAFingerAndOfAMouse) {
    EXPECT_EQ(TouchSlop().finger, 10.0);
    EXPECT_EQ(TouchSlop().mouse, 3.0);
}

TEST(Touch, KnowsHowFarAndHowLongItHasBeenDown) {
    Finger finger({10, 20});
    finger.to({13, 24}, 40ms);
    EXPECT_EQ(finger.touch.distance(), 5.0);
    EXPECT_EQ(finger.touch.age(), Instant(40ms));
    EXPECT_EQ(finger.touch.first().location, (Point{10, 20}));
    EXPECT_EQ(finger.touch.last().location, (Point{13, 24}));
}

TEST(Touch, MeasuresDistanceFromWhereItWentDown) {
    Finger finger;
    finger.to({30, 0}, 10ms);
    finger.to({1, 0}, 900ms);
    EXPECT_EQ(finger.touch.distance(), 1.0);
}

TEST(TouchVelocity, IsThatOfAConstantDrag) {
    Finger finger;
    for (int i = 1; i <= 60; ++i)
        finger.to({i * 5.0, i * -2.5}, i * 10ms);
    EXPECT_NEAR(finger.touch.velocity().x, 500, kNear);
    EXPECT_NEAR(finger.touch.velocity().y, -250, kNear);
}

TEST(TouchVelocity, IsZeroBeforeTheFirstMove) {
    EXPECT_EQ(Finger({50, 50}).touch.velocity(), (Point{}));
}

TEST(TouchVelocity, IsZeroAfterARest) {
    Finger finger;
    for (int i = 1; i <= 10; ++i)
        finger.to({i * 10.0, 0}, i * 10ms);
    finger.to({100, 0}, 200ms);
    EXPECT_EQ(finger.touch.velocity(), (Point{}));
    finger.to({100, 0}, 5s);
    EXPECT_EQ(finger.touch.velocity(), (Point{}));
}

TEST(TouchVelocity, CountsWhatIsLeftOfTheMovementAfterAShortRest) {
    Finger finger;
    for (int i = 1; i <= 20; ++i)
        finger.to({i * 10.0, 0}, i * 10ms);
    finger.to({200, 0}, 240ms);
    // From 140 points at 0.14 s to 200 points now.
    EXPECT_NEAR(finger.touch.velocity().x, 600, kNear);
}

TEST(TouchVelocity, OfAShortDragIsOverItsWholeTime) {
    Finger finger;
    finger.to({10, 5}, 50ms);
    EXPECT_NEAR(finger.touch.velocity().x, 200, kNear);
    EXPECT_NEAR(finger.touch.velocity().y, 100, kNear);
}

TEST(TouchVelocity, OfADragOfATenthOfASecondIsOverAllOfIt) {
    Finger finger;
    finger.to({10, 0}, 50ms);
    finger.to({30, 0}, 100ms);
    EXPECT_NEAR(finger.touch.velocity().x, 300, kNear);
}

TEST(TouchVelocity, ForgetsWhatIsOlderThanATenthOfASecond) {
    Finger finger;
    for (int i = 1; i <= 20; ++i)
        finger.to({i * 100.0, 0}, i * 10ms);
    for (int i = 1; i <= 10; ++i)
        finger.to({2000.0 - i, 0}, 200ms + i * 10ms);
    EXPECT_NEAR(finger.touch.velocity().x, -100, kNear);
}

TEST(TouchVelocity, TakesTheFingerToRestBetweenReports) {
    Finger finger;
    finger.to({30, 0}, 30ms);
    finger.to({80, 0}, 130ms);
    finger.to({90, 0}, 155ms);
    // 0.055 s: the last that was heard by then is 30 points.
    EXPECT_NEAR(finger.touch.velocity().x, 600, kNear);
}

TEST(TouchVelocity, OfOneJumpAfterALongRestIsOverATenthOfASecond) {
    Finger finger;
    finger.to({50, 0}, 10s);
    EXPECT_NEAR(finger.touch.velocity().x, 500, kNear);
}

TEST(TouchVelocity, IsZeroWhileNoTimeHasPassed) {
    Finger finger;
    finger.to({50, 0}, 0ns);
    EXPECT_EQ(finger.touch.velocity(), (Point{}));
}

TEST(TouchVelocity, GoesByTheLastOfReportsOfOneTime) {
    Finger finger;
    for (int i = 0; i < 20; ++i) {
        finger.to({i * 10.0, 0}, i * 10ms);
        finger.to({i * 10.0 + 3, 0}, i * 10ms);
    }
    EXPECT_NEAR(finger.touch.velocity().x, 1000, kNear);
}

TEST(TouchVelocity, IsFromWhereItWentDownThoughItMovedAtTheSameTime) {
    Finger finger;
    finger.to({10, 0}, 0ns);
    finger.to({20, 0}, 50ms);
    EXPECT_NEAR(finger.touch.velocity().x, 400, kNear);
}

TEST(TouchVelocity, TakesATimeThatGoesBackForTheSameTime) {
    Finger finger;
    finger.to({20, 0}, 100ms);
    finger.to({40, 0}, 20ms);
    EXPECT_EQ(finger.touch.age(), Instant(100ms));
    EXPECT_NEAR(finger.touch.velocity().x, 400, kNear);
}

TEST(TouchVelocity, IsRightAfterThousandsOfReports) {
    Finger finger;
    for (int i = 1; i <= 80000; ++i)
        finger.to({i / 8.0, 0}, i * 125us);
    EXPECT_NEAR(finger.touch.velocity().x, 1000, kNear);
}

TEST(TouchVelocity, IsFoundAtOnceAfterAStormOfReportsOfOneTime) {
    Finger finger;
    // Were all of them kept, and looked through each time, this would take minutes.
    for (int i = 1; i <= 1000000; ++i)
        finger.to({i * 1e-3, 0}, 20ms);
    EXPECT_NEAR(finger.touch.velocity().x, 50000, kNear);
}

TEST(TouchVelocity, IsMeasuredOverAFrameAtLeast) {
    Finger finger;
    finger.to({100, -50}, 1ms);
    EXPECT_NEAR(finger.touch.velocity().x, 6000, 1);
    EXPECT_NEAR(finger.touch.velocity().y, -3000, 1);
    finger.to({100, -50}, 20ms);
    EXPECT_NEAR(finger.touch.velocity().x, 5000, 1) << "from there on over its own time";
}
