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

/// The one rectangle that a host shows: a view controller's view, and the passes that draw it.
///
/// Thread: main.
class ZANTO_EXPORT Window : public Object {
public:
    /// Loads the controller's view and gives it the screen's size; it appears with the window.
    void setRootViewController(const std::shared_ptr<ViewController>& controller);
    [[nodiscard]] std::shared_ptr<ViewController> rootViewController() const { return controller_; }

    /// The view appears: laid out, told so before and after. Nothing if it is there already.
    void makeKeyAndVisible();
    /// The view disappears; what it shows stays until another is drawn.
    void resignVisible();
    [[nodiscard]] bool isVisible() const { return visible_; }

    /// Gives the root view the screen's size and lays it out.
    void layout();

    /// Whether what somebody else has drawn may show through.
    [[nodiscard]] bool isTransparent() const;

    /// Asks for a pass at the next frame instant, whatever is there to draw.
    void setNeedsDisplay();
    /// Whether a visible view asked to be drawn; and whether one cannot wait for the next instant.
    [[nodiscard]] bool needsDisplay() const;
    [[nodiscard]] bool needsDisplayAtOnce() const { return atOnce_ && needsDisplay(); }
    /// For `GLView::display()`.
    void displayAtOnce(View& view);

    /// A raw touch goes to the front-most visible view under it while the window is visible; its
    /// gestures act inside the call.
    void touch(const TouchEvent& event);
    /// Fingers are lost, for instance with the window's focus: gestures are cancelled.
    void cancelTouches() { touches_.cancelTouches(); }
    void setTouchSlop(TouchSlop slop) { touches_.setSlop(slop); }

    /// The pass: draws every visible view once into the host's framebuffer.
    void draw(const DrawTarget& target);

    /// A fresh frame of the whole window at `scale` pixels a point, in a framebuffer of its own.
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
