#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Interface/Touch.h"

#include <cstdint>
#include <map>
#include <memory>

namespace platform {

class View;

/// Brings every finger to the view that it went down on.
///
/// Owner:  the window.
/// Thread: main.
class ZANTO_EXPORT TouchRouter {
public:
    void setSlop(TouchSlop slop) { slop_ = slop; }

    /// A finger that goes down belongs to the front-most visible view under it until it is lifted.
    /// A view that is hidden or taken away loses its fingers, and one that is cancelled or lifted
    /// nowhere takes the others of its view along. A place that is not finite or more than a
    /// million points away is nowhere; it is ignored otherwise.
    ///
    /// Errors: a log line for the first of several such places in a row.
    void dispatch(const TouchEvent& event, const std::shared_ptr<View>& root);
    void cancelTouches();

private:
    [[nodiscard]] bool accepts(Point location);
    void takeDown(const TouchEvent& event, const std::shared_ptr<View>& root);
    void cancelTouchesOf(const std::shared_ptr<View>& view);

    TouchSlop slop_;
    bool hasRefused_ = false; // the last place
    std::map<std::int64_t, std::weak_ptr<View>> views_;
};

} // namespace platform
