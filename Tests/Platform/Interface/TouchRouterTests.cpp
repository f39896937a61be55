#include "Tests/Platform/Interface/TouchScene.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <limits>

using namespace platform;

namespace {

using State = GestureState;
using States = TouchScene::States;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A view on the left half that covers the root view; both can be dragged.
struct RouterScene : TouchScene {
    GestureLog behind;
    GestureLog front;
    std::shared_ptr<View> view = add({{0, 0}, {100, 100}});
    std::shared_ptr<PanGestureRecognizer> frontPan = addPan(view, front);
    std::shared_ptr<PanGestureRecognizer> behindPan = addPan(root(), behind);
};

} // namespace

TEST(Touches, GoToTheFrontMostView) {
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.front.states, States{State::Began});
    EXPECT_EQ(s.behind.states, States{});
}

TEST(Touches, GoToWhatLiesBesideTheFrontMostView) {
    RouterScene s;
    s.down(1, {100, 50});
    s.move(1, {120, 50});
    EXPECT_EQ(s.front.states, States{});
    EXPECT_EQ(s.behind.states, States{State::Began});
}

TEST(Touches, StayWithTheViewThatTheyWentDownOn) {
    RouterScene s;
    s.down(1, {150, 50});
    s.move(1, {50, 50});
    s.up(1, {50, 50});
    EXPECT_EQ(s.front.states, States{});
    EXPECT_EQ(s.behind.states, (States{State::Began, State::Ended}));
}

TEST(Touches, PassThroughHiddenViews) {
    RouterScene s;
    s.view->setHidden(true);
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.front.states, States{});
    EXPECT_EQ(s.behind.states, States{State::Began});
}

TEST(Touches, PassThroughWhatIsInsideAHiddenView) {
    RouterScene s;
    GestureLog inner;
    const auto child = make<View>(Rect{{}, {50, 50}});
    addPan(child, inner);
    s.view->addSubview(child);
    s.view->setHidden(true);
    s.down(1, {20, 20});
    s.move(1, {40, 20});
    EXPECT_EQ(inner.states, States{});
    EXPECT_EQ(s.behind.states, States{State::Began});
}

TEST(Touches, AreNotHandedOnByAViewWithoutRecognisers) {
    RouterScene s;
    s.add({{0, 0}, {200, 100}});
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.front.states, States{});
    EXPECT_EQ(s.behind.states, States{});
}

TEST(Touches, GoNowhereWhileTheWindowIsNotVisible) {
    RouterScene s;
    s.window().resignVisible();
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.window().makeKeyAndVisible();
    s.move(1, {90, 50});
    EXPECT_EQ(s.front.states, States{});
}

TEST(Touches, GoNowhereWithoutAView) {
    const auto window = make<Window>();
    window->touch({TouchPhase::Down, 1, {50, 50}, TouchKind::Finger, {}});
    window->touch({TouchPhase::Move, 1, {70, 50}, TouchKind::Finger, {}});
    window->cancelTouches();
    EXPECT_FALSE(window->isVisible());
}

TEST(Touches, OutsideTheWindowAreNobodys) {
    RouterScene s;
    for (const Point outside : {Point{-1, 50}, Point{50, -0.5}, Point{200, 50}, Point{50, 100}}) {
        s.down(1, outside);
        s.move(1, {50, 50});
        s.move(1, {90, 50});
        s.up(1, {90, 50});
    }
    EXPECT_EQ(s.front.states, States{});
    EXPECT_EQ(s.behind.states, States{});
}

TEST(Touches, OfFingersThatAreNotDownAreIgnored) {
    RouterScene s;
    s.move(1, {50, 50});
    s.up(1, {70, 50});
    s.cancel(1);
    s.down(2, {50, 50});
    s.move(1, {90, 50});
    EXPECT_EQ(s.front.states, States{});
    EXPECT_EQ(s.frontPan->numberOfTouches(), 1U);
}

TEST(Touches, ThatGoDownTwiceGoDownOnce) {
    RouterScene s;
    s.down(1, {50, 50});
    s.down(1, {90, 50});
    s.down(1, {150, 50});
    EXPECT_EQ(s.frontPan->numberOfTouches(), 1U);
    EXPECT_EQ(s.behindPan->numberOfTouches(), 0U);
    s.move(1, {60, 50});
    EXPECT_EQ(s.front.states, States{State::Began}) << "measured from the first";
    s.up(1, {60, 50});
    s.up(1, {60, 50});
    EXPECT_EQ(s.front.states, (States{State::Began, State::Ended}));
}

TEST(Touches, MayUseAnIdAgain) {
    RouterScene s;
    s.down(1, {50, 50});
    s.up(1, {50, 50});
    s.down(1, {150, 50});
    s.move(1, {170, 50});
    EXPECT_EQ(s.front.states, States{});
    EXPECT_EQ(s.behind.states, States{State::Began});
}

TEST(Touches, MayHaveAnyNumber) {
    RouterScene s;
    constexpr auto id = std::numeric_limits<std::int64_t>::min();
    s.down(id, {50, 50});
    s.move(id, {70, 50});
    EXPECT_EQ(s.front.states, States{State::Began});
}

TEST(Touches, AtNoPlaceAreIgnored) {
    RouterScene s;
    s.down(1, {kNaN, 50});
    s.down(2, {50, kInfinity});
    EXPECT_EQ(s.frontPan->numberOfTouches() + s.behindPan->numberOfTouches(), 0U);
    s.down(3, {50, 50});
    s.move(3, {kNaN, 50});
    s.move(3, {-kInfinity, kNaN});
    EXPECT_EQ(s.front.states, States{});
    s.move(3, {70, 50});
    EXPECT_EQ(s.front.states, States{State::Began});
}

