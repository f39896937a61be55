#include "Platform/Interface/GestureRecognizer.h"

#include "Platform/Interface/View.h"

namespace platform {

Point GestureRecognizer::locationInView(const View& view) const {
    if (touches_.empty())
        return {};
    Point middle;
    for (const auto& touch : touches_) {
        const Point location = view.convertFromWindow(touch->last().location);
        middle.x += location.x / static_cast<double>(touches_.size());
        middle.y += location.y / static_cast<double>(touches_.size());
    }
    return middle;
}

void GestureRecognizer::enter(GestureState state) {
    const bool recognizes = state_ == GestureState::Possible &&
                            (state == GestureState::Began || state == GestureState::Ended);
    state_ = state;
    // Before the action, which may remove this recogniser from its view.
    if (const auto owner = recognizes ? view() : nullptr)
        owner->gestures().failOthers(*this);
    if (state != GestureState::Failed)
        tell();
}

} // namespace platform
