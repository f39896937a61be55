#include "Apps/Player/Window/WindowPlayer.h"

#include "Apps/Player/Contents/HotSpots.h"
#include "Apps/Player/Controls/Keys.h"
#include "Apps/Player/Output/PictureOutput.h"
#include "Apps/Player/Terminal/Message.h"
#include "Apps/Player/Window/KeyLook.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Motion/AttitudeSource.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <utility>

namespace {

constexpr double kSeekSeconds = 10;
constexpr double kVolumeStep = 0.1;
constexpr double kLeastAudible = 0.2;

std::string freeScreenshotName() {
    for (int number = 1;; ++number) {
        std::string name = "zanto-player-" + std::to_string(number) + ".png";
        std::error_code unknown; // if the folder cannot be read, writing fails later
        if (!std::filesystem::exists(name, unknown))
            return name;
    }
}

} // namespace

WindowPlayer::WindowPlayer(zanto::SDLHost& host, ZNTDisplayViewController& controller,
                           ActionListener listener)
    : host_(host), controller_(&controller), listener_(std::move(listener)),
      keyLook_(platform::make<KeyLook>(host)) {
    host_.setKeyListener([this](const zanto::KeyEvent& press) {
        if (const auto action = windowActionOf(press))
            perform(*action);
    });
}

WindowPlayer::~WindowPlayer() {
    host_.setKeyListener({});
}

void WindowPlayer::setController(ZNTDisplayViewController& controller) {
    controller_ = &controller;
    host_.setEmulatesDevice(false); // nothing uses the emulated device yet
}

void WindowPlayer::perform(WindowAction action) {
    act(action);
    // Copied, because the listener may replace itself.
    if (const auto listener = performedListener_)
        listener(action);
}

void WindowPlayer::act(WindowAction action) {
    switch (action) {
    case WindowAction::ShowPlane:
        return show(DisplayMode::Plane);
    case WindowAction::ShowSphere:
        return show(DisplayMode::Sphere);
    case WindowAction::ShowLittlePlanet:
        return show(DisplayMode::LittlePlanet);
    case WindowAction::ShowSideBySide:
        return show(DisplayMode::SideBySide);
    case WindowAction::ToggleDeviceMotion:
        return toggleDeviceMotion();
    case WindowAction::ToggleVerticalLock:
        return toggleVerticalLock();
    case WindowAction::ToggleAutoPicking:
        return toggleAutoPicking();
    case WindowAction::LookLeft:
        return keyLook_->look({-1, 0});
    case WindowAction::LookRight:
        return keyLook_->look({1, 0});
    case WindowAction::LookUp:
        return keyLook_->look({0, -1});
    case WindowAction::LookDown:
        return keyLook_->look({0, 1});
    case WindowAction::TogglePlayback:
        return togglePlayback();
    case WindowAction::SeekBack:
        return seekBy(-kSeekSeconds);
    case WindowAction::SeekForward:
        return seekBy(kSeekSeconds);
    case WindowAction::ToggleMute:
        return toggleMute();
    case WindowAction::VolumeDown:
        return changeVolumeBy(-kVolumeStep);
    case WindowAction::VolumeUp:
        return changeVolumeBy(kVolumeStep);
    case WindowAction::ToggleFullScreen:
        return host_.setFullScreen(!host_.isFullScreen());
    case WindowAction::TakeScreenshot:
        return takeScreenshot();
    case WindowAction::ToggleHelp:
        return toggleHelp();
    case WindowAction::Quit:
        return host_.quit();
    case WindowAction::Leave:
        return leave();
    }
}

void WindowPlayer::tellListener(const decltype(Action::what)& what) const {
    if (listener_)
        listener_(what);
}

void WindowPlayer::show(DisplayMode mode) {
    controller_->setDisplayMode(mode);
    tellListener(ModeAction{mode});
}

void WindowPlayer::toggleDeviceMotion() {
    // In the other modes device motion is not the user's choice.
    if (controller_->currentMode() != DisplayMode::Sphere)
        return;
    const bool on = !controller_->deviceMotionIsOn();
    if (on && !platform::AttitudeSource::shared().isAvailable())
        host_.setEmulatesDevice(true);
    controller_->turnOnDeviceMotionInterraction(on);
    if (!on && host_.emulatesDevice())
        host_.setEmulatesDevice(false);
    tellListener(SwitchAction{SwitchAction::Switch::DeviceMotion, on});
}

