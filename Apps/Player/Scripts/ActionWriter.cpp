#include "Apps/Player/Scripts/ActionWriter.h"

#include "Apps/Player/Scripts/ActionNames.h"
#include "Apps/Player/Terminal/DisplayModeNames.h"

#include <algorithm>
#include <string_view>

using nlohmann::ordered_json;

namespace {

/// The name of a value in a table; every value of these enumerations has one.
template <typename Names, typename Value>
std::string_view nameOf(const Names& names, Value value) {
    return std::find_if(names.begin(), names.end(),
                        [value](const auto& entry) { return entry.second == value; })
        ->first;
}

struct Describe {
    ordered_json operator()(const ModeAction& action) const {
        return {{"mode", nameOf(kDisplayModeNames, action.mode)}};
    }
    ordered_json operator()(const ResizeAction& action) const {
        return {{"resize", {action.size.width, action.size.height}}};
    }
    ordered_json operator()(const OrientationAction& action) const {
        return {{"orientation", static_cast<int>(action.orientation)}};
    }
    ordered_json operator()(const AttitudeAction& action) const {
        const platform::Attitude& q = action.attitude;
        return {{"attitude", {q.x, q.y, q.z, q.w}}};
    }
    ordered_json operator()(const SwitchAction& action) const {
        return {{std::string(nameOf(kSwitchNames, action.which)), action.on}};
    }
    ordered_json operator()(const SphericalOffsetAction& action) const {
        return {{"spherical_offset", action.radians}};
    }
    ordered_json operator()(const HotSpotsAction& action) const {
        ordered_json spots = ordered_json::array();
        for (const HotSpot& spot : action.hotSpots)
            spots.push_back({{"name", spot.name},
                             {"image", spot.image},
                             {"vertical", spot.vertical},
                             {"horizontal", spot.horizontal},
                             {"scale", spot.scale},
                             {"x", spot.x},
                             {"y", spot.y}});
        return {{"hot_spots", spots},
                {"picking_point", {action.pickingPoint.x, action.pickingPoint.y}},
                {"reject_rate", action.rejectRate}};
    }
    ordered_json operator()(const TouchAction& action) const {
        const platform::TouchEvent& event = action.event;
        ordered_json line{{"touch", nameOf(kPhaseNames, event.phase)},
                          {"id", event.id},
                          {"x", event.location.x},
                          {"y", event.location.y}};
        if (event.kind == platform::TouchKind::Mouse)
            line["mouse"] = true;
        return line;
    }
    ordered_json operator()(const ContentAction& action) const {
        return {{std::string(nameOf(kContentNames, action.kind)), action.input}};
    }
    ordered_json operator()(const SeekAction& action) const { return {{"seek", action.seconds}}; }
    ordered_json operator()(const VolumeAction& action) const {
        return {{"volume", action.volume}};
    }
    ordered_json operator()(CommandAction action) const {
        return {{std::string(nameOf(kCommandNames, action)), true}};
    }
    ordered_json operator()(const SnapshotAction& action) const {
        return {{"snapshot", action.name}};
    }
};

} // namespace

ordered_json describeAction(const decltype(Action::what)& what) {
    return std::visit(Describe{}, what);
}
