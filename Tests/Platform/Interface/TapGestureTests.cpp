#include "Tests/Platform/Interface/TouchScene.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

using State = GestureState;
using States = TouchScene::States;
using Points = std::vector<Point>;

/// A view at 20, 10 that can be tapped.
struct TapScene : TouchScene {
    std::shared_ptr<View> view = add({{20, 10}, {100, 80}});
    GestureLog tap;
    std::shared_ptr<TapGestureRecognizer> recognizer = addTap(view, tap);
};

} // namespace

TEST(Tap, EndsOnceWithTheLift) {
    TapScene s;
    s.down(1, {50, 50});
    EXPECT_EQ(s.tap.states, States{});
    s.up(1, {50, 50}, 100);
    EXPECT_EQ(s.tap.states, States{State::Ended});
    EXPECT_EQ(s.tap.locations, (Points{{30, 40}}));
    EXPECT_EQ(s.recognizer->state(), State::Possible);
}

TEST(Tap, IsWhereTheFingerIsLifted) {
    TapScene s;
    s.down(1, {50, 50});
    s.move(1, {52, 50});
    s.up(1, {55, 48}, 100);
    EXPECT_EQ(s.tap.locations, (Points{{35, 38}}));
}

TEST(Tap, TakesThreeQuartersOfASecondAtMost) {
    TapScene s;
    s.down(1, {50, 50});
    s.up(1, {50, 50}, 750);
    EXPECT_EQ(s.tap.states, States{State::Ended});
    s.down(1, {50, 50}, 1000);
    s.up(1, {50, 50}, 1751);
    EXPECT_EQ(s.tap.states, States{State::Ended});
}

TEST(Tap, StaysWithinTheSlop) {
    TapScene s;
    s.down(1, {50, 50});
    s.up(1, {60, 50}, 10);
    EXPECT_EQ(s.tap.states.size(), 1U);
    s.down(1, {50, 50}, 20);
    s.up(1, {60.5, 50}, 30);
    EXPECT_EQ(s.tap.states.size(), 1U);
}

TEST(Tap, IsNoneAfterAnExcursion) {
    TapScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50}, 10);
    s.move(1, {50, 50}, 20);
    s.up(1, {50, 50}, 30);
    EXPECT_EQ(s.tap.states, States{});
}

TEST(Tap, OfAMouseStaysWithinThreePoints) {
    TapScene s;
    s.down(1, {50, 50}, 0, TouchKind::Mouse);
    s.up(1, {53, 50}, 10);
    EXPECT_EQ(s.tap.states.size(), 1U);
    s.down(1, {50, 50}, 20, TouchKind::Mouse);
    s.up(1, {53.5, 50}, 30);
    EXPECT_EQ(s.tap.states.size(), 1U);
}

TEST(Tap, WithoutASlopStaysOnItsSpot) {
    TapScene s;
    s.window().setTouchSlop({0, 0});
    s.down(1, {50, 50});
    s.up(1, {50, 50}, 10);
    EXPECT_EQ(s.tap.states.size(), 1U);
    s.down(1, {50, 50}, 20);
    s.move(1, {50.5, 50}, 25);
    s.up(1, {50.5, 50}, 30);
    EXPECT_EQ(s.tap.states.size(), 1U);
}

TEST(Tap, IsOfOneFinger) {
    TapScene s;
    s.down(1, {50, 50});
    s.down(2, {60, 50}, 10);
    s.up(2, {60, 50}, 20);
    s.up(1, {50, 50}, 30);
    EXPECT_EQ(s.tap.states, States{});
    s.down(1, {50, 50}, 40);
    s.up(1, {50, 50}, 50);
    EXPECT_EQ(s.tap.states, States{State::Ended});
}

TEST(Tap, IsNotCancelledButDoesNotHappen) {
    TapScene s;
    s.down(1, {50, 50});
    s.cancel(1, {50, 50});
    s.up(1, {50, 50}, 10);
    EXPECT_EQ(s.tap.states, States{});
}

TEST(Tap, IsFailedByAPan) {
    TapScene s;
    GestureLog pan;
    addPan(s.view, pan);
    s.down(1, {50, 50});
    s.move(1, {60, 50}, 10); // as far as a tap may go, where a pan begins
    s.up(1, {60, 50}, 20);
    EXPECT_EQ(pan.states, (States{State::Began, State::Ended}));
    EXPECT_EQ(s.tap.states, States{});
}

TEST(Tap, GoesToTheFirstOfTwoRecognisers) {
    TapScene s;
    GestureLog second;
    addTap(s.view, second);
    s.down(1, {50, 50});
    s.up(1, {50, 50}, 10);
    EXPECT_EQ(s.tap.states, States{State::Ended});
    EXPECT_EQ(second.states, States{});
}

TEST(Tap, LeavesPansAndPinchesAlone) {
    TapScene s;
    GestureLog pan;
    GestureLog pinch;
    addPan(s.view, pan);
    addPinch(s.view, pinch);
    s.down(1, {50, 50});
    s.up(1, {50, 50}, 10);
    EXPECT_EQ(s.tap.states, States{State::Ended});
    EXPECT_EQ(pan.states, States{});
    EXPECT_EQ(pinch.states, States{});
}
