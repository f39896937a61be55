#include "Tests/Hosts/SDL/SDLInputScene.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace std::chrono_literals;
using platform::Instant;
using platform::Point;

namespace {

/// The distance between the last places of the two fingers.
double lastDistance(const SDLInputScene& s) {
    const auto count = s.touches.size();
    const Point one = s.touches.at(count - 2).location;
    const Point other = s.touches.at(count - 1).location;
    EXPECT_EQ(one.y, other.y) << "level";
    return other.x - one.x;
}

} // namespace

TEST(Wheel, IsTwoFingersAroundThePointer) {
    SDLInputScene s;
    s.moveMouse(60, 30);
    s.turnWheel(1);
    ASSERT_EQ(phasesOf(s.touches), "ddmmm");
    EXPECT_NE(s.touches[0].id, s.touches[1].id);
    EXPECT_LT(s.touches[0].id, 0) << "no finger's, nor the mouse's";
    EXPECT_LT(s.touches[1].id, 0);
    const double start = s.touches[1].location.x - s.touches[0].location.x;
    EXPECT_GT(start, 1);
    EXPECT_LT(start, 20);
    EXPECT_EQ(s.touches[2].location, s.touches[0].location) << "what the pinch measures against";
    EXPECT_NEAR(lastDistance(s), start * 1.1, 1e-9);
    for (std::size_t i = 0; i < 5; i += 3) {
        EXPECT_EQ((s.touches[i].location.x + s.touches[i + 1].location.x) / 2, 60);
        EXPECT_EQ(s.touches[i].location.y, 30);
    }
}

TEST(Wheel, ZoomsByATenthATick) {
    SDLInputScene s;
    s.turnWheel(1);
    EXPECT_NEAR(s.camera().scale(), 1.1, 1e-9);
    s.turnWheel(3);
    EXPECT_NEAR(s.camera().scale(), std::pow(1.1, 4), 1e-9);
    s.turnWheel(-4);
    EXPECT_NEAR(s.camera().scale(), 1, 1e-9);
    s.turnWheel(-2);
    EXPECT_NEAR(s.camera().scale(), std::pow(1.1, -2), 1e-9);
    EXPECT_EQ(phasesOf(s.touches), "ddmmmmmmmmm") << "all of it one pinch";
}

TEST(Wheel, ZoomsByPartsOfATick) {
    SDLInputScene s;
    s.turnWheel(0.25F);
    EXPECT_NEAR(s.camera().scale(), std::pow(1.1, 0.25), 1e-9);
}

TEST(Wheel, MayCountWholeTicksOnly) {
    SDLInputScene s;
    SDL_Event event = SDLInputScene::wheelEvent(2);
    event.wheel.preciseY = 0;
    s.dispatch(event);
    EXPECT_NEAR(s.camera().scale(), std::pow(1.1, 2), 1e-9);
}

TEST(Wheel, IsTurnedRoundWhereTheSystemTurnsItRound) {
    SDLInputScene s;
    s.turnWheel(-1, SDL_MOUSEWHEEL_FLIPPED);
    EXPECT_NEAR(s.camera().scale(), 1.1, 1e-9);
}

TEST(Wheel, DoesNothingSideways) {
    SDLInputScene s;
    SDL_Event event = SDLInputScene::wheelEvent(0);
    event.wheel.x = 3;
    event.wheel.preciseX = 3;
    s.dispatch(event);
    EXPECT_EQ(phasesOf(s.touches), "");
}

TEST(Wheel, OfAnotherWindowIsNotOurs) {
    SDLInputScene s;
    SDL_Event event = SDLInputScene::wheelEvent(1);
    event.wheel.windowID = SDLInputScene::kWindow + 1;
    s.dispatch(event);
    event.wheel.windowID = SDLInputScene::kWindow;
    event.wheel.which = SDL_TOUCH_MOUSEID;
    s.dispatch(event);
    EXPECT_EQ(phasesOf(s.touches), "");
}

TEST(Wheel, LiftsItsFingersALittleAfterTheLastTick) {
    SDLInputScene s;
    s.turnWheel(1);
    s.advance(100ms);
    s.turnWheel(1);
    s.advance(149ms);
    EXPECT_EQ(phasesOf(s.touches), "ddmmmmm");
    s.advance(1ms);
    ASSERT_EQ(phasesOf(s.touches), "ddmmmmmuu");
    EXPECT_EQ(s.touches.back().time, Instant(250ms));
    EXPECT_EQ(s.touches[8].location, s.touches[6].location);
    s.turnWheel(1);
    EXPECT_EQ(phasesOf(s.touches), "ddmmmmmuuddmmm") << "another pinch";
    EXPECT_NEAR(s.camera().scale(), std::pow(1.1, 3), 1e-9) << "which goes on";
}

TEST(Wheel, SpringsBackByItself) {
    SDLInputScene s;
    for (int i = 0; i < 30; ++i)
        s.turnWheel(1);
    EXPECT_NEAR(s.camera().scale(), 2.9, 1e-6);
    s.advance(140ms);
    EXPECT_NEAR(s.camera().scale(), 2.9, 1e-6);
    s.advance(1s);
    EXPECT_LE(s.camera().scale(), s.camera().maxScale());
    EXPECT_GT(s.camera().scale(), 1.8);
}

TEST(Wheel, AnswersAtOnceWhenItIsTurnedBackFromFarBeyondTheLimit) {
    SDLInputScene s;
    for (int i = 0; i < 500; ++i)
        s.turnWheel(1);
    for (int i = 0; i < 25; ++i)
        s.turnWheel(-1);
    EXPECT_LT(s.camera().scale(), 1.9);
    for (int i = 0; i < 500; ++i)
        s.turnWheel(-1);
    EXPECT_EQ(s.camera().scale(), s.camera().minAnimScale());
    for (int i = 0; i < 25; ++i)
        s.turnWheel(1);
    EXPECT_GT(s.camera().scale(), 0.7);
}

