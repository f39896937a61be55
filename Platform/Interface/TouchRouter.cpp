#include "Platform/Interface/TouchRouter.h"

#include "Platform/Foundation/Log.h"
#include "Platform/Interface/View.h"

#include <cmath>
#include <utility>

namespace platform {
namespace {

/// In points. Differences and velocities of locations within it are finite.
constexpr double kFarthest = 1e6;

} // namespace

bool TouchRouter::accepts(Point location) {
    // The negation refuses NaN too.
    const bool refused = !(std::abs(location.x) <= kFarthest && std::abs(location.y) <= kFarthest);
    if (refused && !hasRefused_)
        log(LogLevel::Warning, "touch: the location is ignored, it is not finite or too far away");
    hasRefused_ = refused;
    return !refused;
}

void TouchRouter::dispatch(const TouchEvent& event, const std::shared_ptr<View>& root) {
    const bool isLast = event.phase == TouchPhase::Up || event.phase == TouchPhase::Cancel;
    const bool isSomewhere = event.phase == TouchPhase::Cancel || accepts(event.location);
    if (!isSomewhere && !isLast)
        return;
    if (event.phase == TouchPhase::Down)
        return takeDown(event, root);
    const auto found = views_.find(event.id);
    if (found == views_.end())
        return;
    const auto view = found->second.lock();
    if (isLast)
        views_.erase(found);
    if (!view)
        return;
    if (event.phase == TouchPhase::Cancel || !isSomewhere || !view->isShown())
        return cancelTouchesOf(view);
    if (event.phase == TouchPhase::Up)
        view->gestures().touchUp(event);
    else
        view->gestures().touchMoved(event);
}

void TouchRouter::takeDown(const TouchEvent& event, const std::shared_ptr<View>& root) {
    const auto view = root ? root->hitTest(event.location) : nullptr;
    if (!view || views_.contains(event.id))
        return;
    views_[event.id] = view;
    view->gestures().touchDown(event, event.kind == TouchKind::Mouse ? slop_.mouse : slop_.finger);
}

void TouchRouter::cancelTouchesOf(const std::shared_ptr<View>& view) {
    std::erase_if(views_, [&view](const auto& entry) { return entry.second.lock() == view; });
    view->gestures().cancelTouches();
}

void TouchRouter::cancelTouches() {
    while (!views_.empty()) {
        if (const auto view = views_.begin()->second.lock())
            cancelTouchesOf(view);
        else
            views_.erase(views_.begin());
    }
}

} // namespace platform
