#include "Platform/Interface/Window.h"

#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Interface/ViewController.h"

#include <cmath>
#include <utility>

namespace platform {
namespace {

/// A window is opaque unless its root view is transparent. Blending leaves alpha values below 1 in
/// the framebuffer even so.
void makeOpaque(PixelStorage& pixels) {
    for (std::size_t i = 3; i < pixels.size(); i += 4)
        pixels.bytes[i] = 255;
}

/// Holds the host's framebuffer for the duration of a pass, even if the pass throws.
class PassTarget {
public:
    PassTarget(std::optional<DrawTarget>& inHand, const DrawTarget& target) : inHand_(inHand) {
        inHand_ = target;
    }
    ~PassTarget() { inHand_.reset(); }
    PassTarget(const PassTarget&) = delete;
    PassTarget& operator=(const PassTarget&) = delete;

private:
    std::optional<DrawTarget>& inHand_;
};

} // namespace

void Window::setRootViewController(const std::shared_ptr<ViewController>& controller) {
    // A shared pointer, because the host may release its own reference when the view disappears.
    std::shared_ptr<ViewController> next;
    next = controller;
    resignVisible();
    if (controller_)
        controller_->view()->rootOf_.reset();
    controller_ = next;
    if (!controller_)
        return;
    controller_->view()->rootOf_ = weak(this);
    layout();
}

void Window::makeKeyAndVisible() {
    if (!controller_ || visible_)
        return;
    const auto appearing = controller_; // these calls may make the host release or replace it
    appearing->viewWillAppear(false);
    if (controller_ != appearing)
        return;
    layout();
    visible_ = true;
    appearing->view()->setNeedsDisplay();
    appearing->viewDidAppear(false);
}

void Window::resignVisible() {
    // In these calls the host may remove the controller, which leads back to this function.
    if (!controller_ || !visible_ || isDisappearing_)
        return;
    const auto disappearing = controller_;
    isDisappearing_ = true;
    touches_.cancelTouches();
    disappearing->viewWillDisappear(false);
    visible_ = false;
    isDisappearing_ = false;
    disappearing->viewDidDisappear(false);
}

void Window::layout() {
    if (!controller_)
        return;
    controller_->view()->setFrame(Screen::mainScreen().bounds());
    controller_->view()->layoutIfNeeded();
}

void Window::setNeedsDisplay() {
    if (controller_)
        controller_->view()->setNeedsDisplay();
}

void Window::touch(const TouchEvent& event) {
    if (controller_ && visible_)
        touches_.dispatch(event, controller_->view());
}

bool Window::isTransparent() const {
    return controller_ && controller_->view()->backgroundColor().alpha < 1;
}

bool Window::needsDisplay() const {
    return visible_ && controller_ && controller_->view()->needsDisplay();
}

bool Window::shows(const View& view) const {
    const auto parent = view.superview();
    return !view.isHidden() && (parent ? shows(*parent) : visible_);
}

void Window::displayAtOnce(View& view) {
    if (!shows(view))
        return; // its request stays pending until it is shown
    if (const auto target = passTarget_ ? targetOf(view) : std::nullopt) {
        view.forgetNeedsDisplay();
        view.draw(*target);
        return;
    }
    atOnce_ = true;
    MainQueue::main().wakeUp();
}

std::optional<DrawTarget> Window::targetOf(const View& view) const {
    if (&view == controller_->view().get())
        return passTarget_;
    const auto parent = view.superview();
    const auto outer = parent ? targetOf(*parent) : std::nullopt;
    if (!outer)
        return std::nullopt;
    return View::targetOfSubview(view, *outer);
}

void Window::draw(const DrawTarget& target) {
    if (!controller_ || !visible_)
        return;
    atOnce_ = false;
    const PassTarget pass(passTarget_, target);
    controller_->view()->forgetNeedsDisplay();
    controller_->view()->draw(target);
}

Result<ImagePtr> Window::snapshot(double scale) {
    if (!controller_ || !GLDevice::main().isInstalled())
        return Error{ErrorCode::Unavailable, "there is no view to draw"};
    GLDevice::main().makeCurrent();
    const Size points = Screen::mainScreen().bounds().size;
    const SizePx size{static_cast<int>(std::lround(points.width * scale)),
                      static_cast<int>(std::lround(points.height * scale))};
    auto target = OffscreenTarget::create(size);
    if (!target)
        return target.error();
    View& root = *controller_->view();
    root.draw({target.value()->framebuffer(), {0, 0, size.width, size.height}, scale, false});
    PixelStorage pixels = target.value()->readPixels();
    if (!isTransparent())
        makeOpaque(pixels);
    return ImagePtr(std::make_shared<Image>(std::move(pixels), scale));
}

} // namespace platform
