#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"

#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/NotificationCenter.h"

#include <utility>

namespace {

class Observer final : public platform::Object {};

platform::ImagePtr grey() {
    return flatPicture(64, 32, 120, 120, 120);
}

} // namespace

SelectionListener::SelectionListener()
    : observer_(platform::make<Observer>()),
      selections_(std::make_shared<std::vector<Selection>>()) {
    platform::NotificationCenter::defaultCenter().addObserver(
        observer_, ZNTHotSpotDrawerDetectHotSpotSelection,
        [selections = selections_](const platform::Notification& notification) {
            selections->push_back(
                {notification.value<std::string>(ZNTHotSpotDrawerHotSpotNameKey, "(none)"),
                 notification.value<std::int64_t>(ZNTHotSpotDrawerHotSpotIndexKey, -1),
                 notification.value<bool>(ZNTHotSpotDrawerTapKey)});
        });
}

SelectionListener::~SelectionListener() {
    platform::NotificationCenter::defaultCenter().removeObserver(observer_.get());
}

std::vector<Selection> SelectionListener::take() {
    return std::exchange(*selections_, {});
}

WhenPosted::WhenPosted(const char* name, std::function<void()> act)
    : observer_(platform::make<Observer>()) {
    platform::NotificationCenter::defaultCenter().addObserver(
        observer_, name, [act = std::move(act)](const auto&) { act(); });
}

WhenPosted::~WhenPosted() {
    platform::NotificationCenter::defaultCenter().removeObserver(observer_.get());
}

HotSpotScene::HotSpotScene(platform::Size size, double scale) : HeadlessPlayer(size, scale) {
    show(grey());
}

HotSpotScene::HotSpotScene(const platform::ImagePtr& content) : HeadlessPlayer({320, 180}) {
    show(content);
}

void HotSpotScene::showSpots(const ZNTHotSpotDrawer::HotSpots& spots,
                             const std::shared_ptr<ZNTHotSpotPickingPoint>& point) {
    controller().addHotSpots(spots, point);
    controller().prepareDisplayView();
    host().settle();
}

ZNTHotSpotDrawer& HotSpotScene::drawer() {
    return *view().glDrawer()->hotSpotGLDrawer();
}

void HotSpotScene::advance(double seconds) {
    host().advanceTo(host().now() + platform::fromSeconds(seconds));
}

std::shared_ptr<ZNTHotSpot> spotAt(float vertical, float horizontal, const std::string& name) {
    auto spot =
        ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), vertical, horizontal);
    spot->setHotSpotName(name);
    return spot;
}
