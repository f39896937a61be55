#include "Platform/Interface/PinchGestureRecognizer.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

/// In points. A smaller distance of two fingers would make the scale infinite or too large.
constexpr double kLeastDistance = 1;

} // namespace

double PinchGestureRecognizer::distance() const {
    const Point one = touches()[0]->last().location;
    const Point other = touches()[1]->last().location;
    return std::max(std::hypot(one.x - other.x, one.y - other.y), kLeastDistance);
}

void PinchGestureRecognizer::setScale(double scale) {
    scale_ = startScale_ = scale;
    if (touches().size() >= 2)
        startDistance_ = distance();
}

void PinchGestureRecognizer::touchMoved(const Touch& /*touch*/) {
    if (touches().size() < 2)
        return;
    if (!isRunning()) {
        setScale(1);
        return enter(GestureState::Began);
    }
    scale_ = startScale_ * distance() / startDistance_;
    enter(GestureState::Changed);
}

void PinchGestureRecognizer::touchUp(const Touch& touch) {
    // A third finger is not part of the pinch.
    const bool isOneOfTwo = touches().size() >= 2 &&
                            (touches()[0]->id() == touch.id() || touches()[1]->id() == touch.id());
    if (isRunning() && isOneOfTwo)
        enter(GestureState::Ended);
    else if (touches().size() == 1)
        enter(GestureState::Failed);
}

void PinchGestureRecognizer::forget() {
    scale_ = startScale_ = 1;
}

} // namespace platform
