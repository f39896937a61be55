#include "Tests/Platform/Interface/TouchScene.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

using State = GestureState;
using States = TouchScene::States;

/// A view that fills the window and can be dragged, pinched and tapped.
struct ArenaScene : TouchScene {
    GestureLog pan;
    GestureLog pinch;
    GestureLog tap;
    std::shared_ptr<PanGestureRecognizer> panRecognizer = addPan(root(), pan);
    std::shared_ptr<PinchGestureRecognizer> pinchRecognizer = addPinch(root(), pinch);
    std::shared_ptr<TapGestureRecognizer> tapRecognizer = addTap(root(), tap);

    void drag() {
        down(1, {50, 50});
        move(1, {70, 50});
    }
    /// Two fingers that move, and are lifted.
    void pinchAnew() {
        down(7, {50, 50});
        down(8, {90, 50});
        move(8, {95, 50});
        up(7, {50, 50});
        up(8, {95, 50});
    }
};

} // namespace

TEST(GestureArena, FailsTheOthersOnceOneRecognises) {
    ArenaScene s;
    s.drag();
    EXPECT_EQ(s.panRecognizer->state(), State::Began);
    EXPECT_EQ(s.pinchRecognizer->state(), State::Failed);
    EXPECT_EQ(s.tapRecognizer->state(), State::Failed);
}

TEST(GestureArena, FailsTheOthersBeforeTheActionIsTold) {
    ArenaScene s;
    States seen;
    s.pan.during = [&](State) { seen.push_back(s.pinchRecognizer->state()); };
    s.drag();
    EXPECT_EQ(seen, States{State::Failed});
}

TEST(GestureArena, TellsNoActionOfAFailure) {
    ArenaScene s;
    s.drag();
    s.up(1, {70, 50});
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Ended}));
    EXPECT_EQ(s.pinch.states, States{});
    EXPECT_EQ(s.tap.states, States{});
}

TEST(GestureArena, MakesEverythingPossibleOnceTheLastFingerIsUp) {
    ArenaScene s;
    s.drag();
    s.up(1, {70, 50});
    EXPECT_EQ(s.panRecognizer->state(), State::Possible);
    EXPECT_EQ(s.pinchRecognizer->state(), State::Possible);
    EXPECT_EQ(s.tapRecognizer->state(), State::Possible);
    EXPECT_EQ(s.panRecognizer->numberOfTouches(), 0U);
    s.pinchAnew();
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Ended}));
}

TEST(GestureArena, GivesTheGestureToTheRecogniserThatWasAddedFirst) {
    TouchScene s;
    GestureLog first;
    GestureLog second;
    addPan(s.root(), first);
    addPan(s.root(), second);
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.up(1, {70, 50});
    EXPECT_EQ(first.states, (States{State::Began, State::Ended}));
    EXPECT_EQ(second.states, States{});
}

TEST(GestureArena, LeavesTheRecognisersOfOtherViewsAlone) {
    TouchScene s;
    GestureLog left;
    GestureLog right;
    addPan(s.add({{0, 0}, {100, 100}}), left);
    addPan(s.add({{100, 0}, {100, 100}}), right);
    s.down(1, {50, 50});
    s.down(2, {150, 50});
    s.move(1, {70, 50});
    s.move(2, {170, 50});
    s.up(1, {70, 50});
    s.move(2, {180, 50});
    s.up(2, {180, 50});
    EXPECT_EQ(left.states, (States{State::Began, State::Ended}));
    EXPECT_EQ(right.states, (States{State::Began, State::Changed, State::Ended}));
}

TEST(GestureArena, CancelsWhatRunsWithTheTouches) {
    ArenaScene s;
    s.drag();
    s.window().cancelTouches();
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Cancelled}));
    s.move(1, {90, 50});
    s.up(1, {90, 50});
    EXPECT_EQ(s.pan.states.size(), 2U);
    s.pinchAnew();
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Ended}));
}

TEST(GestureArena, KnowsWhereACancelledGestureWas) {
    ArenaScene s;
    s.drag();
    s.window().cancelTouches();
    EXPECT_EQ(s.pan.locations.back(), (Point{70, 50}));
}

