#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <vector>

using namespace std::chrono_literals;
using platform::Point;
using platform::TouchEvent;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

/// A window with a player in it, and SDL's events for it.
struct InputScene : SDLScene {
    InputScene() {
        host().setTouchListener([this](const TouchEvent& event) { touches.push_back(event); });
        show(directionPanorama(512));
    }
    void pushFinger(SDL_EventType type, SDL_FingerID id, float x, float y) const {
        SDL_Event event{};
        event.type = type;
        event.tfinger.windowID = windowId();
        event.tfinger.touchId = 1;
        event.tfinger.fingerId = id;
        event.tfinger.x = x;
        event.tfinger.y = y;
        SDL_PushEvent(&event);
    }
    void pushWheel(float ticks) const {
        SDL_Event event{};
        event.type = SDL_MOUSEWHEEL;
        event.wheel.windowID = windowId();
        event.wheel.preciseY = ticks;
        SDL_PushEvent(&event);
    }
    [[nodiscard]] ZNTInterractor& camera() { return *controller().displayView()->interractor(); }

    std::vector<TouchEvent> touches;
};

/// What the host without a window shows after touches.
platform::ImagePtr headlessPicture(const std::vector<TouchEvent>& touches) {
    HeadlessPlayer player({160, 90});
    player.show(directionPanorama(512));
    for (const TouchEvent& touch : touches)
        player.embedded().touch(touch);
    return player.snapshot();
}

} // namespace

TEST(SDLHostTouch, DragsTheCameraWithTheMouse) {
    const auto expected = headlessPicture({{TouchPhase::Down, 1, {80, 45}, TouchKind::Mouse, {}},
                                           {TouchPhase::Move, 1, {90, 45}, TouchKind::Mouse, {}},
                                           {TouchPhase::Move, 1, {130, 60}, TouchKind::Mouse, {}}});
    InputScene s;
    s.pushButton(SDL_MOUSEBUTTONDOWN, 80, 45);
    s.pushMotion(90, 45);
    s.pushMotion(130, 60);
    s.settle();
    EXPECT_TRUE(picturesMatch("sdl-drag", *s.windowPicture(), *expected));
}

TEST(SDLHostTouch, PinchesWithTwoFingers) {
    const auto expected =
        headlessPicture({{TouchPhase::Down, 1, {60, 45}, TouchKind::Finger, {}},
                         {TouchPhase::Down, 2, {100, 45}, TouchKind::Finger, {}},
                         {TouchPhase::Move, 1, {60, 45}, TouchKind::Finger, {}},
                         {TouchPhase::Move, 2, {120, 45}, TouchKind::Finger, {}}});
    InputScene s;
    s.pushFinger(SDL_FINGERDOWN, 5, 60 / 160.0F, 0.5F);
    s.pushFinger(SDL_FINGERDOWN, 9, 100 / 160.0F, 0.5F);
    s.pushFinger(SDL_FINGERMOTION, 5, 60 / 160.0F, 0.5F);
    s.pushFinger(SDL_FINGERMOTION, 9, 120 / 160.0F, 0.5F);
    s.settle();
    EXPECT_NEAR(s.camera().scale(), 1.5, 1e-5);
    EXPECT_TRUE(picturesMatch("sdl-pinch", *s.windowPicture(), *expected));
}

TEST(SDLHostTouch, CoastsAfterAFlick) {
    InputScene s;
    s.pushButton(SDL_MOUSEBUTTONDOWN, 140, 45);
    for (int x = 135; x >= 20; x -= 5)
        s.pushMotion(x, 45);
    s.act();
    const float before = s.camera().rotationMatrix().m[1];
    s.pushButton(SDL_MOUSEBUTTONUP, 10, 45);
    s.settle();
    EXPECT_NE(s.camera().rotationMatrix().m[1], before);
    EXPECT_EQ(s.touches.back().phase, TouchPhase::Up);
}

TEST(SDLHostTouch, HappenedWhenTheEventDid) {
    InputScene s;
    while (s.embedded().now() < 600ms) // so that an event can be as old as that
        s.host().turn(600ms - s.embedded().now());
    SDL_Event event{};
    event.type = SDL_MOUSEBUTTONDOWN;
    event.button.windowID = s.windowId();
    event.button.button = SDL_BUTTON_LEFT;
    event.button.state = SDL_PRESSED;
    event.button.timestamp = SDL_GetTicks() - 500;
    const auto before = s.embedded().now();
    SDL_PeepEvents(&event, 1, SDL_ADDEVENT, 0, 0); // pushing would stamp it anew
    s.act();
    const auto after = s.embedded().now();
    ASSERT_EQ(s.touches.size(), 1U);
    EXPECT_GE(s.touches[0].time, before - 502ms);
    EXPECT_LE(s.touches[0].time, after - 498ms);
}

