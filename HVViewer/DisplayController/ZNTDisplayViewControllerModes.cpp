// The controller's display modes: which views show the content, their layout, and how the user can
// look around in them.

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Interface/LayoutConstraint.h"

#include <cmath>

namespace {

// Options that align views perpendicularly to the axis of their row.
constexpr unsigned kAlignTopAndBottom = 24;
constexpr unsigned kAlignLeadingAndTrailing = 96;
constexpr unsigned kAlignCenterY = 1024;

constexpr platform::Instant kLayoutTime = std::chrono::milliseconds(300);

using ViewsByName = std::map<std::string, std::shared_ptr<platform::View>>;

void append(std::vector<std::shared_ptr<platform::LayoutConstraint>>& constraints,
            const char* format, unsigned options, const ViewsByName& views) {
    const auto more =
        platform::LayoutConstraint::constraintsWithVisualFormat(format, options, views);
    constraints.insert(constraints.end(), more.begin(), more.end());
}

} // namespace

void ZNTDisplayViewController::createDisplayView() {
    displayView_ = platform::make<ZNTDisplayView>(view()->frame());
    view()->insertSubview(displayView_, 0);
    displayView_->setTranslatesAutoresizingMaskIntoConstraints(false);
    const ViewsByName views{{"hvView", displayView_}};
    append(singleModeConstraints_, "V:|[hvView]|", kAlignTopAndBottom, views);
    append(singleModeConstraints_, "H:|[hvView]|", kAlignLeadingAndTrailing, views);
    updateConsraints();
}

void ZNTDisplayViewController::createVirtualDisplayView() {
    virtualDisplayView_ = platform::make<ZNTDisplayView>(view()->frame());
    virtualDisplayView_->setTranslatesAutoresizingMaskIntoConstraints(false);
    view()->insertSubview(virtualDisplayView_, 0);
    virtualDisplayView_->setHidden(true);
    const ViewsByName views{
        {"hvView", displayView_}, {"virtualHvView", virtualDisplayView_}, {"superview", view()}};
    append(virtualModeConstraints_, "V:|[hvView]|", kAlignTopAndBottom, views);
    append(virtualModeConstraints_, "V:|[virtualHvView]|", kAlignTopAndBottom, views);
    append(virtualModeConstraints_, "|[hvView(==virtualHvView)]-2-[virtualHvView]|", kAlignCenterY,
           views);
    updateConsraints();
}

void ZNTDisplayViewController::updateConsraints() {
    const bool isDouble = currentMode_ == DisplayMode::SideBySide;
    const Constraints& on = isDouble ? virtualModeConstraints_ : singleModeConstraints_;
    const Constraints& off = isDouble ? singleModeConstraints_ : virtualModeConstraints_;
    view()->layoutIfNeeded();
    platform::View::animateWithDuration(kLayoutTime, [&] {
        platform::LayoutConstraint::deactivateConstraints(off);
        platform::LayoutConstraint::activateConstraints(on);
        view()->layoutIfNeeded();
    });
}

void ZNTDisplayViewController::setDisplayMode(DisplayMode mode) {
    const platform::Environment::Scope scope(*environment());
    if (mode == currentMode_)
        return;
    currentMode_ = mode;
    if (hotSpotPickingPoint_)
        hotSpotPickingPoint_->markSBSModeActive(mode == DisplayMode::SideBySide);
    if (!displayView_)
        return;
    // The view may still use a previous picking point.
    if (const auto point = displayView_->shownPickingPoint())
        point->markSBSModeActive(mode == DisplayMode::SideBySide);
    if (mode == DisplayMode::SideBySide)
        showSecondView();
    else
        virtualDisplayView_->setHidden(true);
    updateConsraints();
    displayView_->display();
    displayView_->startRenderVO(mode);
}

void ZNTDisplayViewController::showSecondView() {
    virtualDisplayView_->setHidden(false);
    prepareDisplayView();
    showKeptFrame();
    virtualDisplayView_->startRenderVO(currentMode_);
    virtualDisplayView_->display();
}

void ZNTDisplayViewController::setSphericalOffset(float radians) {
    const platform::Environment::Scope scope(*environment());
    if (!std::isfinite(radians))
        return platform::log(platform::LogLevel::Error,
                             "setSphericalOffset: the offset is ignored, it is not finite");
    sphericalOffset_ = radians;
    if (!displayView_)
        return;
    displayView_->setInitialRotationOffset(radians);
    virtualDisplayView_->setInitialRotationOffset(radians);
}

void ZNTDisplayViewController::turnOnDeviceMotionInterraction(bool on) {
    const platform::Environment::Scope scope(*environment());
    if (displayView_)
        displayView_->turnOnDeviceMotionInterraction(on);
}

void ZNTDisplayViewController::turnOnTouchMotionInterraction(bool on) {
    const platform::Environment::Scope scope(*environment());
    if (displayView_)
        displayView_->turnOnTouchMotionInterraction(on);
}

void ZNTDisplayViewController::turnOnScaleInterraction(bool on) {
    const platform::Environment::Scope scope(*environment());
    if (displayView_)
        displayView_->turnOnScaleInterraction(on);
}

void ZNTDisplayViewController::setLockVerticalRotation(bool lock) {
    const platform::Environment::Scope scope(*environment());
    if (displayView_)
        displayView_->setLockVerticalRotation(lock);
}

bool ZNTDisplayViewController::lockVerticalRotation() const {
    return displayView_ && displayView_->lockVerticalRotation();
}

bool ZNTDisplayViewController::deviceMotionAvailable() const {
    const platform::Environment::Scope scope(*environment());
    return displayView_ && displayView_->deviceMotionAvailable();
}

bool ZNTDisplayViewController::deviceMotionIsOn() const {
    return displayView_ && displayView_->deviceMotionIsOn();
}

bool ZNTDisplayViewController::touchMotionIsOn() const {
    return displayView_ && displayView_->touchMotionIsOn();
}

bool ZNTDisplayViewController::scaleIsOn() const {
    return displayView_ && displayView_->scaleIsOn();
}

void ZNTDisplayViewController::setEnableTransparentBackground(bool enable) {
    const platform::Environment::Scope scope(*environment());
    enableTransparentBackground_ = enable;
    if (!displayView_)
        return;
    const platform::Color color = enable ? platform::kClearColor : platform::kBlackColor;
    view()->setBackgroundColor(color);
    displayView_->setBackgroundColor(color);
    virtualDisplayView_->setBackgroundColor(color);
    displayView_->setMakeTransparent(enable);
    virtualDisplayView_->setMakeTransparent(enable);
}
