#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Imaging/Image.h"
#include "Platform/Interface/TouchRouter.h"
#include "Platform/Interface/View.h"

#include <memory>
#include <optional>

namespace platform {

class ViewController;

/// The only window of a host: a view controller's view, and the passes that draw it.
///
/// Thread: main.
class ZANTO_EXPORT Window : public Object {
public:
    /// Loads the controller's view and gives it the screen's size; it appears with the window.
    void setRootViewController(const std::shared_ptr<ViewController>& controller);
    [[nodiscard]] std::shared_ptr<ViewController> rootViewController() const { return controller_; }

    /// Lays out the view and shows it; its controller is notified before and after. No-op if the
    /// window is visible already.
    void makeKeyAndVisible();
    /// Hides the view. The framebuffer keeps its content until something else is drawn.
    void resignVisible();
    [[nodiscard]] bool isVisible() const { return visible_; }

    /// Gives the root view the screen's size and lays it out.
    void layout();

    /// Whether content that was drawn by others may show through.
    [[nodiscard]] bool isTransparent() const;

    /// Requests a pass at the next frame time, even if no view needs one.
    void setNeedsDisplay();
    /// Whether a visible view has requested a pass; and whether that cannot wait for the next frame
    /// time.
    [[nodiscard]] bool needsDisplay() const;
    [[nodiscard]] bool needsDisplayAtOnce() const { return atOnce_ && needsDisplay(); }
    /// For `GLView::display()`.
    void displayAtOnce(View& view);

    /// Delivers a raw touch to the front-most visible view at its location, while the window is
    /// visible. Actions of gestures run inside the call.
    void touch(const TouchEvent& event);
    /// Cancels all gestures, because the touches are lost, for instance with the window's focus.
    void cancelTouches() { touches_.cancelTouches(); }
    void setTouchSlop(TouchSlop slop) { touches_.setSlop(slop); }

    /// Runs a pass: draws every visible view once into the host's framebuffer.
    void draw(const DrawTarget& target);

    /// Draws a new frame of the whole window, at `scale` pixels per point, into its own
    /// framebuffer.
    ///
    /// Errors: those of `OffscreenTarget::create`; Unavailable without a root view.
    [[nodiscard]] Result<ImagePtr> snapshot(double scale);

private:
    [[nodiscard]] bool shows(const View& view) const;
    [[nodiscard]] std::optional<DrawTarget> targetOf(const View& view) const;

    std::shared_ptr<ViewController> controller_;
    bool visible_ = false;
    bool isDisappearing_ = false;
    bool atOnce_ = false;
    std::optional<DrawTarget> passTarget_;
    TouchRouter touches_;
};

} // namespace platform
