#include "Hosts/Embedded/WheelPinch.h"

#include "Platform/Foundation/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <cmath>

using platform::Instant;
using platform::MainQueue;
using platform::Point;
using platform::TouchPhase;

namespace {

/// After the last tick. Wheels tick several times in that while they are being turned.
constexpr Instant kLiftDelay = std::chrono::milliseconds(150);
/// Points between the fingers at first: little, so that they find room at any pointer, and enough
/// that they can close by the largest factor and still be a point apart.
constexpr double kStartDistance = 8;
/// More than any zoom's range. Beyond it the wheel turns in vain, so that turning it back is seen
/// at once.
constexpr double kLargestFactor = 8;

/// Inside, `margin` from either edge; in the middle where there is no room.
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
    // A finger on the right or lower edge would be outside.
    const double margin = distance / 2 + 1;
    const Point middle{inside(center.x, margin, window.width), inside(center.y, 1, window.height)};
    gesture_ = std::make_shared<Gesture>(Gesture{middle, distance});
    const auto gesture = gesture_;
    liftLater(kLiftDelay);
    tellBoth(TouchPhase::Down, *gesture, time);
    // A pinch measures against its first move.
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
        const auto gesture = watched.lock(); // gone with this object, and with the gesture's end
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
