#include "Platform/Interface/PanGestureRecognizer.h"
#include "Tests/Hosts/EmbeddedScene.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <functional>
#include <vector>

using platform::GestureState;
using platform::PanGestureRecognizer;
using platform::Point;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

using States = std::vector<GestureState>;

/// A window whose root view can be dragged.
struct TouchedScene : EmbeddedScene {
    TouchedScene() {
        controller().view()->addGestureRecognizer(
            platform::make<PanGestureRecognizer>([this](PanGestureRecognizer& pan) {
                states.push_back(pan.state());
                if (during)
                    during();
            }));
        host().appear();
        turn();
    }
    ~TouchedScene() { host().cancelTouches(); } // while the views are alive
    TouchedScene(const TouchedScene&) = delete;
    TouchedScene& operator=(const TouchedScene&) = delete;
    void touch(TouchPhase phase, Point place, TouchKind kind = TouchKind::Finger) {
        host().touch({phase, 1, place, kind, host().now()});
    }

    States states;
    std::function<void()> during;
};

} // namespace

TEST(EmbeddedHostTouch, ActsInsideTheCall) {
    TouchedScene s;
    s.touch(TouchPhase::Down, {1, 1});
    s.touch(TouchPhase::Move, {12, 1});
    EXPECT_EQ(s.states, States{GestureState::Began});
    s.touch(TouchPhase::Up, {12, 1});
    EXPECT_EQ(s.states, (States{GestureState::Began, GestureState::Ended}));
}

TEST(EmbeddedHostTouch, HasAPassAtTheNextInstantWhenItChangesSomething) {
    TouchedScene s;
    s.during = [&] { s.controller().view()->setNeedsDisplay(); };
    s.touch(TouchPhase::Down, {1, 1});
    EXPECT_FALSE(s.ask().nextDeadline);
    s.touch(TouchPhase::Move, {12, 1});
    EXPECT_EQ(s.ask().nextDeadline, frame(1));
    s.jumpTo(frame(1));
    EXPECT_TRUE(s.turn());
}

TEST(EmbeddedHostTouch, IsAMouseWhenItSaysSo) {
    TouchedScene s;
    s.touch(TouchPhase::Down, {1, 1}, TouchKind::Mouse);
    s.touch(TouchPhase::Move, {4, 1}, TouchKind::Mouse);
    EXPECT_EQ(s.states, States{GestureState::Began});
}

TEST(EmbeddedHostTouch, IsCancelledWithAllOthers) {
    TouchedScene s;
    s.touch(TouchPhase::Down, {1, 1});
    s.touch(TouchPhase::Move, {12, 1});
    s.host().cancelTouches();
    s.touch(TouchPhase::Move, {14, 1});
    s.touch(TouchPhase::Up, {14, 1});
    EXPECT_EQ(s.states, (States{GestureState::Began, GestureState::Cancelled}));
}

TEST(EmbeddedHostTouch, IsCancelledWhenTheViewDisappears) {
    TouchedScene s;
    s.touch(TouchPhase::Down, {1, 1});
    s.touch(TouchPhase::Move, {12, 1});
    s.host().disappear();
    EXPECT_EQ(s.states, (States{GestureState::Began, GestureState::Cancelled}));
    s.touch(TouchPhase::Down, {1, 1});
    s.touch(TouchPhase::Move, {12, 1});
    EXPECT_EQ(s.states.size(), 2U);
}

TEST(EmbeddedHostTouch, IsNothingWithoutAController) {
    TouchedScene s;
    s.host().setRootViewController(nullptr);
    s.touch(TouchPhase::Down, {1, 1});
    s.touch(TouchPhase::Move, {12, 1});
    s.host().cancelTouches();
    EXPECT_EQ(s.states, States{});
}

TEST(EmbeddedHostTouch, LeavesTheGLStateAsATurnDoes) {
    TouchedScene s;
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    const auto spoil = [&] {
        glEnable(GL_BLEND);
        glBindBuffer(GL_ARRAY_BUFFER, buffer);
    };
    const auto isLeft = [] {
        GLint bound = -1;
        glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &bound);
        return bound == 0 && glIsEnabled(GL_BLEND) == GL_FALSE;
    };
    s.during = spoil;
    s.touch(TouchPhase::Down, {1, 1});
    s.touch(TouchPhase::Move, {12, 1});
    EXPECT_TRUE(isLeft());
    s.host().cancelTouches();
    EXPECT_TRUE(isLeft());
    EXPECT_EQ(s.states.size(), 2U);
    glDeleteBuffers(1, &buffer);
}