TEST(Touches, ThatAreLiftedAtNoPlaceAreLost) {
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.up(1, {kNaN, kNaN});
    EXPECT_EQ(s.front.states, (States{State::Began, State::Cancelled}));
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.front.states.size(), 3U) << "the finger is up";
}

TEST(Touches, ThatAreCancelledAtNoPlaceAreCancelled) {
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.cancel(1, {kNaN, kNaN});
    EXPECT_EQ(s.front.states, (States{State::Began, State::Cancelled}));
}

TEST(CancelledTouch, TakesTheOtherFingersOfItsViewAlong) {
    RouterScene s;
    GestureLog pinch;
    addPinch(s.view, pinch);
    s.down(1, {50, 50});
    s.down(2, {80, 50});
    s.move(1, {45, 50});
    s.cancel(2);
    EXPECT_EQ(pinch.states, (States{State::Began, State::Cancelled}));
    s.move(1, {10, 50});
    s.up(1, {10, 50});
    s.cancel(1);
    EXPECT_EQ(pinch.states.size(), 2U);
    EXPECT_EQ(s.front.states, States{});
}

TEST(CancelledTouch, LeavesTheFingersOfOtherViewsAlone) {
    RouterScene s;
    s.down(1, {50, 50});
    s.down(2, {150, 50});
    s.move(1, {70, 50});
    s.move(2, {170, 50});
    s.cancel(1);
    s.move(2, {180, 50});
    EXPECT_EQ(s.front.states, (States{State::Began, State::Cancelled}));
    EXPECT_EQ(s.behind.states, (States{State::Began, State::Changed}));
}

TEST(CancelledTouches, AreThoseOfEveryView) {
    RouterScene s;
    s.down(1, {50, 50});
    s.down(2, {150, 50});
    s.move(1, {70, 50});
    s.move(2, {170, 50});
    s.window().cancelTouches();
    s.window().cancelTouches();
    EXPECT_EQ(s.front.states, (States{State::Began, State::Cancelled}));
    EXPECT_EQ(s.behind.states, (States{State::Began, State::Cancelled}));
}

TEST(CancelledTouches, AreThoseOfAWindowThatDisappears) {
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.window().resignVisible();
    EXPECT_EQ(s.front.states, (States{State::Began, State::Cancelled}));
    s.window().makeKeyAndVisible();
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.front.states.back(), State::Began);
}

TEST(Touches, IgnoreAPlaceThatIsTooFarAwayAndGoOn) {
    const LogRecorder log;
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    for (const double far : {1e308, -1e308, 1.1e6}) {
        s.move(1, {far, 50}, 10);
        s.move(1, {50, far}, 10);
    }
    EXPECT_EQ(log.lines().size(), 1U);
    s.move(1, {-1e6, 1e6}, 20);
    s.move(1, {80, 50}, 20);
    s.up(1, {1e308, 50}, 30);
    EXPECT_EQ(s.front.states,
              (States{State::Began, State::Changed, State::Changed, State::Cancelled}));
    EXPECT_EQ(log.lines().size(), 2U) << "the first of several in a row";
}

TEST(LostView, IsOneThatIsHiddenWhileItIsTouched) {
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.view->setHidden(true);
    s.move(1, {80, 50});
    EXPECT_EQ(s.front.states, (States{State::Began, State::Cancelled}));
    s.view->setHidden(false);
    s.move(1, {90, 50});
    s.up(1, {90, 50});
    EXPECT_EQ(s.front.states.size(), 2U);
    EXPECT_EQ(s.behind.states, States{}) << "nor does the finger go to what lies behind";
}

TEST(LostView, IsOneThatIsHiddenBeforeTheLift) {
    RouterScene s;
    GestureLog tap;
    addTap(s.view, tap);
    s.down(1, {50, 50});
    s.view->setHidden(true);
    s.up(1, {50, 50}, 10);
    EXPECT_EQ(tap.states, States{});
    s.view->setHidden(false);
    s.down(1, {50, 50}, 20);
    s.up(1, {50, 50}, 30);
    EXPECT_EQ(tap.states, States{State::Ended});
}

TEST(LostView, IsOneInsideAViewThatIsHidden) {
    RouterScene s;
    GestureLog inner;
    const auto child = make<View>(Rect{{}, {50, 50}});
    addPan(child, inner);
    s.view->addSubview(child);
    s.down(1, {20, 20});
    s.move(1, {40, 20});
    s.view->setHidden(true);
    s.move(1, {45, 20});
    EXPECT_EQ(inner.states, (States{State::Began, State::Cancelled}));
}

TEST(LostView, IsOneThatIsTakenOut) {
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.view->removeFromSuperview();
    s.move(1, {80, 50});
    EXPECT_EQ(s.front.states, (States{State::Began, State::Cancelled}));
}

TEST(LostView, MayBeDestroyedWhileItIsTouched) {
    RouterScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.view->removeFromSuperview();
    s.view.reset();
    s.move(1, {80, 50});
    s.up(1, {80, 50});
    EXPECT_EQ(s.front.states, States{State::Began});
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.behind.states, States{State::Began});
}

TEST(LostView, GivesBackTheIdOfACancelledFinger) {
    RouterScene s;
    s.down(1, {50, 50});
    s.view->removeFromSuperview();
    s.view.reset();
    s.cancel(1);
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.behind.states, States{State::Began});
}

TEST(LostView, MayBeOneOfSeveralThatAreTouchedWhenAllAreCancelled) {
    RouterScene s;
    s.down(1, {50, 50});
    s.down(2, {150, 50});
    s.move(2, {170, 50});
    s.view->removeFromSuperview();
    s.view.reset();
    s.window().cancelTouches();
    EXPECT_EQ(s.behind.states, (States{State::Began, State::Cancelled}));
}
