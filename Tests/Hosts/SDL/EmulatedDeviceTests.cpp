#include "Platform/Interface/Application.h"
#include "Platform/Motion/AttitudeMath.h"
#include "Tests/Hosts/SDL/SDLInputScene.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace std::chrono_literals;
using platform::AttitudeSource;
using platform::Vector3;

namespace {

/// Where the emulated device's back looks: x to the right of where it looked at first, y ahead, z
/// up.
Vector3 lookOf(const platform::Attitude& attitude) {
    return platform::rotate(attitude, {0, 0, -1});
}

Vector3 look() {
    return lookOf(AttitudeSource::shared().latest().value());
}

/// An emulated device that steers the camera.
struct DeviceScene : SDLInputScene {
    DeviceScene() {
        input().setEmulatesDevice(true);
        player().controller().turnOnDeviceMotionInterraction(true);
        advance(5s);
    }
    void turn(int fromX, int fromY, int toX, int toY) {
        pressMouse(fromX, fromY, SDL_BUTTON_RIGHT);
        moveMouse(toX, toY);
        releaseMouse(toX, toY, SDL_BUTTON_RIGHT);
    }
};

} // namespace

TEST(EmulatedDevice, IsOffAtFirst) {
    SDLInputScene s;
    EXPECT_FALSE(s.input().emulatedDevice().isOn());
    EXPECT_FALSE(AttitudeSource::shared().isAvailable());
    s.pressMouse(10, 10, SDL_BUTTON_RIGHT);
    s.moveMouse(100, 10);
    EXPECT_FALSE(AttitudeSource::shared().latest());
}

TEST(EmulatedDevice, IsThereAtOnceAndLooksAhead) {
    SDLInputScene s;
    s.input().setEmulatesDevice(true);
    EXPECT_TRUE(s.input().emulatedDevice().isOn());
    EXPECT_TRUE(s.player().controller().deviceMotionAvailable());
    EXPECT_NEAR(look().y, 1, 1e-9);
}

TEST(EmulatedDevice, ShowsWhatTouchesShowAtTheStart) {
    SDLInputScene s;
    s.player().controller().prepareImage(directionPanorama(512));
    s.player().controller().prepareDisplayView();
    const auto touched = s.player().snapshot();
    s.input().setEmulatesDevice(true);
    s.player().controller().turnOnDeviceMotionInterraction(true);
    s.advance(1s);
    EXPECT_TRUE(s.player().controller().deviceMotionIsOn());
    EXPECT_TRUE(picturesMatch("emulated-device", *s.player().snapshot(), *touched));
}

TEST(EmulatedDevice, LooksAQuarterTurnToTheRightAfter640Points) {
    DeviceScene s;
    s.turn(0, 10, 640, 10);
    EXPECT_NEAR(look().x, 1, 1e-9);
    EXPECT_NEAR(look().y, 0, 1e-9);
}

TEST(EmulatedDevice, LooksUpWhenItIsDraggedUp) {
    DeviceScene s;
    s.turn(10, 320, 10, 0);
    EXPECT_NEAR(look().z, std::numbers::sqrt2 / 2, 1e-9);
    EXPECT_NEAR(look().x, 0, 1e-9);
}

TEST(EmulatedDevice, AddsItsTurnsUp) {
    DeviceScene s;
    s.turn(0, 10, 320, 10);
    s.turn(500, 10, 820, 10);
    EXPECT_NEAR(look().x, 1, 1e-9);
}

TEST(EmulatedDevice, TurnsWithEveryMove) {
    DeviceScene s;
    s.pressMouse(0, 10, SDL_BUTTON_RIGHT);
    s.moveMouse(160, 10);
    EXPECT_NEAR(look().x, std::sin(std::numbers::pi / 8), 1e-9);
    s.moveMouse(320, 10);
    EXPECT_NEAR(look().x, std::sin(std::numbers::pi / 4), 1e-9);
}