TEST(SDLHostTouch, IsCancelledWithTheFocus) {
    InputScene s;
    s.pushButton(SDL_MOUSEBUTTONDOWN, 80, 45);
    s.pushMotion(60, 45);
    s.push(SDL_WINDOWEVENT_FOCUS_LOST);
    s.pushMotion(40, 45);
    s.settle();
    ASSERT_EQ(s.touches.size(), 3U);
    EXPECT_EQ(s.touches[2].phase, TouchPhase::Cancel);
    EXPECT_EQ(s.camera().rotationMatrix().m[1], 0.0F);
}

TEST(SDLHostTouch, HasTheSlopThatTheHostWasGiven) {
    SDLScene s({.title = "test", .size = {160, 90}, .touchSlop = {10, 30}});
    s.show(flatPicture(8, 4, 255, 0, 0));
    const auto drag = [&](double x) {
        s.embedded().touch({TouchPhase::Move, 1, {x, 45}, TouchKind::Mouse, {}});
        return s.controller().displayView()->interractor()->rotationMatrix().m[1];
    };
    s.embedded().touch({TouchPhase::Down, 1, {80, 45}, TouchKind::Mouse, {}});
    EXPECT_EQ(drag(55), 0.0F);
    EXPECT_EQ(drag(54), 0.0F);
    EXPECT_EQ(drag(50), 0.0F) << "this begins the drag";
    EXPECT_NE(drag(40), 0.0F);
}

TEST(SDLHostTouch, IsCancelledWhenTheContextIsMadeAnew) {
    InputScene s;
    s.pushButton(SDL_MOUSEBUTTONDOWN, 80, 45);
    s.pushMotion(60, 45);
    s.settle();
    ASSERT_FALSE(s.host().recreateContext().has_value());
    EXPECT_EQ(s.touches.back().phase, TouchPhase::Cancel);
    s.settle();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(SDLHostWheel, ZoomsInAndIsLiftedByItself) {
    InputScene s;
    s.pushMotion(60, 30);
    s.pushWheel(4);
    s.settle();
    EXPECT_NEAR(s.camera().scale(), 1.4641, 1e-6);
    EXPECT_EQ(s.touches.back().phase, TouchPhase::Up);
}

TEST(SDLHostWheel, SpringsBack) {
    InputScene s;
    s.pushWheel(20);
    s.act();
    EXPECT_GT(s.camera().scale(), 2.8);
    s.settle();
    EXPECT_LE(s.camera().scale(), 1.9 + 1e-6);
}

TEST(SDLHostSize, IsToldOnceTheLibraryKnows) {
    InputScene s;
    std::vector<platform::Size> sizes;
    std::vector<double> scales;
    bool libraryKnew = true;
    s.host().setSizeListener([&](platform::Size size, double scale) {
        sizes.push_back(size);
        scales.push_back(scale);
        libraryKnew = libraryKnew && platform::Screen::mainScreen().bounds().size == size;
    });
    s.push(SDL_WINDOWEVENT_EXPOSED);
    s.settle();
    EXPECT_TRUE(sizes.empty());
    SDL_SetWindowSize(s.window(), 120, 80);
    s.settle();
    EXPECT_EQ(sizes, (std::vector<platform::Size>{{120, 80}}));
    EXPECT_EQ(scales, std::vector<double>{1});
    EXPECT_TRUE(libraryKnew);
    s.pushFinger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.settle();
    EXPECT_EQ(s.touches.back().location, (Point{60, 40}));
}

TEST(SDLHostDevice, IsTurnedByTheRightButton) {
    InputScene s;
    EXPECT_FALSE(s.host().emulatesDevice());
    s.host().setEmulatesDevice(true);
    EXPECT_TRUE(s.host().emulatesDevice());
    s.controller().turnOnDeviceMotionInterraction(true);
    ASSERT_TRUE(s.controller().deviceMotionIsOn());
    s.host().turn(20ms);
    const auto before = *platform::AttitudeSource::shared().latest();
    s.pushButton(SDL_MOUSEBUTTONDOWN, 20, 45, SDL_BUTTON_RIGHT);
    s.pushMotion(120, 45);
    s.act();
    EXPECT_NE(*platform::AttitudeSource::shared().latest(), before);
    s.host().setEmulatesDevice(false);
    EXPECT_FALSE(s.host().emulatesDevice());
    EXPECT_FALSE(s.controller().deviceMotionAvailable());
}

TEST(SDLHostDevice, TakesNoTurnsWhileItRests) {
    InputScene s;
    s.host().setEmulatesDevice(true);
    s.controller().turnOnDeviceMotionInterraction(true);
    s.settle(); // 3 s of frames, in case something still moves
    const int frames = s.host().framesPresented();
    EXPECT_LE(s.turnsWithin(300ms), 3);
    EXPECT_EQ(s.host().framesPresented(), frames);
}

TEST(SDLHostDevice, GoesWithTheHost) {
    InputScene s;
    s.host().setEmulatesDevice(true);
    s.releaseController();
    s.endHost();
    EXPECT_FALSE(platform::AttitudeSource::shared().isAvailable());
}
