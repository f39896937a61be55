#include "Apps/Player/Contents/HotSpotFile.h"
#include "Apps/Player/Scripts/ActionWriter.h"
#include "Fuzz/Property.h"
#include "Fuzz/Targets.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

namespace fuzz {
namespace {

auto read(const std::string& text) {
    std::istringstream stream(text);
    return readHotSpotFile(stream, "spots");
}

std::string written(const HotSpotFile& file) {
    nlohmann::ordered_json object = describeAction(file.hotSpots);
    object["tap_detection"] = file.tapDetection;
    object["auto_picking"] = file.autoPicking;
    return object.dump();
}

bool isFactor(float value) {
    return std::isfinite(value) && value > 0;
}

bool isFraction(double value) {
    return value >= 0 && value <= 1;
}

void checkValues(const HotSpotsAction& action) {
    require(std::all_of(action.hotSpots.begin(), action.hotSpots.end(),
                        [](const HotSpot& spot) {
                            return std::isfinite(spot.vertical) && std::isfinite(spot.horizontal) &&
                                   isFactor(spot.scale) && isFactor(spot.x) && isFactor(spot.y);
                        }),
            "angles are numbers, factors are above 0");
    require(isFraction(action.pickingPoint.x) && isFraction(action.pickingPoint.y),
            "the picking point is on the screen");
    require(action.rejectRate >= 1, "the reject rate is 1 or more");
}

} // namespace

void checkHotSpots(Bytes input) {
    const auto file = read(std::string(input.begin(), input.end()));
    if (!file)
        return requireReadable(file.error(), "spots:");
    checkValues(file.value()->hotSpots);
    const std::string text = written(*file.value());
    const auto again = read(text);
    require(again.ok(), "what was read can be written and read again: " + text);
    require(written(*again.value()) == text, "written and read again, it is the same: " + text);
}

} // namespace fuzz
