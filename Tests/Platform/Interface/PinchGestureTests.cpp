#include "Tests/Platform/Interface/TouchScene.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace platform;

namespace {

using State = GestureState;
using States = TouchScene::States;
using Points = std::vector<Point>;
using Scales = std::vector<double>;

/// A view that fills the window and can be pinched, with two fingers 40 points apart on it.
struct PinchScene : TouchScene {
    PinchScene() {
        down(1, {80, 50});
        down(2, {120, 50});
    }
    GestureLog pinch;
    std::shared_ptr<PinchGestureRecognizer> recognizer = addPinch(root(), pinch);
};

} // namespace

TEST(Pinch, BeginsWithTheFirstMoveOfTwoFingers) {
    PinchScene s;
    EXPECT_EQ(s.pinch.states, States{});
    s.move(2, {120.5, 50});
    EXPECT_EQ(s.pinch.states, States{State::Began});
    EXPECT_EQ(s.pinch.scales, Scales{1});
}

TEST(Pinch, MeasuresAgainstItsFirstMove) {
    PinchScene s;
    s.move(2, {130, 50}); // 50 points apart
    s.move(2, {180, 50}); // 100
    s.move(1, {155, 50}); // 25
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Changed, State::Changed}));
    EXPECT_EQ(s.pinch.scales, (Scales{1, 2, 0.5}));
}

TEST(Pinch, CountsTheDistanceInEveryDirection) {
    PinchScene s;
    s.move(1, {80, 50});
    s.move(2, {104, 82}); // 24 and 32 points: 40 apart
    EXPECT_EQ(s.pinch.scales, (Scales{1, 1}));
}

TEST(Pinch, IsWhereTheMiddleOfTheFingersIs) {
    PinchScene s;
    s.move(1, {70, 30});
    EXPECT_EQ(s.pinch.locations, (Points{{95, 40}}));
}

TEST(Pinch, GoesOnFromTheScaleThatIsSet) {
    PinchScene s;
    s.pinch.during = [&](State state) {
        if (state == State::Began)
            s.recognizer->setScale(1.5);
    };
    s.move(1, {80, 50});
    EXPECT_EQ(s.recognizer->scale(), 1.5);
    s.move(2, {160, 50});
    s.move(2, {100, 50});
    EXPECT_EQ(s.pinch.scales, (Scales{1, 3, 0.75}));
}

TEST(Pinch, MeasuresFromTheDistanceAtWhichTheScaleIsSet) {
    PinchScene s;
    s.move(1, {80, 50});
    s.move(2, {160, 50}); // twice as far
    s.recognizer->setScale(1);
    s.move(2, {120, 50}); // half of that
    EXPECT_EQ(s.pinch.scales, (Scales{1, 2, 0.5}));
}

TEST(Pinch, EndsWhenOneFingerIsLifted) {
    PinchScene s;
    s.move(1, {80, 50});
    s.move(1, {40, 50});
    s.up(2, {120, 50});
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Changed, State::Ended}));
    EXPECT_EQ(s.pinch.scales.back(), 2.0);
    s.move(1, {10, 50});
    s.down(3, {90, 50});
    s.move(3, {95, 50});
    EXPECT_EQ(s.pinch.states.size(), 3U) << "the finger that stays begins no other";
}

TEST(Pinch, EndsWhenTheFirstFingerIsLifted) {
    PinchScene s;
    s.move(1, {80, 50});
    s.up(1, {80, 50});
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Ended}));
}

TEST(Pinch, StartsAtOneAgainTheNextTime) {
    PinchScene s;
    s.move(1, {80, 50});
    s.move(1, {40, 50});
    s.up(1, {40, 50});
    s.up(2, {120, 50});
    EXPECT_EQ(s.recognizer->scale(), 1.0);
    s.down(1, {80, 50});
    s.down(2, {90, 50});
    s.move(1, {80, 50});
    s.move(2, {110, 50});
    EXPECT_EQ(s.pinch.scales, (Scales{1, 2, 2, 1, 3}));
}

TEST(Pinch, IsNoneWithoutAMove) {
    PinchScene s;
    s.up(1, {80, 50});
    s.up(2, {120, 50});
    EXPECT_EQ(s.pinch.states, States{});
}

TEST(Pinch, TakesAnotherSecondFingerAsLongAsItHasNotBegun) {
    PinchScene s;
    s.up(2, {120, 50});
    s.down(3, {100, 50});
    s.move(3, {100, 50});
    s.move(3, {120, 50});
    EXPECT_EQ(s.pinch.scales, (Scales{1, 2}));
}

TEST(Pinch, IsBetweenTheFirstTwoOfThreeFingers) {
    PinchScene s;
    s.down(3, {100, 90});
    s.move(1, {80, 50});
    s.move(3, {180, 10});
    s.move(2, {160, 50});
    EXPECT_EQ(s.pinch.scales, (Scales{1, 1, 2}));
    s.up(3, {180, 10});
    EXPECT_EQ(s.pinch.states.back(), State::Changed) << "the third has no part in it";
    s.up(2, {160, 50});
    EXPECT_EQ(s.pinch.states.back(), State::Ended);
}

TEST(Pinch, StaysANumberWhenTheFingersAreOnOneSpot) {
    PinchScene s;
    s.move(2, {80, 50});
    s.move(2, {80, 50});
    s.move(2, {120, 50});
    ASSERT_EQ(s.pinch.states.size(), 3U);
    for (const double scale : s.pinch.scales) {
        EXPECT_TRUE(std::isfinite(scale)) << scale;
        EXPECT_GT(scale, 0);
    }
    EXPECT_EQ(s.pinch.scales[1], 1.0);
    EXPECT_GT(s.pinch.scales[2], 1.0);
}

TEST(Pinch, ClosesToMoreThanNothing) {
    PinchScene s;
    s.move(1, {80, 50});
    s.move(1, {120, 50});
    EXPECT_GT(s.pinch.scales.back(), 0);
    s.move(1, {80, 50});
    EXPECT_EQ(s.pinch.scales.back(), 1.0);
}

TEST(Pinch, IsCancelledWithTheTouches) {
    PinchScene s;
    s.move(1, {80, 50});
    s.window().cancelTouches();
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Cancelled}));
}

TEST(Pinch, BeginsAfterASecondFingerHasFailedThePan) {
    TouchScene s;
    GestureLog pan;
    GestureLog pinch;
    addPan(s.root(), pan);
    addPinch(s.root(), pinch);
    s.down(1, {80, 50});
    s.move(1, {85, 50});
    s.down(2, {120, 50});
    s.move(2, {160, 50});
    EXPECT_EQ(pan.states, States{});
    EXPECT_EQ(pinch.states, States{State::Began});
}

TEST(Pinch, IsFailedByAPanThatBegan) {
    TouchScene s;
    GestureLog pan;
    GestureLog pinch;
    addPan(s.root(), pan);
    addPinch(s.root(), pinch);
    s.down(1, {80, 50});
    s.move(1, {90, 50});
    s.down(2, {120, 50});
    s.move(2, {160, 50});
    s.move(1, {20, 50});
    EXPECT_EQ(pan.states, (States{State::Began, State::Cancelled}));
    EXPECT_EQ(pinch.states, States{}) << "it stays failed while a finger is down";
    s.up(1, {20, 50});
    s.up(2, {160, 50});
    s.down(1, {80, 50});
    s.down(2, {120, 50});
    s.move(2, {121, 50});
    EXPECT_EQ(pinch.states, States{State::Began});
}
