#include "Hosts/SDL/SDLInput.h"

#include "Hosts/Embedded/EmbeddedHost.h"

#include <cmath>
#include <utility>

namespace zanto {

using platform::Instant;
using platform::Point;

namespace {

/// Spreading two fingers by half of the track pad zooms in by a factor of 4.
constexpr double kZoomOfTrackPad = 2.8;
/// In fractions of the track pad. A smaller spread is the jitter of fingers that scroll.
constexpr double kLeastSpread = 0.002;

double ticksOf(const SDL_MouseWheelEvent& event) {
    // Devices that report whole ticks only leave the precise value at 0.
    const double ticks = event.preciseY != 0 ? static_cast<double>(event.preciseY) : event.y;
    return event.direction == SDL_MOUSEWHEEL_FLIPPED ? -ticks : ticks;
}

} // namespace

SDLInput::SDLInput(EmbeddedHost& host, std::uint32_t windowId, SDLFacts facts)
    : host_(host), windowId_(windowId), facts_(std::move(facts)),
      touches_([this](const platform::TouchEvent& event) { offer(event); }),
      wheel_([this](const platform::TouchEvent& event) { deliver(event); }) {
    SDLTouches::setHints();
}

void SDLInput::setWindowSize(platform::Size size) {
    size_ = size;
    device_.publish();
}

void SDLInput::setEmulatesDevice(bool on) {
    device_.setOn(on);
    keeper_.noteTurn();
}

void SDLInput::dispatch(const SDL_Event& event) {
    switch (event.type) {
    case SDL_WINDOWEVENT:
        return dispatchWindowEvent(event.window);
    case SDL_MOUSEMOTION:
        return dispatchMotion(event.motion);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        return dispatchButton(event.button);
    case SDL_MOUSEWHEEL:
        return dispatchWheel(event.wheel);
    case SDL_FINGERDOWN:
    case SDL_FINGERMOTION:
    case SDL_FINGERUP:
        return dispatchFinger(event.tfinger);
    case SDL_MULTIGESTURE:
        return dispatchGesture(event.mgesture);
    default:
        return;
    }
}

void SDLInput::dispatchWindowEvent(const SDL_WindowEvent& event) {
    if (!isOurs(event.windowID))
        return;
    switch (event.event) {
    case SDL_WINDOWEVENT_LEAVE:
        // Fingers on the touch screen are independent of the pointer.
        touches_.cancelMouse(instantOf(event.timestamp));
        wheel_.lift(instantOf(event.timestamp));
        device_.letGo();
        pointer_.reset();
        tellPointer();
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
    case SDL_WINDOWEVENT_HIDDEN:
    case SDL_WINDOWEVENT_MINIMIZED:
        cancelTouches();
        break;
    default:
        break;
    }
}

void SDLInput::cancelTouches() {
    const Instant time = instantOf(facts_.ticks());
    touches_.cancelAll(time);
    wheel_.lift(time); // the ticks so far count
    device_.letGo();
}

void SDLInput::dispatchMotion(const SDL_MouseMotionEvent& event) {
    if (!isOurs(event.windowID) || event.which == SDL_TOUCH_MOUSEID)
        return;
    pointer_ = Point{static_cast<double>(event.x), static_cast<double>(event.y)};
    tellPointer();
    touches_.take(event, instantOf(event.timestamp));
    if (device_.take(event))
        keeper_.noteTurn();
}

void SDLInput::dispatchButton(const SDL_MouseButtonEvent& event) {
    if (!isOurs(event.windowID) || event.which == SDL_TOUCH_MOUSEID)
        return;
    pointer_ = Point{static_cast<double>(event.x), static_cast<double>(event.y)};
    const Instant time = instantOf(event.timestamp);
    // The fingers of the wheel are lifted, so that the touch of the mouse is the only one.
    if (event.button == SDL_BUTTON_LEFT)
        wheel_.lift(time);
    touches_.take(event, time);
    device_.take(event);
}

void SDLInput::dispatchFinger(const SDL_TouchFingerEvent& event) {
    // Some systems do not report the window of a finger.
    if ((event.windowID != 0 && !isOurs(event.windowID)) || isTrackPad(event.touchId))
        return;
    const Instant time = instantOf(event.timestamp);
    wheel_.lift(time);
    touches_.take(event, size_, time);
}

void SDLInput::dispatchWheel(const SDL_MouseWheelEvent& event) {
    const double ticks = ticksOf(event);
    if (isOurs(event.windowID) && event.which != SDL_TOUCH_MOUSEID && ticks != 0)
        zoom(std::pow(WheelPinch::kFactorOfTick, ticks), event.timestamp);
}

void SDLInput::dispatchGesture(const SDL_MultiGestureEvent& event) {
    const auto spread = static_cast<double>(event.dDist);
    // The event has no window. A track pad's gestures belong to the window with the pointer.
    if (pointer_ && isTrackPad(event.touchId) && std::abs(spread) >= kLeastSpread)
        zoom(std::exp(kZoomOfTrackPad * spread), event.timestamp);
}

void SDLInput::zoom(double factor, std::uint32_t timestamp) {
    if (touches_.isAnyDown())
        return;
    const Point middle{size_.width / 2, size_.height / 2};
    wheel_.spread(factor, pointer_.value_or(middle), size_, instantOf(timestamp));
}

void SDLInput::tellPointer() const {
    if (const PointerListener listener = pointerListener_)
        listener(pointer_);
}

void SDLInput::offer(const platform::TouchEvent& event) {
    using platform::TouchPhase;
    const TouchFilter filter = filter_;
    const bool isWanted = filter && filter(event);
    if (isWanted && event.phase == TouchPhase::Down)
        taken_.insert(event.id);
    if (!taken_.contains(event.id))
        return deliver(event);
    if (event.phase == TouchPhase::Up || event.phase == TouchPhase::Cancel)
        taken_.erase(event.id);
}

void SDLInput::deliver(const platform::TouchEvent& event) {
    // A copy, because the listener may set a new one.
    if (const TouchListener listener = listener_)
        listener(event);
    host_.touch(event);
    keeper_.noteTouch(touches_.isAnyDown() || wheel_.isDown());
}

bool SDLInput::isTrackPad(SDL_TouchID device) const {
    const SDL_TouchDeviceType type = facts_.touchDeviceType(device);
    return type == SDL_TOUCH_DEVICE_INDIRECT_ABSOLUTE || type == SDL_TOUCH_DEVICE_INDIRECT_RELATIVE;
}

Instant SDLInput::instantOf(std::uint32_t timestamp) {
    return times_.instantOf(timestamp, facts_.ticks(), host_.now());
}

} // namespace zanto
