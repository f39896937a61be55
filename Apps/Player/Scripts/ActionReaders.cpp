#include "Apps/Player/Scripts/ActionReaders.h"

#include "Apps/Player/Contents/HotSpots.h"
#include "Apps/Player/Scripts/ActionNames.h"
#include "Apps/Player/Scripts/TouchReaders.h"
#include "Apps/Player/Terminal/DisplayModeNames.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <string_view>

namespace {

using Actions = std::vector<Action>;
using What = decltype(Action::what);

constexpr double kLargestSide = 16384;
/// The tolerance for the length of a quaternion, because sensors do not normalise exactly.
constexpr double kUnitTolerance = 1e-3;

What readMode(const ActionLine& line) {
    const std::string name = line.text("mode");
    const auto mode = displayModeNamed(name);
    if (!mode)
        throw LineRefused("unknown mode \"" + name + "\"");
    return ModeAction{*mode};
}

What readResize(const ActionLine& line) {
    const auto sides = line.numbers("resize", 2, "[width, height]");
    const auto [smaller, larger] = std::minmax(sides[0], sides[1]);
    if (smaller < 1 || larger > kLargestSide)
        throw LineRefused("\"resize\" is not between 1 and 16384 points a side");
    return ResizeAction{{sides[0], sides[1]}};
}

What readOrientation(const ActionLine& line) {
    const double number = line.number("orientation");
    if (number != 1 && number != 2 && number != 3 && number != 4)
        throw LineRefused("\"orientation\" is not 1, 2, 3 or 4");
    return OrientationAction{static_cast<platform::InterfaceOrientation>(number)};
}

/// Reads an attitude and normalises it. A quaternion whose length is 1 within the tolerance is kept
/// bit for bit.
What readAttitude(const ActionLine& line) {
    const auto q = line.numbers("attitude", 4, "[x, y, z, w]");
    const double length = std::hypot(std::hypot(q[0], q[1]), std::hypot(q[2], q[3]));
    if (!(length >= kUnitTolerance && std::isfinite(length)))
        throw LineRefused("\"attitude\" is not a rotation: its length is close to 0 or not finite");
    const double divisor = std::abs(length - 1) < kUnitTolerance ? 1 : length;
    return AttitudeAction{{q[0] / divisor, q[1] / divisor, q[2] / divisor, q[3] / divisor}};
}

What readSphericalOffset(const ActionLine& line) {
    const auto radians = static_cast<float>(line.number("spherical_offset"));
    if (!std::isfinite(radians))
        throw LineRefused("\"spherical_offset\" is not a number");
    return SphericalOffsetAction{radians};
}

What readHotSpotsOf(const ActionLine& line) {
    return readHotSpots(line, line.folder());
}

What readSnapshot(const ActionLine& line) {
    const std::string name = line.text("snapshot");
    const std::filesystem::path path(name);
    const bool leaves =
        std::any_of(path.begin(), path.end(), [](const auto& part) { return part == ".."; });
    if (path.is_absolute() || leaves || path.extension() != ".png")
        throw LineRefused("\"" + name +
                          "\" is not the name of a .png file inside the output folder");
    return SnapshotAction{name};
}

double readFinite(const ActionLine& line, const char* key) {
    const double number = line.number(key);
    if (!std::isfinite(number))
        throw LineRefused("\"" + std::string(key) + "\" is not a number");
    return number;
}

What readSeek(const ActionLine& line) {
    return SeekAction{readFinite(line, "seek")};
}

What readVolume(const ActionLine& line) {
    const double volume = readFinite(line, "volume");
    if (volume < 0 || volume > 1)
        throw LineRefused("\"volume\" is not between 0 and 1");
    return VolumeAction{volume};
}

/// The entry of a table whose name is a member of the line. The line is known to have one.
template <class Names>
const auto& namedIn(const Names& names, const ActionLine& line) {
    return *std::find_if(names.begin(), names.end(),
                         [&line](const auto& entry) { return line.has(std::string(entry.first)); });
}

What readContent(const ActionLine& line) {
    const auto& [name, kind] = namedIn(kContentNames, line);
    const std::string input = line.text(std::string(name));
    if (input.empty())
        throw LineRefused("\"" + std::string(name) + "\" names nothing");
    const bool isAddress = input.find("://") != std::string::npos;
    return ContentAction{kind, isAddress ? input
                                         : (std::filesystem::path(line.folder()) / input).string()};
}

What readCommand(const ActionLine& line) {
    const auto& [name, command] = namedIn(kCommandNames, line);
    if (!line.flag(std::string(name)))
        throw LineRefused("\"" + std::string(name) + "\" is not true");
    return command;
}

template <What (*read)(const ActionLine&)>
Actions readOne(const ActionLine& line) {
    return {{line.at(), read(line)}};
}

struct ActionKind {
    std::string_view key;
    /// The members allowed beside the key and "at".
    std::vector<std::string_view> members;
    Actions (*read)(const ActionLine&);
};

What readSwitch(const ActionLine& line) {
    const auto& [name, which] = namedIn(kSwitchNames, line);
    return SwitchAction{which, line.flag(std::string(name))};
}

std::vector<ActionKind> makeKinds() {
    std::vector<ActionKind> kinds{
        {"touch", {"id", "x", "y", "mouse"}, readTouch},
        {"tap", {}, readTap},
        {"pinch", {"center", "over"}, readPinch},
        {"mode", {}, readOne<readMode>},
        {"resize", {}, readOne<readResize>},
        {"orientation", {}, readOne<readOrientation>},
        {"attitude", {}, readOne<readAttitude>},
        {"spherical_offset", {}, readOne<readSphericalOffset>},
        {"hot_spots", {"picking_point", "reject_rate"}, readOne<readHotSpotsOf>},
        {"seek", {}, readOne<readSeek>},
        {"volume", {}, readOne<readVolume>},
        {"snapshot", {}, readOne<readSnapshot>},
    };
    for (const auto& [name, which] : kSwitchNames)
        kinds.push_back({name, {}, readOne<readSwitch>});
    for (const auto& [name, kind] : kContentNames)
        kinds.push_back({name, {}, readOne<readContent>});
    for (const auto& [name, command] : kCommandNames)
        kinds.push_back({name, {}, readOne<readCommand>});
    return kinds;
}

const std::vector<ActionKind>& allKinds() {
    static const std::vector<ActionKind> kinds = makeKinds();
    return kinds;
}

const ActionKind* kindNamed(const std::string& key) {
    const auto& kinds = allKinds();
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&key](const ActionKind& kind) { return kind.key == key; });
    return found == kinds.end() ? nullptr : &*found;
}

const ActionKind& kindOf(const ActionLine& line) {
    const ActionKind* found = nullptr;
    std::string unknown;
    for (const auto& [key, value] : line.object().items()) {
        const ActionKind* const kind = kindNamed(key);
        if (kind && found)
            throw LineRefused("more than one action in a line");
        if (kind)
            found = kind;
        else if (key != "at")
            unknown = key;
    }
    if (!found)
        throw LineRefused(unknown.empty() ? "no action" : "unknown action \"" + unknown + "\"");
    return *found;
}

void refuseOtherMembers(const ActionLine& line, const ActionKind& kind) {
    for (const auto& [key, value] : line.object().items()) {
        const auto& members = kind.members;
        const bool known = key == "at" || key == kind.key ||
                           std::find(members.begin(), members.end(), key) != members.end();
        if (!known)
            throw LineRefused("\"" + std::string(kind.key) + "\" knows no \"" + key + "\"");
    }
}

} // namespace

Actions readActions(const ActionLine& line) {
    const ActionKind& kind = kindOf(line);
    refuseOtherMembers(line, kind);
    return kind.read(line);
}