void WindowPlayer::toggleVerticalLock() {
    const bool lock = !controller_->lockVerticalRotation();
    controller_->setLockVerticalRotation(lock);
    tellListener(SwitchAction{SwitchAction::Switch::LockVertical, lock});
    notify(lock ? "Drags go sideways only" : "Drags go everywhere", Lasting::Briefly);
}

void WindowPlayer::toggleAutoPicking() {
    if (controller_->hotSpots().empty())
        return;
    const bool on = !controller_->enableHotSpotAutoPicking();
    controller_->setEnableHotSpotAutoPicking(on);
    refreshHotSpots(*controller_);
    tellListener(SwitchAction{SwitchAction::Switch::AutoPicking, on});
    notify(on ? "Looking at a hot spot picks it" : "Only taps pick hot spots", Lasting::Briefly);
}

bool WindowPlayer::isStill() const {
    const auto player = controller_->streamer() ? controller_->streamer()->player() : nullptr;
    return !player || player->timeControlStatus() == platform::TimeControlStatus::Paused;
}

void WindowPlayer::togglePlayback() {
    if (!controller_->streamer())
        return;
    const bool plays = isStill();
    if (plays)
        controller_->play();
    else
        controller_->pause();
    tellListener(plays ? CommandAction::Play : CommandAction::Pause);
}

void WindowPlayer::seekBy(double seconds) {
    const auto player = controller_->streamer() ? controller_->streamer()->player() : nullptr;
    seekTo((player ? player->currentTime().seconds() : 0) + seconds);
}

void WindowPlayer::seekTo(double seconds) {
    const double duration = controller_->videoDuration();
    if (!controller_->streamer() || std::isnan(duration) || std::isnan(seconds))
        return;
    const double target = std::clamp(seconds, 0.0, duration);
    // At its end, a video stops without being paused, and would resume after the seek.
    if (isStill() && !controller_->streamer()->isPaused()) {
        controller_->pause();
        tellListener(CommandAction::Pause);
    }
    controller_->seekToTime(target);
    tellListener(SeekAction{target});
}

void WindowPlayer::toggleMute() {
    const double before = volume();
    if (before > 0)
        volumeBeforeMute_ = before;
    setVolume(before > 0 ? 0 : volumeBeforeMute_);
}

void WindowPlayer::changeVolumeBy(double step) {
    // The volume changes in whole steps, so that equal numbers of presses up and down cancel out.
    const double steps = std::round(volume() / kVolumeStep) + std::round(step / kVolumeStep);
    setVolume(std::clamp(steps * kVolumeStep, 0.0, 1.0));
}

double WindowPlayer::volume() const {
    const auto player = controller_->streamer() ? controller_->streamer()->player() : nullptr;
    return player ? static_cast<double>(player->volume()) : 0;
}

void WindowPlayer::setVolume(double volume) {
    if (!controller_->streamer())
        return;
    // Dragging the slider to 0 passes quiet volumes that are not worth restoring.
    if (volume >= kLeastAudible)
        volumeBeforeMute_ = volume;
    controller_->setPlayerVolume(volume);
    tellListener(VolumeAction{volume});
}

void WindowPlayer::toggleHelp() {
    showsHelp_ = !showsHelp_;
    if (showsHelp_)
        print(keyHelp());
}

void WindowPlayer::leave() {
    if (showsHelp_)
        toggleHelp();
    else if (host_.isFullScreen())
        host_.setFullScreen(false);
    else
        host_.quit();
}

void WindowPlayer::takeScreenshot() {
    const auto picture = host_.embedded().snapshot(platform::Screen::mainScreen().scale());
    if (!picture)
        return complain("screenshot: " + picture.error().detail);
    const std::string name = freeScreenshotName();
    if (const auto failure = PictureOutput(name).write(name, *picture.value()))
        return complain("screenshot: " + failure->detail);
    print(name + "\n");
    notify("Saved as " + name, Lasting::Briefly);
}

void WindowPlayer::complain(const std::string& text) const {
    tell(text);
    notify(text, Lasting::UntilDismissed);
}

void WindowPlayer::notify(const std::string& text, Lasting lasting) const {
    if (noticeListener_)
        noticeListener_(text, lasting);
}
