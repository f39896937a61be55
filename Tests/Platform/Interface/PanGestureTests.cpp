#include "Tests/Platform/Interface/TouchScene.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

using State = GestureState;
using States = TouchScene::States;
using Points = std::vector<Point>;

/// A view of 100 by 80 points at 20, 10 that can be dragged.
struct PanScene : TouchScene {
    std::shared_ptr<View> view = add({{20, 10}, {100, 80}});
    GestureLog pan;
    std::shared_ptr<PanGestureRecognizer> recognizer = addPan(view, pan);
};

} // namespace

TEST(Pan, BeginsOnceTheFingerIsTenPointsAway) {
    PanScene s;
    s.down(1, {50, 50});
    s.move(1, {59.9, 50});
    EXPECT_EQ(s.pan.states, States{});
    EXPECT_EQ(s.recognizer->state(), State::Possible);
    s.move(1, {60, 50});
    EXPECT_EQ(s.pan.states, States{State::Began});
}

TEST(Pan, CountsTheDistanceInEveryDirection) {
    PanScene s;
    s.down(1, {50, 50});
    s.move(1, {44, 42.1});
    EXPECT_EQ(s.pan.states, States{});
    s.move(1, {44, 42});
    EXPECT_EQ(s.pan.states, States{State::Began});
}

TEST(Pan, BeginsAtThePlaceOfTheMoveThatBeganIt) {
    PanScene s;
    s.down(1, {50, 50});
    s.move(1, {75, 40});
    s.move(1, {76, 41});
    EXPECT_EQ(s.pan.locations, (Points{{55, 30}, {56, 31}}));
}

TEST(Pan, ChangesAndEndsAtTheFingersPlaces) {
    PanScene s;
    s.down(1, {50, 50});
    s.move(1, {60, 50}, 10);
    s.move(1, {51, 50}, 20); // back below the slop: it goes on
    s.up(1, {52, 53}, 30);
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Changed, State::Ended}));
    EXPECT_EQ(s.pan.locations, (Points{{40, 40}, {31, 40}, {32, 43}}));
    EXPECT_EQ(s.recognizer->state(), State::Possible) << "ready for the next one";
}

TEST(Pan, GoesOnOutsideItsView) {
    PanScene s;
    s.down(1, {50, 50});
    s.move(1, {190, 95});
    s.move(1, {-30, -40});
    s.up(1, {-30, -40});
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Changed, State::Ended}));
    EXPECT_EQ(s.pan.locations.back(), (Point{-50, -50}));
}

TEST(Pan, OfAMouseBeginsAfterThreePoints) {
    PanScene s;
    s.down(1, {50, 50}, 0, TouchKind::Mouse);
    s.move(1, {52.9, 50});
    EXPECT_EQ(s.pan.states, States{});
    s.move(1, {53, 50});
    EXPECT_EQ(s.pan.states, States{State::Began});
}

TEST(Pan, BeginsAtTheFirstMoveWithoutASlop) {
    PanScene s;
    s.window().setTouchSlop({0, 0});
    s.down(1, {50, 50});
    EXPECT_EQ(s.pan.states, States{});
    s.move(1, {50.25, 50});
    EXPECT_EQ(s.pan.states, States{State::Began});
    EXPECT_EQ(s.pan.locations, (Points{{30.25, 40}}));
}

TEST(Pan, TakesTheSlopThatItIsGiven) {
    PanScene s;
    s.window().setTouchSlop({20, 3});
    s.down(1, {50, 50});
    s.move(1, {69, 50});
    EXPECT_EQ(s.pan.states, States{});
    s.move(1, {70, 50});
    EXPECT_EQ(s.pan.states, States{State::Began});
}

TEST(Pan, IsNoneWhenTheFingerIsLiftedBeforeTheSlop) {
    PanScene s;
    s.down(1, {50, 50});
    s.move(1, {55, 50});
    s.up(1, {55, 50});
    EXPECT_EQ(s.pan.states, States{});
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.pan.states, States{State::Began}) << "the next one begins anew";
}

