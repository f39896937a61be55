#include "Apps/Player/Contents/HotSpots.h"

#include "Apps/Player/Terminal/Message.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <utility>
#include <vector>

namespace {

/// The number of picking colours.
constexpr std::size_t kMostToldApart = 206;

float finite(const Members& members, const std::string& name) {
    const auto value = static_cast<float>(members.number(name));
    if (!std::isfinite(value))
        throw LineRefused(members.nameOf(name) + " is not a number");
    return value;
}

/// Returns 1 if the member is missing.
float factor(const Members& members, const std::string& name) {
    const float value = members.has(name) ? finite(members, name) : 1;
    if (value <= 0)
        throw LineRefused(members.nameOf(name) + " is not above 0");
    return value;
}

HotSpot readHotSpot(const Members& spot, const std::string& folder) {
    spot.allowOnly({"name", "image", "vertical", "horizontal", "scale", "x", "y"});
    return {.name = spot.has("name") ? spot.text("name") : "",
            .image = (std::filesystem::path(folder) / spot.text("image")).string(),
            .vertical = finite(spot, "vertical"),
            .horizontal = finite(spot, "horizontal"),
            .scale = factor(spot, "scale"),
            .x = factor(spot, "x"),
            .y = factor(spot, "y")};
}

platform::Point readPickingPoint(const Members& members) {
    constexpr const char* shape = "[x, y], each from 0 to 1";
    const auto place = members.numbers("picking_point", 2, shape);
    const auto [smaller, larger] = std::minmax(place[0], place[1]);
    if (smaller < 0 || larger > 1)
        throw LineRefused(members.nameOf("picking_point") + " is not " + shape);
    return {place[0], place[1]};
}

std::shared_ptr<ZNTHotSpot> makeHotSpot(const HotSpot& spot, const platform::ImagePtr& image) {
    auto made = ZNTHotSpot::hotSpotWithTextureImage(image, spot.vertical, spot.horizontal);
    made->setHotSpotName(spot.name);
    made->setScale(spot.scale);
    made->setXTransform(spot.x);
    made->setYTransform(spot.y);
    return made;
}

} // namespace

HotSpotsAction readHotSpots(const Members& members, const std::string& folder) {
    HotSpotsAction action;
    for (const Members& spot : members.objects("hot_spots"))
        action.hotSpots.push_back(readHotSpot(spot, folder));
    if (members.has("picking_point"))
        action.pickingPoint = readPickingPoint(members);
    if (members.has("reject_rate"))
        action.rejectRate = members.integer("reject_rate");
    if (action.rejectRate < 1)
        throw LineRefused(members.nameOf("reject_rate") + " is below 1");
    return action;
}

void addHotSpots(ZNTDisplayViewController& controller, const HotSpotsAction& action) {
    const auto& all = action.hotSpots;
    if (all.size() > kMostToldApart)
        tell("only the first " + std::to_string(kMostToldApart) + " of " +
             std::to_string(all.size()) + " hot spots can be told apart when they are picked");
    std::map<std::string, platform::ImagePtr> images; // each file is read once
    std::vector<std::shared_ptr<ZNTHotSpot>> made;
    for (const HotSpot& spot : all) {
        const auto [entry, isNew] = images.try_emplace(spot.image);
        if (isNew)
            entry->second = platform::Image::imageWithContentsOfFile(spot.image);
        made.push_back(makeHotSpot(spot, entry->second));
    }
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(action.pickingPoint.x,
                                                                        action.pickingPoint.y);
    point->setRejectRate(action.rejectRate);
    point->markSBSModeActive(controller.currentMode() == DisplayMode::SideBySide);
    controller.addHotSpots(made, point);
}

void refreshHotSpots(ZNTDisplayViewController& controller) {
    controller.prepareDisplayView();
    const auto point = controller.hotSpotPickingPoint();
    if (controller.contentType() != ContentType::Video || !point)
        return;
    // A new picking point makes the controller apply the list again.
    const auto same =
        ZNTHotSpotPickingPoint::pickingPointForXPosition(point->hKoef(), point->vKoef());
    same->setRejectRate(point->rejectRate());
    same->markSBSModeActive(point->sbsModeActive());
    controller.addHotSpots(controller.hotSpots(), same);
}