TEST(GestureArena, MayLoseItsTouchesInsideAnAction) {
    ArenaScene s;
    s.pan.during = [&](State state) {
        if (state == State::Began)
            s.window().cancelTouches();
    };
    s.drag();
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Cancelled}));
    s.move(1, {90, 50});
    s.up(1, {90, 50});
    EXPECT_EQ(s.pan.states.size(), 2U);
    s.pinchAnew();
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Ended}));
}

TEST(GestureArena, MayLoseItsTouchesInsideTheActionOfACancel) {
    ArenaScene s;
    s.pan.during = [&](State state) {
        if (state == State::Cancelled)
            s.window().cancelTouches();
    };
    s.drag();
    s.window().cancelTouches();
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Cancelled}));
}

TEST(GestureArena, MayLoseItsTouchesInsideTheActionOfALift) {
    ArenaScene s;
    s.tap.during = [&](State) { s.window().cancelTouches(); };
    s.down(1, {50, 50});
    s.up(1, {50, 50}, 10);
    EXPECT_EQ(s.tap.states, States{State::Ended});
    s.pinchAnew();
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Ended}));
}

TEST(GestureArena, MayHideItsViewInsideAnAction) {
    TouchScene s;
    const auto view = s.add({{0, 0}, {100, 100}});
    GestureLog pan;
    addPan(view, pan);
    pan.during = [&](State state) {
        if (state == State::Began)
            view->setHidden(true);
    };
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    s.move(1, {80, 50});
    s.move(1, {90, 50});
    EXPECT_EQ(pan.states, (States{State::Began, State::Cancelled}));
}

TEST(GestureArena, MayDestroyItsViewInsideAnAction) {
    TouchScene s;
    auto view = s.add({{0, 0}, {100, 100}});
    GestureLog pan;
    GestureLog tap;
    addPan(view, pan);
    addTap(view, tap);
    const std::weak_ptr<View> watched = view;
    view.reset();
    pan.during = [&](State) { s.root()->subviews().front()->removeFromSuperview(); };
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_TRUE(watched.expired());
    s.move(1, {80, 50});
    s.up(1, {80, 50});
    EXPECT_EQ(pan.states, States{State::Began});
}

TEST(GestureArena, MayLeaveTheWindowInsideAnAction) {
    ArenaScene s;
    s.pan.during = [&](State state) {
        if (state == State::Began)
            s.window().setRootViewController(nullptr);
    };
    s.drag();
    s.move(1, {80, 50});
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Cancelled}));
}

TEST(GestureRecognizers, KnowTheirView) {
    TouchScene s;
    GestureLog log;
    const auto view = s.add({{0, 0}, {100, 100}});
    const auto pan = make<PanGestureRecognizer>([](PanGestureRecognizer&) {});
    EXPECT_EQ(pan->view(), nullptr);
    view->addGestureRecognizer(pan);
    EXPECT_EQ(pan->view(), view);
    EXPECT_EQ(view->gestureRecognizers(), (GestureArena::Recognizers{pan}));
    view->removeGestureRecognizer(pan);
    EXPECT_EQ(pan->view(), nullptr);
    EXPECT_TRUE(view->gestureRecognizers().empty());
}

TEST(GestureRecognizers, MoveToTheViewThatTheyAreAddedTo) {
    TouchScene s;
    GestureLog log;
    const auto one = s.add({{0, 0}, {100, 100}});
    const auto other = s.add({{100, 0}, {100, 100}});
    const auto pan = addPan(one, log);
    other->addGestureRecognizer(pan);
    EXPECT_TRUE(one->gestureRecognizers().empty());
    EXPECT_EQ(pan->view(), other);
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(log.states, States{});
    s.down(2, {150, 50});
    s.move(2, {170, 50});
    EXPECT_EQ(log.states, States{State::Began});
}

TEST(GestureRecognizers, AreNotTakenFromAViewThatTheyAreNotOf) {
    TouchScene s;
    GestureLog log;
    const auto view = s.add({{0, 0}, {100, 100}});
    const auto pan = addPan(view, log);
    s.root()->removeGestureRecognizer(pan);
    EXPECT_EQ(pan->view(), view);
}

