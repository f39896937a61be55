#include "Platform/Interface/View.h"

#include "Platform/Foundation/MainQueue.h"
#include "Platform/Interface/LayoutConstraint.h"
#include "Platform/Interface/Window.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {
namespace {

/// Set while the block of an animation runs.
std::optional<Instant> animationDuration;

/// Sets the duration for its lifetime, so that it is reset even if the block throws.
class Animating {
public:
    explicit Animating(Instant duration) : outer_(std::exchange(animationDuration, duration)) {}
    ~Animating() { animationDuration = outer_; }
    Animating(const Animating&) = delete;
    Animating& operator=(const Animating&) = delete;

private:
    std::optional<Instant> outer_;
};

} // namespace

View::View(Rect frame) : frame_(frame) {}

void View::setFrame(Rect frame) {
    if (frame == frame_)
        return;
    const Rect earlier = std::exchange(frame_, frame);
    if (animationDuration)
        travelFrom(earlier, *animationDuration);
    else
        animation_.reset();
    setNeedsDisplay();
}

void View::animateWithDuration(Instant duration, const std::function<void()>& animations) {
    const Animating animating(duration);
    animations();
}

void View::travelFrom(const Rect& earlier, Instant duration) {
    if (!isShown())
        return;
    const Instant now = MainQueue::main().now();
    // Starts at the frame that is shown now if an animation is in progress already.
    animation_ = FrameAnimation{animation_ ? animation_->at(now, earlier) : earlier, now, duration};
}

Rect View::shownFrame(const DrawTarget& target) const {
    return animation_ && target.isWindow ? animation_->at(MainQueue::main().now(), frame_) : frame_;
}

void View::setHidden(bool hidden) {
    if (hidden == hidden_)
        return;
    hidden_ = hidden;
    setNeedsDisplay();
    // The superview draws the area that a hidden view uncovers.
    if (const auto parent = superview())
        parent->setNeedsDisplay();
}

void View::setBackgroundColor(Color color) {
    if (color == backgroundColor_)
        return;
    backgroundColor_ = color;
    setNeedsDisplay();
}

std::shared_ptr<Window> View::window() const {
    if (const auto parent = superview())
        return parent->window();
    return rootOf_.lock();
}

void View::addSubview(const std::shared_ptr<View>& view) {
    insertSubview(view, subviews_.size());
}

void View::insertSubview(const std::shared_ptr<View>& subview, std::size_t index) {
    // A shared pointer, because the reference may be into the list that the view is removed from.
    std::shared_ptr<View> view;
    view = subview;
    view->removeFromSuperview();
    view->willMoveToSuperview(this);
    const auto position = std::min(index, subviews_.size());
    subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(position), view);
    view->superview_ = weak(this);
    view->setNeedsDisplay();
}

void View::removeFromSuperview() {
    const auto parent = superview();
    if (!parent)
        return;
    const auto self = shared(this); // the superview's list may hold the last reference
    willMoveToSuperview(nullptr);
    std::erase(parent->subviews_, self);
    superview_.reset();
    parent->setNeedsDisplay();
}

bool View::isShown() const {
    if (hidden_)
        return false;
    const auto parent = superview();
    if (parent)
        return parent->isShown();
    const auto window = rootOf_.lock();
    return window && window->isVisible();
}

std::shared_ptr<View> View::hitTest(Point point) {
    const bool inside =
        point.x >= 0 && point.y >= 0 && point.x < frame_.size.width && point.y < frame_.size.height;
    if (hidden_ || !userInteractionEnabled_ || !inside)
        return nullptr;
    for (std::size_t i = subviews_.size(); i > 0; --i) {
        View& subview = *subviews_[i - 1];
        const Point origin = subview.frame_.origin;
        if (auto hit = subview.hitTest({point.x - origin.x, point.y - origin.y}))
            return hit;
    }
    return shared(this);
}

Point View::convertFromWindow(Point point) const {
    // The root view has the window's origin.
    if (const auto parent = superview()) {
        const Point outer = parent->convertFromWindow(point);
        return {outer.x - frame_.origin.x, outer.y - frame_.origin.y};
    }
    return point;
}

void View::addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer) {
    if (const auto earlier = recognizer->view())
        earlier->removeGestureRecognizer(recognizer);
    recognizer->view_ = weak(this);
    gestures_.add(recognizer);
}

void View::removeGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer) {
    // A shared pointer, because the argument may be an element of the list.
    std::shared_ptr<GestureRecognizer> kept;
    kept = recognizer;
    if (kept->view().get() != this)
        return;
    gestures_.remove(kept);
    kept->view_.reset();
}

void View::willMoveToSuperview(View* /*newSuperview*/) {}

void View::layoutIfNeeded() {
    for (const auto& constraint : activeConstraints_)
        constraint->apply(*this);
    for (const auto& subview : subviews_)
        subview->layoutIfNeeded();
}

void View::setNeedsDisplay() {
    needsDisplay_ = true;
    MainQueue::main().wakeUp();
}

bool View::needsDisplay() const {
    if (hidden_)
        return false;
    return needsDisplay_ ||
           std::any_of(subviews_.begin(), subviews_.end(),
                       [](const auto& subview) { return subview->needsDisplay(); });
}

void View::forgetNeedsDisplay() {
    if (hidden_)
        return;
    needsDisplay_ = false;
    for (const auto& subview : subviews_)
        subview->forgetNeedsDisplay();
}

void View::draw(const DrawTarget& target) {
    if (hidden_)
        return;
    if (!isCoveredBySubview())
        drawContent(target);
    for (const auto& subview : subviews_)
        subview->draw(targetOfSubview(*subview, target));
    if (!animation_ || !target.isWindow)
        return;
    if (animation_->isOver(MainQueue::main().now()))
        animation_.reset();
    else
        setNeedsDisplay();
}

DrawTarget View::targetOfSubview(const View& subview, const DrawTarget& target) {
    // Edges are rounded instead of sizes, so that there is no gap between neighbours.
    const auto px = [&](double points) {
        return static_cast<int>(std::lround(points * target.scale));
    };
    const Rect frame = subview.shownFrame(target);
    const int left = px(frame.origin.x);
    const int right = px(frame.origin.x + frame.size.width);
    const int top = px(frame.origin.y);
    const int bottom = px(frame.origin.y + frame.size.height);
    const RectPx& area = target.area;
    return {target.framebuffer,
            {area.x + left, area.y + area.height - bottom, right - left, bottom - top},
            target.scale,
            target.isWindow};
}

void View::drawContent(const DrawTarget& target) {
    if (backgroundColor_.alpha == 0)
        return;
    glBindFramebuffer(GL_FRAMEBUFFER, target.framebuffer);
    glEnable(GL_SCISSOR_TEST);
    glScissor(target.area.x, target.area.y, target.area.width, target.area.height);
    glClearColor(backgroundColor_.red, backgroundColor_.green, backgroundColor_.blue,
                 backgroundColor_.alpha);
    glClear(GL_COLOR_BUFFER_BIT);
}

bool View::coversItsFrame() const {
    return backgroundColor_.alpha == 1;
}

bool View::isCoveredBySubview() const {
    return std::any_of(subviews_.begin(), subviews_.end(), [&](const auto& subview) {
        return !subview->hidden_ && !subview->animation_ && subview->frame_ == bounds() &&
               subview->coversItsFrame();
    });
}

} // namespace platform
