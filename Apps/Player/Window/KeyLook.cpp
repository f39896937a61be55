#include "Apps/Player/Window/KeyLook.h"

#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Screen.h"

#include <algorithm>

namespace {

/// An id that no real finger or mouse button has.
constexpr std::int64_t kTouchId = -100;
constexpr int kSteps = 10;
/// The length of one step, as a fraction of the window's shorter side; there is one step per frame.
constexpr double kStepFraction = 1.0 / 80;

} // namespace

void KeyLook::look(platform::Point direction) {
    const bool isUnderWay = stepsToGo_ > 0;
    direction_ = direction;
    stepsToGo_ = kSteps;
    if (isUnderWay)
        return;
    const platform::Size size = platform::Screen::mainScreen().bounds().size;
    finger_ = {size.width / 2, size.height / 2};
    send(platform::TouchPhase::Down);
    step();
}

void KeyLook::step() {
    const platform::Size size = platform::Screen::mainScreen().bounds().size;
    const double length = std::min(size.width, size.height) * kStepFraction;
    // The content moves opposite to the direction of the look.
    finger_.x -= direction_.x * length;
    finger_.y -= direction_.y * length;
    send(platform::TouchPhase::Move);
    if (--stepsToGo_ == 0)
        return send(platform::TouchPhase::Up);
    platform::MainQueue::main().asyncAfter(platform::Instant(0), [weak = weak(this)] {
        if (const auto self = weak.lock())
            self->step();
    });
}

void KeyLook::send(platform::TouchPhase phase) {
    host_.touch(
        {phase, kTouchId, finger_, platform::TouchKind::Mouse, platform::MainQueue::main().now()});
}
