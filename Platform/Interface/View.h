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

/// Where a view draws: its part of a framebuffer.
struct DrawTarget {
    std::uint32_t framebuffer = 0;
    RectPx area;
    /// Pixels per point.
    double scale = 1.0;
    /// A pass of the window, which shows views on their way and may stand on what somebody else has
    /// drawn; otherwise a picture of its own, of the final layout.
    bool isWindow = false;
};

/// A rectangle of the window with a background and subviews, the last subview in front.
///
/// Units:  points, origin at the top left; a frame is in the superview's coordinates.
/// Owner:  a view holds its subviews; the superview is held weakly. Made with `make`.
/// Thread: main.
class ZANTO_EXPORT View : public Object {
public:
    explicit View(Rect frame);

    [[nodiscard]] Rect frame() const { return frame_; }
    void setFrame(Rect frame);
    [[nodiscard]] Rect bounds() const { return {{}, frame_.size}; }
    /// Runs the block, and shows every view whose frame it changes on its way there: frames are the
    /// final ones at once. Views that nobody sees do not travel.
    static void animateWithDuration(Instant duration, const std::function<void()>& animations);

    /// A hidden view and its subviews are not drawn; what they asked for waits.
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
    /// An index beyond the end means the end. A view that stands elsewhere is moved.
    void insertSubview(const std::shared_ptr<View>& subview, std::size_t index);
    void removeFromSuperview();

    /// Without it touches go through: neither the view nor its subviews are found under a point.
    [[nodiscard]] bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled) { userInteractionEnabled_ = enabled; }

    /// Not hidden, nor is anything that it is in, and in a window that is visible.
    [[nodiscard]] bool isShown() const;
    /// The front-most visible view under a point of this view's own coordinates that takes touches;
    /// null outside.
    [[nodiscard]] std::shared_ptr<View> hitTest(Point point);
    [[nodiscard]] Point convertFromWindow(Point point) const;

    /// A view keeps its recognisers; each is asked in the order in which they were added.
    void addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);
    void removeGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer);
    [[nodiscard]] const GestureArena::Recognizers& gestureRecognizers() const {
        return gestures_.recognizers();
    }
    [[nodiscard]] GestureArena& gestures() { return gestures_; }

    /// Told before the superview changes; null when leaving. An override calls its base class.
    virtual void willMoveToSuperview(View* newSuperview);

    /// Stored for the layout: a view with constraints says no.
    [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const { return translatesMask_; }
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
        translatesMask_ = translates;
    }
    /// Applies the active constraints between the subviews, all the way down.
    void layoutIfNeeded();

    /// Asks for a pass at the next frame instant.
    void setNeedsDisplay();
    /// Whether a pass would draw something new: it or a subview asked, and nothing hides it.
    [[nodiscard]] bool needsDisplay() const;
    /// Draws the view and its subviews, back to front; what they asked for stays asked for.
    void draw(const DrawTarget& target);
    /// Where a subview of this view lies when this view is drawn to `target`.
    [[nodiscard]] static DrawTarget targetOfSubview(const View& subview, const DrawTarget& target);

protected:
    /// Fills the background; a subclass draws its content instead.
    virtual void drawContent(const DrawTarget& target);
    /// Whether `drawContent` leaves no pixel of the frame as it was.
    [[nodiscard]] virtual bool coversItsFrame() const;

private:
    friend class LayoutConstraint;
    friend class Window;
    [[nodiscard]] bool isCoveredBySubview() const;
    /// What is visible now is about to be drawn; what is asked for from here on is for later.
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
