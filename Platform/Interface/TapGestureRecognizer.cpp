#include "Platform/Interface/TapGestureRecognizer.h"

namespace platform {
namespace {

constexpr Instant kLongestTap = std::chrono::milliseconds(750);

/// With a slop of 0, a finger still rests while it is exactly where it went down.
bool rests(const Touch& touch) {
    return touch.distance() <= touch.slop();
}

} // namespace

void TapGestureRecognizer::touchDown() {
    if (touches().size() > 1)
        enter(GestureState::Failed);
}

void TapGestureRecognizer::touchMoved(const Touch& touch) {
    if (!rests(touch))
        enter(GestureState::Failed);
}

void TapGestureRecognizer::touchUp(const Touch& touch) {
    enter(rests(touch) && touch.age() <= kLongestTap ? GestureState::Ended : GestureState::Failed);
}

} // namespace platform
