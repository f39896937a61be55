#include "Tests/Hosts/SDL/SDLInputScene.h"

#include <gtest/gtest.h>

#include <utility>

using namespace std::chrono_literals;
using platform::Instant;
using platform::Point;
using platform::TouchKind;

TEST(MouseTouch, IsTheLeftButtonFromDownToUp) {
    SDLInputScene s;
    s.pressMouse(10, 20);
    s.moveMouse(30, 40);
    s.releaseMouse(31, 41);
    ASSERT_EQ(phasesOf(s.touches), "dmu");
    EXPECT_EQ(s.touches[0].location, (Point{10, 20}));
    EXPECT_EQ(s.touches[1].location, (Point{30, 40}));
    EXPECT_EQ(s.touches[2].location, (Point{31, 41}));
    for (const auto& touch : s.touches) {
        EXPECT_EQ(touch.kind, TouchKind::Mouse);
        EXPECT_EQ(touch.id, s.touches[0].id);
    }
}

TEST(MouseTouch, IsNoneWhileThePointerOnlyMoves) {
    SDLInputScene s;
    s.moveMouse(10, 20);
    s.releaseMouse(10, 20);
    s.moveMouse(30, 40);
    EXPECT_EQ(phasesOf(s.touches), "");
}

TEST(MouseTouch, IsNoneOfOtherButtons) {
    SDLInputScene s;
    s.pressMouse(10, 20, SDL_BUTTON_RIGHT);
    s.pressMouse(10, 20, SDL_BUTTON_MIDDLE);
    s.moveMouse(30, 40);
    EXPECT_EQ(phasesOf(s.touches), "");
    s.pressMouse(10, 20);
    s.releaseMouse(10, 20, SDL_BUTTON_RIGHT);
    s.moveMouse(30, 40);
    EXPECT_EQ(phasesOf(s.touches), "dm");
}

TEST(MouseTouch, SetsNothingCoastingWhenAWholeDragIsCollectedAtOnce) {
    SDLInputScene s;
    s.advance(1s);
    s.dispatchTogether({SDLInputScene::buttonEvent(SDL_MOUSEBUTTONDOWN, 10, 20),
                        SDLInputScene::motionEvent(60, 20), SDLInputScene::motionEvent(110, 20),
                        SDLInputScene::buttonEvent(SDL_MOUSEBUTTONUP, 110, 20)});
    ASSERT_EQ(phasesOf(s.touches), "dmmu");
    EXPECT_EQ(s.touches[0].time, s.touches[3].time);
    EXPECT_EQ(s.camera().panVelocity(), Point{});
    const GLKMatrix4 dragged = s.camera().rotationMatrix();
    s.advance(1s);
    EXPECT_EQ(s.camera().rotationMatrix().m[0], dragged.m[0]);
}

TEST(MouseTouch, IsNoneOfAnotherWindow) {
    SDLInputScene s;
    SDL_Event press = SDLInputScene::buttonEvent(SDL_MOUSEBUTTONDOWN, 10, 20);
    press.button.windowID = SDLInputScene::kWindow + 1;
    s.dispatch(press);
    s.pressMouse(10, 20);
    SDL_Event motion = SDLInputScene::motionEvent(30, 40);
    motion.motion.windowID = SDLInputScene::kWindow + 1;
    s.dispatch(motion);
    EXPECT_EQ(phasesOf(s.touches), "d");
}

TEST(MouseTouch, IsNoneThatSDLMakesOfAFinger) {
    SDLInputScene s;
    SDL_Event press = SDLInputScene::buttonEvent(SDL_MOUSEBUTTONDOWN, 10, 20);
    press.button.which = SDL_TOUCH_MOUSEID;
    s.dispatch(press);
    EXPECT_EQ(phasesOf(s.touches), "");
    s.pressMouse(10, 20);
    SDL_Event motion = SDLInputScene::motionEvent(30, 40);
    motion.motion.which = SDL_TOUCH_MOUSEID;
    s.dispatch(motion);
    EXPECT_EQ(phasesOf(s.touches), "d");
    EXPECT_STREQ(SDL_GetHint(SDL_HINT_TOUCH_MOUSE_EVENTS), "0");
    EXPECT_STREQ(SDL_GetHint(SDL_HINT_MOUSE_TOUCH_EVENTS), "0");
}

