#pragma once

#include "Apps/Player/Output/TracedController.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Interface/Touch.h"

#include <memory>
#include <string>
#include <vector>

namespace zanto {
class SDLHost;
} // namespace zanto

namespace platform {
class View;
struct Color;
} // namespace platform

/// Shows the user what was picked: a line on standard output, the window's title for 2 s, and a
/// square for 0.7 s at the point that was tapped or looked at. While automatic picking is on, a
/// cross marks its point. None of the views receives touches.
///
/// Owner:  the program; the host and the controller must outlive it. Make it with `platform::make`
///         once the controller's view is in the host's window.
/// Thread: main.
class PickFeedback final : public platform::Object {
public:
    /// `title` is the window's title at other times.
    PickFeedback(zanto::SDLHost& host, ZNTDisplayViewController& controller, std::string title);
    ~PickFeedback() override;
    void init() override;

    /// Receives every touch of the window, before the pick that it causes.
    void touch(const platform::TouchEvent& event);
    void picked(const Pick& pick);
    /// Call this when the mode, the hot spots or automatic picking may have changed.
    void update();

private:
    using Views = std::vector<std::shared_ptr<platform::View>>;

    [[nodiscard]] std::vector<platform::Point> lookedAt() const;
    std::shared_ptr<platform::View> show(const platform::Rect& frame,
                                         const platform::Color& color) const;
    void showTitle(const Pick& pick);
    void mark(const std::vector<platform::Point>& places);

    zanto::SDLHost& host_;
    ZNTDisplayViewController& controller_;
    std::string title_;
    platform::Point lifted_; // where the last touch ended
    Views crosses_;
    Views marks_;
    // a token for the title, replaced by each pick; null if no pick is shown
    std::shared_ptr<int> picksTitle_;
};
