#include "Hosts/Embedded/WheelPinch.h"

#include "Platform/Foundation/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace zanto {

using platform::Instant;
using platform::MainQueue;
using platform::Point;
using platform::TouchPhase;

namespace {

/// The delay from the last tick to the lift. A wheel in motion ticks several times in that time.
constexpr Instant kLiftDelay = std::chrono::milliseconds(150);
/// The initial distance of the fingers in points. It is small, so that they fit at any pointer
/// position, and large enough that they can close by the largest factor and still be one point
/// apart.
constexpr double kStartDistance = 8;
/// Larger than any zoom range. The factor is limited, so that turning the wheel back has an effect
/// at once.
constexpr double kLargestFactor = 8;

/// Moves the value to at least `margin` from both edges, or to the middle if there is no room.
double inside(double value, double margin, double extent) {
    return std::max(margin, std::min(value, extent - margin));
}

} // namespace

void WheelPinch::spread(double factor, Point center, platform::Size window, Instant time) {
    if (!std::isfinite(factor) || factor <= 0)
        return;
    if (!isDown())
        begin(center, window, time);
    const auto gesture = gesture_; // the receiver may end it
    if (!gesture)
        return;
    gesture->factor = std::clamp(gesture->factor * factor, 1 / kLargestFactor, kLargestFactor);
    gesture->liftTime = MainQueue::main().now() + kLiftDelay;
    tellBoth(TouchPhase::Move, *gesture, time);
}

void WheelPinch::begin(Point center, platform::Size window, Instant time) {
    const double distance = std::min(kStartDistance, window.width / 2);
    // A finger on the right or lower edge would be outside of the window.
    const double margin = distance / 2 + 1;
    const Point middle{inside(center.x, margin, window.width), inside(center.y, 1, window.height)};
    gesture_ = std::make_shared<Gesture>(Gesture{middle, distance});
    const auto gesture = gesture_;
    liftLater(kLiftDelay);
    tellBoth(TouchPhase::Down, *gesture, time);
    // A pinch uses its first move as the reference.
    if (gesture_ == gesture)
        tell(TouchPhase::Move, 0, *gesture, time);
}

void WheelPinch::end(TouchPhase phase, Instant time) {
    const auto gesture = std::exchange(gesture_, nullptr);
    if (gesture)
        tellBoth(phase, *gesture, time);
}

void WheelPinch::liftLater(Instant delay) {
    MainQueue::main().asyncAfter(delay, [this, watched = std::weak_ptr<Gesture>(gesture_)] {
        const auto gesture = watched.lock(); // null after the end of the gesture or of this object
        if (!gesture)
            return;
        const Instant now = MainQueue::main().now();
        if (now >= gesture->liftTime)
            lift(now);
        else
            liftLater(gesture->liftTime - now);
    });
}

void WheelPinch::tellBoth(TouchPhase phase, const Gesture& gesture, Instant time) const {
    tell(phase, 0, gesture, time);
    tell(phase, 1, gesture, time);
}

void WheelPinch::tell(TouchPhase phase, int finger, const Gesture& gesture, Instant time) const {
    const double half = gesture.startDistance * gesture.factor / 2;
    const Point location{gesture.center.x + (finger == 0 ? -half : half), gesture.center.y};
    receiver_({phase, -1 - finger, location, platform::TouchKind::Finger, time});
}

} // namespace zanto