TEST(FingerTouch, IsInThePointsOfTheWindow) {
    SDLInputScene s;
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.finger(SDL_FINGERMOTION, 1, 0.25F, 1);
    s.finger(SDL_FINGERUP, 1, 0, 0);
    ASSERT_EQ(phasesOf(s.touches), "dmu");
    EXPECT_EQ(s.touches[0].location, (Point{80, 45}));
    EXPECT_EQ(s.touches[1].location, (Point{40, 90}));
    EXPECT_EQ(s.touches[2].location, (Point{0, 0}));
    EXPECT_EQ(s.touches[0].kind, TouchKind::Finger);
}

TEST(FingerTouch, FollowsTheWindowsSize) {
    SDLInputScene s;
    s.input().setWindowSize({320, 180});
    s.finger(SDL_FINGERDOWN, 1, 0.25F, 0.25F);
    EXPECT_EQ(s.touches.at(0).location, (Point{80, 45}));
}

TEST(FingerTouch, HasAnIdOfItsOwnAmongAllThatAreDown) {
    SDLInputScene s;
    s.pressMouse(10, 20);
    s.finger(SDL_FINGERDOWN, 0, 0.5F, 0.5F);
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.finger(SDL_FINGERDOWN, 0, 0.5F, 0.5F, SDLInputScene::kOtherScreen);
    ASSERT_EQ(phasesOf(s.touches), "dddd");
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(s.touches[i].id, s.touches[j].id);
    }
    s.finger(SDL_FINGERMOTION, 0, 0.6F, 0.5F, SDLInputScene::kOtherScreen);
    EXPECT_EQ(s.touches.back().id, s.touches[3].id);
}

TEST(FingerTouch, HasTheSameIdEveryTime) {
    SDLInputScene s;
    for (const SDL_FingerID id : {5, 77, 123456}) {
        s.finger(SDL_FINGERDOWN, id, 0.5F, 0.5F);
        s.finger(SDL_FINGERUP, id, 0.5F, 0.5F);
    }
    ASSERT_EQ(phasesOf(s.touches), "dududu");
    for (const auto& touch : s.touches)
        EXPECT_EQ(touch.id, 1) << "the least that is free";
}

TEST(FingerTouch, IsNoneOfATrackPad) {
    SDLInputScene s;
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F, SDLInputScene::kTrackPad);
    s.finger(SDL_FINGERMOTION, 1, 0.6F, 0.5F, SDLInputScene::kTrackPad);
    EXPECT_EQ(phasesOf(s.touches), "");
}

TEST(FingerTouch, IsNoneThatSDLMakesOfTheMouse) {
    SDLInputScene s;
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F, SDL_MOUSE_TOUCHID);
    EXPECT_EQ(phasesOf(s.touches), "");
}

TEST(FingerTouch, IsNoneOfAnotherWindow) {
    SDLInputScene s;
    SDL_Event event{};
    event.type = SDL_FINGERDOWN;
    event.tfinger.windowID = SDLInputScene::kWindow + 1;
    s.dispatch(event);
    EXPECT_EQ(phasesOf(s.touches), "");
    event.tfinger.windowID = 0; // where the system does not say
    s.dispatch(event);
    EXPECT_EQ(phasesOf(s.touches), "d");
}

TEST(FingerTouch, IsIgnoredWhenItIsNotDown) {
    SDLInputScene s;
    s.finger(SDL_FINGERMOTION, 1, 0.5F, 0.5F);
    s.finger(SDL_FINGERUP, 1, 0.5F, 0.5F);
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.finger(SDL_FINGERDOWN, 1, 0.6F, 0.5F);
    EXPECT_EQ(phasesOf(s.touches), "d");
}

