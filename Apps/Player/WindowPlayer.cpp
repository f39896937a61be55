#include "Apps/Player/WindowPlayer.h"

#include "Apps/Player/Message.h"
#include "Apps/Player/PictureOutput.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Interface/Screen.h"
#include "Platform/Motion/AttitudeSource.h"

#include <filesystem>
#include <string>
#include <utility>

namespace {

std::string freeScreenshotName() {
    for (int number = 1;; ++number) {
        std::string name = "zanto-player-" + std::to_string(number) + ".png";
        std::error_code unknown; // a folder that cannot be read shows when the file is written
        if (!std::filesystem::exists(name, unknown))
            return name;
    }
}

} // namespace

WindowPlayer::WindowPlayer(SDLHost& host, ZNTDisplayViewController& controller,
                           ActionListener listener)
    : host_(host), controller_(controller), listener_(std::move(listener)) {
    host_.setKeyListener([this](const KeyPress& press) {
        if (const auto action = keyActionOf(press))
            perform(*action);
    });
}

WindowPlayer::~WindowPlayer() {
    host_.setKeyListener({});
}

void WindowPlayer::perform(KeyAction action) {
    switch (action) {
    case KeyAction::ShowPlane:
        return show(DisplayMode::Plane);
    case KeyAction::ShowSphere:
        return show(DisplayMode::Sphere);
    case KeyAction::ShowLittlePlanet:
        return show(DisplayMode::LittlePlanet);
    case KeyAction::ShowSideBySide:
        return show(DisplayMode::SideBySide);
    case KeyAction::ToggleDeviceMotion:
        return toggleDeviceMotion();
    case KeyAction::ToggleVerticalLock:
        return toggleVerticalLock();
    case KeyAction::ToggleAutoPicking:
        return toggleAutoPicking();
    case KeyAction::ToggleFullScreen:
        return host_.setFullScreen(!host_.isFullScreen());
    case KeyAction::TakeScreenshot:
        return takeScreenshot();
    case KeyAction::PrintHelp:
        return print(keyHelp());
    case KeyAction::Quit:
        return host_.quit();
    case KeyAction::Leave:
        return leave();
    }
}

void WindowPlayer::tellListener(const decltype(Action::what)& what) const {
    if (listener_)
        listener_(what);
}

void WindowPlayer::show(DisplayMode mode) {
    controller_.setDisplayMode(mode);
    tellListener(ModeAction{mode});
}

void WindowPlayer::toggleDeviceMotion() {
    // In the other modes it is not the person's choice.
    if (controller_.currentMode() != DisplayMode::Sphere)
        return;
    const bool on = !controller_.deviceMotionIsOn();
    if (on && !platform::AttitudeSource::shared().isAvailable())
        host_.setEmulatesDevice(true);
    controller_.turnOnDeviceMotionInterraction(on);
    if (!on && host_.emulatesDevice())
        host_.setEmulatesDevice(false);
    tellListener(SwitchAction{SwitchAction::Switch::DeviceMotion, on});
}

void WindowPlayer::toggleVerticalLock() {
    const bool lock = !controller_.lockVerticalRotation();
    controller_.setLockVerticalRotation(lock);
    tellListener(SwitchAction{SwitchAction::Switch::LockVertical, lock});
}

void WindowPlayer::toggleAutoPicking() {
    if (controller_.hotSpots().empty())
        return;
    const bool on = !controller_.enableHotSpotAutoPicking();
    controller_.setEnableHotSpotAutoPicking(on);
    controller_.prepareDisplayView(); // which is when it takes effect
    tellListener(SwitchAction{SwitchAction::Switch::AutoPicking, on});
}

void WindowPlayer::leave() {
    if (host_.isFullScreen())
        host_.setFullScreen(false);
    else
        host_.quit();
}

void WindowPlayer::takeScreenshot() {
    const auto picture = host_.embedded().snapshot(platform::Screen::mainScreen().scale());
    if (!picture)
        return tell("screenshot: " + picture.error().detail);
    const std::string name = freeScreenshotName();
    if (const auto failure = PictureOutput(name).write(name, *picture.value()))
        return tell("screenshot: " + failure->detail);
    print(name + "\n");
}