TEST(GestureRecognizers, MayBeRemovedByTheViewsOwnList) {
    ArenaScene s;
    s.root()->removeGestureRecognizer(s.root()->gestureRecognizers().front());
    EXPECT_EQ(s.panRecognizer->view(), nullptr);
    EXPECT_EQ(s.root()->gestureRecognizers().size(), 2U);
}

TEST(GestureRecognizers, AreHeldByTheirView) {
    TouchScene s;
    GestureLog log;
    auto view = s.add({{0, 0}, {100, 100}});
    const std::weak_ptr<GestureRecognizer> pan = addPan(view, log);
    EXPECT_FALSE(pan.expired());
    view->removeFromSuperview();
    view.reset();
    EXPECT_TRUE(pan.expired());
}

TEST(GestureRecognizers, AreCancelledWhenTheyAreRemovedWhileRunning) {
    ArenaScene s;
    s.drag();
    s.root()->removeGestureRecognizer(s.panRecognizer);
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Cancelled}));
    EXPECT_EQ(s.panRecognizer->state(), State::Possible);
    s.move(1, {90, 50});
    EXPECT_EQ(s.pan.states.size(), 2U);
}

TEST(GestureRecognizers, MayBeRemovedInsideTheirOwnAction) {
    ArenaScene s;
    s.pan.during = [&](State state) {
        if (state == State::Began)
            s.root()->removeGestureRecognizer(s.panRecognizer);
    };
    s.drag();
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Cancelled}));
    s.down(2, {90, 50});
    s.move(2, {95, 50});
    EXPECT_EQ(s.pinch.states, States{}) << "it recognised, so the others stay failed";
    s.up(1, {70, 50});
    s.up(2, {95, 50});
    s.pinchAnew();
    EXPECT_EQ(s.pinch.states, (States{State::Began, State::Ended}));
}

TEST(GestureRecognizers, MayBeReleasedInsideTheirOwnAction) {
    TouchScene s;
    int calls = 0;
    auto pan = make<PanGestureRecognizer>([&](PanGestureRecognizer& recognizer) {
        ++calls;
        if (const auto view = recognizer.view())
            view->removeGestureRecognizer(view->gestureRecognizers().front());
    });
    const std::weak_ptr<GestureRecognizer> watched = pan;
    s.root()->addGestureRecognizer(pan);
    pan.reset();
    s.down(1, {50, 50});
    s.move(1, {70, 50});
    EXPECT_EQ(calls, 2) << "it began and was cancelled";
    EXPECT_TRUE(watched.expired());
}

TEST(GestureRecognizers, MayRemoveAnotherInsideAnAction) {
    ArenaScene s;
    s.pan.during = [&](State) { s.root()->removeGestureRecognizer(s.tapRecognizer); };
    s.drag();
    s.up(1, {70, 50});
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Ended}));
    s.down(1, {50, 50});
    s.up(1, {50, 50}, 10);
    EXPECT_EQ(s.tap.states, States{});
}

TEST(GestureRecognizers, TakeNoPartInTouchesThatBeganBeforeThem) {
    TouchScene s;
    GestureLog late;
    s.down(1, {50, 50});
    addPan(s.root(), late);
    s.move(1, {90, 50});
    EXPECT_EQ(late.states, States{});
    s.up(1, {90, 50});
    s.down(1, {50, 50});
    s.move(1, {90, 50});
    EXPECT_EQ(late.states, States{State::Began});
}

TEST(GestureRecognizers, MayBeAddedInsideAnAction) {
    ArenaScene s;
    GestureLog late;
    s.pan.during = [&](State state) {
        if (state == State::Began)
            addPan(s.root(), late);
    };
    s.drag();
    s.move(1, {90, 50});
    s.up(1, {90, 50});
    EXPECT_EQ(s.pan.states, (States{State::Began, State::Changed, State::Ended}));
    EXPECT_EQ(late.states, States{});
}
