#include "Platform/Interface/PanGestureRecognizer.h"

namespace platform {

Point PanGestureRecognizer::velocityInView(const View& /*view*/) const {
    // Views are moved relative to the window, but never rotated or scaled.
    return touches().empty() ? Point{} : touches().front()->velocity();
}

void PanGestureRecognizer::touchDown() {
    if (touches().size() > mostTouches_)
        enter(isRunning() ? GestureState::Cancelled : GestureState::Failed);
}

void PanGestureRecognizer::touchMoved(const Touch& touch) {
    if (isRunning())
        enter(GestureState::Changed);
    else if (touch.distance() >= touch.slop())
        enter(GestureState::Began);
}

void PanGestureRecognizer::touchUp(const Touch& /*touch*/) {
    if (touches().size() == 1)
        enter(isRunning() ? GestureState::Ended : GestureState::Failed);
}

} // namespace platform