TEST(EmulatedDevice, TurnsOnlyWhileTheButtonIsHeld) {
    DeviceScene s;
    s.moveMouse(100, 10);
    s.turn(0, 10, 160, 10);
    const double x = look().x;
    s.moveMouse(600, 10);
    EXPECT_EQ(look().x, x);
    s.pressMouse(600, 10, SDL_BUTTON_RIGHT);
    s.window(SDL_WINDOWEVENT_FOCUS_LOST);
    s.moveMouse(100, 10);
    EXPECT_EQ(look().x, x);
    EXPECT_EQ(phasesOf(s.touches), "") << "no touch in any of that";
}

TEST(EmulatedDevice, IsDrawnAsItTurns) {
    DeviceScene s;
    const int frames = s.player().host().framesPresented();
    s.pressMouse(0, 10, SDL_BUTTON_RIGHT);
    s.moveMouse(100, 10);
    s.advance(34ms);
    EXPECT_GT(s.player().host().framesPresented(), frames);
}

TEST(EmulatedDevice, HasFingersDrawnAndRestsAfterwards) {
    DeviceScene s;
    EXPECT_FALSE(s.player().embedded().runDueWork().nextDeadline);
    s.pressMouse(80, 45);
    s.moveMouse(70, 45);
    s.advance(1s);
    const int frames = s.player().host().framesPresented();
    s.moveMouse(40, 45);
    s.advance(100ms);
    EXPECT_GT(s.player().host().framesPresented(), frames);
    s.releaseMouse(40, 45);
    s.advance(10s);
    EXPECT_FALSE(s.player().embedded().runDueWork().nextDeadline);
}

TEST(EmulatedDevice, FollowsHowTheInterfaceIsHeld) {
    DeviceScene s;
    s.player().embedded().resize({90, 160}, 1);
    s.input().setWindowSize({90, 160});
    EXPECT_NEAR(look().y, 1, 1e-9);
    // The device's own y axis is up while it is held upright.
    const auto attitude = AttitudeSource::shared().latest().value();
    EXPECT_NEAR(platform::rotate(attitude, {0, 1, 0}).z, 1, 1e-9);
    s.player().embedded().resize({160, 90}, 1);
    s.input().setWindowSize({160, 90});
    const auto landscape = AttitudeSource::shared().latest().value();
    EXPECT_NEAR(platform::rotate(landscape, {0, 1, 0}).z, 0, 1e-9);
}

TEST(EmulatedDevice, TakesTheSourceAlongWhenItGoes) {
    SDLInputScene s;
    s.input().setEmulatesDevice(true);
    s.input().setEmulatesDevice(false);
    EXPECT_FALSE(s.input().emulatedDevice().isOn());
    EXPECT_FALSE(AttitudeSource::shared().isAvailable());
}

TEST(EmulatedDevice, LeavesASourceThatWasThereBefore) {
    SDLInputScene s;
    AttitudeSource::shared().setAvailable(true);
    s.input().setEmulatesDevice(true);
    s.input().setEmulatesDevice(true);
    s.input().setEmulatesDevice(false);
    EXPECT_TRUE(AttitudeSource::shared().isAvailable());
}

TEST(EmulatedDevice, SaysNothingOnceItIsOff) {
    DeviceScene s;
    s.pressMouse(0, 10, SDL_BUTTON_RIGHT);
    s.input().setEmulatesDevice(false);
    const auto before = AttitudeSource::shared().latest();
    s.moveMouse(100, 10);
    s.input().setWindowSize({90, 160});
    s.finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    s.advance(1s);
    EXPECT_EQ(AttitudeSource::shared().latest(), before);
    EXPECT_FALSE(AttitudeSource::shared().isAvailable());
}

TEST(EmulatedDevice, StaysTurnedWhileItIsOff) {
    DeviceScene s;
    s.turn(0, 10, 320, 10);
    s.input().setEmulatesDevice(false);
    s.input().setEmulatesDevice(true);
    EXPECT_NEAR(look().x, std::sin(std::numbers::pi / 4), 1e-9);
}