TEST(Pan, FailsWhenASecondFingerComesBeforeTheSlop) {
    PanScene s;
    s.down(1, {50, 50});
    s.down(2, {60, 60});
    EXPECT_EQ(s.recognizer->state(), State::Failed);
    s.move(1, {90, 50});
    s.up(2, {60, 60});
    s.move(1, {30, 50});
    s.up(1, {30, 50});
    EXPECT_EQ(s.pan.states, States{});
}

TEST(Pan, IsCancelledWhenASecondFingerComesLater) {
    PanScene s;
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.down(2, {60, 60});
    s.move(1, {90, 50});
    s.up(2, {60, 60});
    s.move(1, {30, 50});
    s.up(1, {30, 50});
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Cancelled}));
}

TEST(Pan, IsPossibleAgainOnceAllFingersAreUp) {
    PanScene s;
    s.down(1, {50, 50});
    s.down(2, {60, 60});
    s.up(1, {50, 50});
    s.down(3, {50, 50});
    s.up(2, {60, 60});
    s.move(3, {80, 50});
    EXPECT_EQ(s.pan.states, States{}) << "there has been a finger all the time";
    s.up(3, {80, 50});
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(s.pan.states, States{State::Began});
}

TEST(Pan, HasNoLimitOfFingersAtFirst) {
    TouchScene s;
    GestureLog log;
    const auto pan = make<PanGestureRecognizer>(
        [&log](PanGestureRecognizer& recognizer) { log.states.push_back(recognizer.state()); });
    s.root()->addGestureRecognizer(pan);
    for (int id = 0; id < 11; ++id)
        s.down(id, {50, 50});
    s.move(3, {70, 50});
    EXPECT_EQ(log.states, States{State::Began});
    EXPECT_EQ(pan->numberOfTouches(), 11U);
}

TEST(Pan, OfTwoFingersIsWhereTheirMiddleIsAndEndsWithTheLast) {
    TouchScene s;
    GestureLog log;
    addPan(s.root(), log, 2);
    s.down(1, {50, 50});
    s.down(2, {70, 30});
    s.move(1, {50, 70});
    s.up(2, {70, 30});
    s.move(1, {50, 80});
    s.up(1, {50, 80});
    EXPECT_EQ(log.states, (States{State::Began, State::Changed, State::Ended}));
    EXPECT_EQ(log.locations, (Points{{60, 50}, {50, 80}, {50, 80}}));
}

TEST(PanVelocity, IsThatOfTheLastTenthOfASecondBeforeTheLift) {
    PanScene s;
    s.down(1, {30, 50});
    for (int i = 1; i <= 20; ++i)
        s.move(1, {30 + i * 2.0, 50}, i * 10);
    s.up(1, {70, 50}, 200);
    EXPECT_NEAR(s.pan.velocities.back().x, 200, 1e-6);
    EXPECT_NEAR(s.pan.velocities.back().y, 0, 1e-6);
}

TEST(PanVelocity, CountsTheLiftItself) {
    PanScene s;
    s.down(1, {30, 50});
    s.move(1, {50, 50}, 50);
    s.up(1, {60, 40}, 100);
    EXPECT_NEAR(s.pan.velocities.back().x, 300, 1e-6);
    EXPECT_NEAR(s.pan.velocities.back().y, -100, 1e-6);
}

TEST(PanVelocity, IsZeroWhenTheFingerRestsBeforeTheLift) {
    PanScene s;
    s.down(1, {30, 50});
    s.move(1, {80, 50}, 50);
    s.up(1, {80, 50}, 160);
    EXPECT_EQ(s.pan.states.back(), State::Ended);
    EXPECT_EQ(s.pan.velocities.back(), (Point{}));
}

TEST(PanVelocity, IsZeroWithoutAFinger) {
    PanScene s;
    EXPECT_EQ(s.recognizer->velocityInView(*s.view), (Point{}));
    EXPECT_EQ(s.recognizer->locationInView(*s.view), (Point{}));
    EXPECT_EQ(s.recognizer->numberOfTouches(), 0U);
}
