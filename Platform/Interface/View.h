#pragma once

#include "Platform/Foundation/Color.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Interface/Animation.h"
#include "Platform/Interface/GestureArena.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

class LayoutConstraint;
class Window;

/// The part of a framebuffer into which a view draws.
struct DrawTarget {
    std::uint32_t framebuffer = 0;
    RectPx area;
    /// Pixels per point.
    double scale = 1.0;
    /// Whether this is a pass of the window, which shows animations in progress and may be drawn
    /// over content of others. False for a snapshot, which has a framebuffer of its own and shows
    /// the final layout.
    bool isWindow = false;
};

/// A rectangle of the window with a background and subviews; the last subview is in front.
///
/// Units:  points, origin at the top left; a frame is in the superview's coordinates.
/// Owner:  a view holds its subviews, and its superview weakly. Created with `make`.
/// Thread: main.
class ZANTO_EXPORT View : public Object {
public:
    explicit View(Rect frame);

    [[nodiscard]] Rect frame() const { return frame_; }
    void setFrame(Rect frame);
    [[nodiscard]] Rect bounds() const { return {{}, frame_.size}; }
    /// Runs the block and animates the views whose frames it changes: `frame()` returns the final
    /// frame at once, and the window's passes show the frames in between. Views that are not shown
    /// are not animated.
    static void animateWithDuration(Instant duration, const std::function<void()>& animations);

    /// A hidden view and its subviews are not drawn; their requests for a pass stay pending.
    [[nodiscard]] bool isHidden() const { return hidden_; }
    virtual void setHidden(bool hidden);
    [[nodiscard]] bool isOpaque() const { return opaque_; }
    void setOpaque(bool opaque) { opaque_ = opaque; }
    [[nodiscard]] Color backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(Color color);

    [[nodiscard]] const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }
    [[nodiscard]] std::shared_ptr<View> superview() const { return superview_.lock(); }
    [[nodiscard]] std::shared_ptr<Window> window() const;
    void addSubview(const std::shared_ptr<View>& view);
    /// An index beyond the end means the end. A view that has a superview already is moved.
    void insertSubview(const std::shared_ptr<View>& subview, std::size_t index);
    void removeFromSuperview();

    /// When disabled, touches pass through: hit testing finds neither the view nor its subviews.
    [[nodiscard]] bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled) { userInteractionEnabled_ = enabled; }

    /// Whether neither the view nor any of its superviews is hidden, and the window is visible.
    [[nodiscard]] bool isShown() const;
    /// The front-most visible view that receives touches at a point in this view's coordinates;
    /// null outside.
    [[nodiscard]] std::shared_ptr<View> hitTest(Point point);
    [[nodiscard]] Point convertFromWindow(Point point) const;

    /// The view owns its recognisers; they handle touches in the order in which they were added.
    void addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);
    void removeGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);
    [[nodiscard]] const GestureArena::Recognizers& gestureRecognizers() const {
        return gestures_.recognizers();
    }
    [[nodiscard]] GestureArena& gestures() { return gestures_; }

    /// Called before the superview changes; null for a removal. An override calls its base class.
    virtual void willMoveToSuperview(View* newSuperview);

    /// Stored without effect. Code that adds constraints for a view sets it to false.
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const { return translatesMask_; }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
        translatesMask_ = translates;
    }
    /// Applies the active constraints between the subviews, recursively.
    void layoutIfNeeded();

    /// Requests a pass at the next frame time.
    void setNeedsDisplay();
    /// Whether a pass would draw something new: the view or a subview has requested one and is not
    /// hidden.
    [[nodiscard]] bool needsDisplay() const;
    /// Draws the view and its subviews, back to front. Requests for a pass stay pending.
    void draw(const DrawTarget& target);
    /// The part of a framebuffer that a subview has when its superview is drawn to `target`.
    [[nodiscard]] static DrawTarget targetOfSubview(const View& subview, const DrawTarget& target);

protected:
    /// Fills the background; a subclass draws its content instead.
    virtual void drawContent(const DrawTarget& target);
    /// Whether `drawContent` overwrites every pixel of the frame.
    [[nodiscard]] virtual bool coversItsFrame() const;

private:
    friend class LayoutConstraint;
    friend class Window;
    [[nodiscard]] bool isCoveredBySubview() const;
    /// Clears the pending requests just before a pass; later requests are for a later pass.
    void forgetNeedsDisplay();
    [[nodiscard]] Rect shownFrame(const DrawTarget& target) const;
    void travelFrom(const Rect& earlier, Instant duration);

    Rect frame_;
    std::optional<FrameAnimation> animation_;
    bool hidden_ = false;
    bool opaque_ = true;
    bool userInteractionEnabled_ = true;
    bool translatesMask_ = true;
    bool needsDisplay_ = true;
    Color backgroundColor_ = kClearColor;
    std::vector<std::shared_ptr<View>> subviews_;
    std::weak_ptr<View> superview_;
    std::weak_ptr<Window> rootOf_;
    std::vector<std::shared_ptr<LayoutConstraint>> activeConstraints_;
    GestureArena gestures_;
};

} // namespace platform
