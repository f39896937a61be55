// The controller's hot spots: what the host attaches, and the way of a selection to its hook.

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Interface/TapGestureRecognizer.h"

#include <algorithm>

void ZNTDisplayViewController::addHotSpots(
    const std::vector<std::shared_ptr<ZNTHotSpot>>& hotSpots,
    const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint) {
    hotSpots_ = hotSpots;
    hotSpotPickingPoint_ = pickingPoint;
    if (!frameBuffer_ || !displayView_)
        return;
    displayView_->displayCVPixelBuffer(frameBuffer_, pickingPoint, hotSpots);
    if (virtualDisplayView_ && currentMode_ == DisplayMode::SideBySide)
        virtualDisplayView_->displayCVPixelBuffer(frameBuffer_, pickingPoint, hotSpots);
}

void ZNTDisplayViewController::setEnableHotSpotAutoPicking(bool enable) {
    enableHotSpotAutoPicking_ = enable;
    if (displayView_)
        displayView_->setEnableAutoPicking(enable);
}

void ZNTDisplayViewController::prepareHotSpotGestures() {
    for (const auto& view : {displayView_, virtualDisplayView_}) {
        if (!view)
            continue; // not loaded yet, or a subclass has not called `viewDidLoad`
        view->addGestureRecognizer(platform::make<platform::TapGestureRecognizer>(
            [weak = weak(this)](platform::TapGestureRecognizer& recognizer) {
                if (const auto self = weak.lock())
                    self->displayViewDidDetectHotSpotTapGesture(recognizer);
            }));
    }
}

void ZNTDisplayViewController::displayViewDidDetectHotSpotTapGesture(
    const platform::TapGestureRecognizer& recognizer) {
    // In the main view's points also for a tap on the other one.
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
            notification.value<std::int64_t>(ZNTHotSpotDrawerHotSpotIndexKey),
            notification.value<bool>(ZNTHotSpotDrawerTapKey));
    });
}
