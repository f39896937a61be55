#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Interface/Touch.h"

#include <cstdint>
#include <map>
#include <memory>

namespace platform {

class View;

/// Routes every touch to the view on which it began.
///
/// Owner:  the window.
/// Thread: main.
class ZANTO_EXPORT TouchRouter {
public:
    void setSlop(TouchSlop slop) { slop_ = slop; }

    /// A touch belongs to the front-most visible view at the point where it began, until it is
    /// lifted. A view that is hidden or removed loses its touches. A touch that is cancelled, or
    /// lifted at an invalid location, cancels the other touches of its view too. A location is
    /// invalid if it is not finite or more than a million points away; all other events at such a
    /// location are ignored.
    ///
    /// Errors: a log line for the first of several invalid locations in a row.
    void dispatch(const TouchEvent& event, const std::shared_ptr<View>& root);
    void cancelTouches();

private:
    [[nodiscard]] bool accepts(Point location);
    void takeDown(const TouchEvent& event, const std::shared_ptr<View>& root);
    void cancelTouchesOf(const std::shared_ptr<View>& view);

    TouchSlop slop_;
    bool hasRefused_ = false; // the last location was invalid
    std::map<std::int64_t, std::weak_ptr<View>> views_;
};

} // namespace platform