TEST(TouchTimes, AreThoseOfTheEvents) {
    SDLInputScene s;
    s.advance(1s);
    s.dispatch(SDLInputScene::buttonEvent(SDL_MOUSEBUTTONDOWN, 10, 20), 40);
    s.dispatch(SDLInputScene::motionEvent(30, 20), 15);
    s.dispatch(SDLInputScene::motionEvent(31, 20), 25); // out of order
    s.dispatch(SDLInputScene::buttonEvent(SDL_MOUSEBUTTONUP, 30, 20), 0);
    ASSERT_EQ(phasesOf(s.touches), "dmmu");
    EXPECT_EQ(s.touches[0].time, Instant(960ms));
    EXPECT_EQ(s.touches[1].time, Instant(985ms));
    EXPECT_EQ(s.touches[2].time, Instant(985ms));
    EXPECT_EQ(s.touches[3].time, Instant(1s));
}

TEST(LostTouches, AreCancelledOneByOneWithTheFocus) {
    for (const auto kind :
         {SDL_WINDOWEVENT_FOCUS_LOST, SDL_WINDOWEVENT_HIDDEN, SDL_WINDOWEVENT_MINIMIZED}) {
        SDLInputScene s;
        s.pressMouse(10, 20);
        s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
        s.finger(SDL_FINGERMOTION, 1, 0.25F, 0.5F);
        s.window(kind);
        ASSERT_EQ(phasesOf(s.touches), "ddmcc") << kind;
        EXPECT_NE(s.touches[3].id, s.touches[4].id);
        for (const std::size_t i : {3U, 4U}) {
            const bool isMouse = s.touches[i].kind == TouchKind::Mouse;
            EXPECT_EQ(s.touches[i].location, isMouse ? (Point{10, 20}) : (Point{40, 45}));
        }
        s.moveMouse(30, 20);
        s.releaseMouse(30, 20);
        s.finger(SDL_FINGERMOTION, 1, 0.5F, 0.5F);
        s.finger(SDL_FINGERUP, 1, 0.5F, 0.5F);
        EXPECT_EQ(s.touches.size(), 5U);
    }
}

TEST(LostTouches, DoNotCoast) {
    SDLInputScene s;
    s.pressMouse(80, 45);
    for (int i = 1; i <= 5; ++i) {
        s.advance(10ms);
        s.moveMouse(80 - i * 5, 45);
    }
    const GLKMatrix4 before = s.camera().rotationMatrix();
    EXPECT_NE(before.m[1], 0.0F);
    s.window(SDL_WINDOWEVENT_FOCUS_LOST);
    s.advance(1s);
    EXPECT_EQ(s.camera().rotationMatrix().m[1], before.m[1]);
}

TEST(LostTouches, OfThePointerAreThoseOfTheMouseWhenItLeaves) {
    SDLInputScene s;
    s.pressMouse(10, 20);
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.window(SDL_WINDOWEVENT_LEAVE);
    ASSERT_EQ(phasesOf(s.touches), "ddc");
    EXPECT_EQ(s.touches[2].kind, TouchKind::Mouse);
}

TEST(LostTouches, AreNotThoseOfAnotherWindow) {
    SDLInputScene s;
    s.pressMouse(10, 20);
    s.window(SDL_WINDOWEVENT_FOCUS_LOST, SDLInputScene::kWindow + 1);
    s.window(SDL_WINDOWEVENT_ENTER);
    EXPECT_EQ(phasesOf(s.touches), "d");
}

TEST(TouchListener, IsToldRightBeforeTheLibrary) {
    SDLInputScene s;
    s.pressMouse(80, 45);
    s.moveMouse(75, 45);
    GLKMatrix4 then{};
    s.input().setTouchListener(
        [&](const platform::TouchEvent&) { then = s.camera().rotationMatrix(); });
    s.moveMouse(60, 45);
    EXPECT_EQ(then.m[1], 0.0F);
    EXPECT_NE(s.camera().rotationMatrix().m[1], 0.0F);
}

TEST(TouchListener, MayReplaceItselfAndCancelWhatItIsToldOf) {
    SDLInputScene s;
    s.input().setTouchListener([&](const platform::TouchEvent& event) {
        s.touches.push_back(event);
        s.input().setTouchListener(
            [&](const platform::TouchEvent& later) { s.touches.push_back(later); });
        s.input().cancelTouches();
    });
    s.pressMouse(10, 20);
    EXPECT_EQ(phasesOf(s.touches), "dc");
    s.moveMouse(20, 20);
    EXPECT_EQ(phasesOf(s.touches), "dc");
}