TEST(Wheel, SetsItsFingersDownInsideTheWindow) {
    for (const Point pointer : {Point{0, 0}, Point{159, 89}, Point{-5, 200}, Point{400, 45}}) {
        SDLInputScene s;
        s.moveMouse(static_cast<int>(pointer.x), static_cast<int>(pointer.y));
        s.turnWheel(1);
        for (const std::size_t i : {0U, 1U}) {
            const Point place = s.touches.at(i).location;
            EXPECT_TRUE(place.x >= 0 && place.x < 160 && place.y >= 0 && place.y < 90)
                << place.x << ", " << place.y;
        }
        EXPECT_NEAR(s.camera().scale(), 1.1, 1e-9);
    }
}

TEST(Wheel, IsInTheMiddleWhileNobodyKnowsWhereThePointerIs) {
    SDLInputScene s;
    s.turnWheel(1);
    EXPECT_EQ((s.touches[0].location.x + s.touches[1].location.x) / 2, 80);
    EXPECT_EQ(s.touches[0].location.y, 45);
}

TEST(Wheel, WaitsWhileAFingerOrTheMouseIsDown) {
    SDLInputScene s;
    s.pressMouse(80, 45);
    s.turnWheel(1);
    s.releaseMouse(80, 45);
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.turnWheel(1);
    EXPECT_EQ(phasesOf(s.touches), "dud");
    EXPECT_EQ(s.camera().scale(), 1.0);
}

TEST(Wheel, MakesRoomForTheMouse) {
    SDLInputScene s;
    s.turnWheel(1);
    s.pressMouse(80, 45);
    s.moveMouse(70, 45);
    s.moveMouse(60, 45);
    EXPECT_EQ(phasesOf(s.touches), "ddmmmuudmm");
    EXPECT_NE(s.camera().rotationMatrix().m[1], 0.0F) << "it drags";
}

TEST(Wheel, MakesRoomForAFinger) {
    SDLInputScene s;
    s.turnWheel(1);
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.finger(SDL_FINGERMOTION, 1, 0.25F, 0.5F);
    s.finger(SDL_FINGERMOTION, 1, 0.2F, 0.5F);
    EXPECT_EQ(phasesOf(s.touches), "ddmmmuudmm");
    EXPECT_NE(s.camera().rotationMatrix().m[1], 0.0F);
}

TEST(Wheel, IsLiftedWhenTheOthersLoseTheirTouches) {
    for (const auto kind : {SDL_WINDOWEVENT_FOCUS_LOST, SDL_WINDOWEVENT_LEAVE}) {
        SDLInputScene s;
        s.turnWheel(1);
        s.window(kind);
        EXPECT_EQ(phasesOf(s.touches), "ddmmmuu");
        s.advance(1s);
        EXPECT_EQ(phasesOf(s.touches), "ddmmmuu") << "and not once more";
        EXPECT_NEAR(s.camera().scale(), 1.1, 1e-9);
    }
}

TEST(Wheel, RestsAfterTheLift) {
    SDLInputScene s;
    s.turnWheel(1);
    s.advance(1s);
    EXPECT_FALSE(s.player().embedded().runDueWork().nextDeadline);
}

TEST(WheelPinch, IgnoresFactorsThatAreNone) {
    SDLInputScene s;
    std::vector<platform::TouchEvent> told;
    zanto::WheelPinch pinch([&](const platform::TouchEvent& event) { told.push_back(event); });
    for (const double factor : {0.0, -2.0, std::nan(""), HUGE_VAL})
        pinch.spread(factor, {80, 45}, {160, 90}, s.now());
    EXPECT_EQ(told.size(), 0U);
    EXPECT_FALSE(pinch.isDown());
}

TEST(WheelPinch, MayGoBeforeItsFingersAreLifted) {
    SDLInputScene s;
    int told = 0;
    {
        zanto::WheelPinch pinch([&](const platform::TouchEvent&) { ++told; });
        pinch.spread(1.1, {80, 45}, {160, 90}, s.now());
    }
    const int before = told;
    s.advance(1s);
    EXPECT_EQ(told, before);
}

TEST(TrackPad, ZoomsAroundThePointer) {
    SDLInputScene s;
    s.moveMouse(60, 30);
    s.pinchTrackPad(0.125F);
    EXPECT_GT(s.camera().scale(), 1.2);
    EXPECT_LT(s.camera().scale(), 1.9);
    EXPECT_EQ(s.touches.at(0).location.y, 30);
    s.pinchTrackPad(-0.125F);
    EXPECT_NEAR(s.camera().scale(), 1, 1e-6);
    s.advance(1s);
    EXPECT_EQ(phasesOf(s.touches), "ddmmmmmuu");
}

TEST(TrackPad, DoesNothingByTrembling) {
    SDLInputScene s;
    s.moveMouse(60, 30);
    s.pinchTrackPad(0.001F);
    EXPECT_EQ(phasesOf(s.touches), "");
}

TEST(TrackPad, DoesNothingWhileThePointerIsElsewhere) {
    SDLInputScene s;
    s.pinchTrackPad(0.1F);
    s.moveMouse(60, 30);
    s.window(SDL_WINDOWEVENT_LEAVE);
    s.pinchTrackPad(0.1F);
    EXPECT_EQ(phasesOf(s.touches), "");
}

TEST(TrackPad, IsNoTouchScreen) {
    SDLInputScene s;
    s.moveMouse(60, 30);
    s.pinchTrackPad(0.1F, SDLInputScene::kScreen);
    EXPECT_EQ(phasesOf(s.touches), "");
}
