// The controller's hot spots: the setters of the host application, and the path from a selection to
// the hook.

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Interface/TapGestureRecognizer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Truncates the number. A number out of range becomes the nearest integer, and NaN becomes 0.
std::int64_t integerOf(double number) {
    constexpr double limit = 9223372036854775808.0; // 2 to the 63rd
    if (std::isnan(number))
        return 0;
    if (number >= limit)
        return std::numeric_limits<std::int64_t>::max();
    return number < -limit ? std::numeric_limits<std::int64_t>::min()
                           : static_cast<std::int64_t>(number);
}

/// Reads a number of either type. Returns 0 for any other type and if there is no value.
std::int64_t integerValue(const platform::Notification& notification, const char* key) {
    if (const auto number = notification.value<double>(key); number != 0)
        return integerOf(number);
    return notification.value<std::int64_t>(key, notification.value<bool>(key) ? 1 : 0);
}

bool boolValue(const platform::Notification& notification, const char* key) {
    return notification.value<double>(key) != 0 || integerValue(notification, key) != 0;
}

} // namespace

void ZNTDisplayViewController::addHotSpots(
    const std::vector<std::shared_ptr<ZNTHotSpot>>& hotSpots,
    const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint) {
    const platform::Environment::Scope scope(*environment());
    hotSpots_ = hotSpots;
    hotSpotPickingPoint_ = pickingPoint;
    if (!frameBuffer_ || !displayView_)
        return;
    displayView_->displayCVPixelBuffer(frameBuffer_, pickingPoint, hotSpots);
    if (virtualDisplayView_ && currentMode_ == DisplayMode::SideBySide)
        virtualDisplayView_->displayCVPixelBuffer(frameBuffer_, pickingPoint, hotSpots);
}

void ZNTDisplayViewController::setEnableHotSpotAutoPicking(bool enable) {
    const platform::Environment::Scope scope(*environment());
    enableHotSpotAutoPicking_ = enable;
    if (displayView_)
        displayView_->setEnableAutoPicking(enable);
}

void ZNTDisplayViewController::prepareHotSpotGestures() {
    for (const auto& view : {displayView_, virtualDisplayView_}) {
        if (!view)
            continue; // not loaded yet, or a subclass did not call the base class's `viewDidLoad`
        view->addGestureRecognizer(platform::make<platform::TapGestureRecognizer>(
            [weak = weak(this)](platform::TapGestureRecognizer& recognizer) {
                if (const auto self = weak.lock())
                    self->displayViewDidDetectHotSpotTapGesture(recognizer);
            }));
    }
}

void ZNTDisplayViewController::displayViewDidDetectHotSpotTapGesture(
    const platform::TapGestureRecognizer& recognizer) {
    // The coordinates are those of the main view, even for a tap on the second view.
    const platform::Point point = recognizer.locationInView(*displayView_);
    const auto whole = [](double value) { return static_cast<int>(std::max(value, 0.0)); };
    displayView_->objectPickTestForPixelAtX(whole(point.x), whole(point.y));
}

void ZNTDisplayViewController::didDetectObjectPickingEvent(
    const platform::Notification& notification) {
    platform::MainQueue::main().async([weak = weak(this), notification] {
        const auto self = weak.lock();
        if (!self)
            return;
        self->detectPickedHotSpotObjectWithName(
            notification.value<std::string>(ZNTHotSpotDrawerHotSpotNameKey),
            integerValue(notification, ZNTHotSpotDrawerHotSpotIndexKey),
            boolValue(notification, ZNTHotSpotDrawerTapKey));
    });
}
