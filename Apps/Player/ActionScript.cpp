#include "Apps/Player/ActionScript.h"

#include "Apps/Player/DisplayModeNames.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>

using nlohmann::json;

namespace {

/// Why a line is no action. Stays inside this file.
class LineRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

constexpr double kLargestSide = 16384;

double readNumber(const json& value, const char* what) {
    if (!value.is_number() || !std::isfinite(value.get<double>()))
        throw LineRefused(std::string(what) + " is not a number");
    return value.get<double>();
}

std::string readText(const json& value, const char* what) {
    if (!value.is_string())
        throw LineRefused(std::string(what) + " is not a text");
    return value.get<std::string>();
}

ModeAction readMode(const json& value) {
    const std::string name = readText(value, "\"mode\"");
    const auto mode = displayModeNamed(name);
    if (!mode)
        throw LineRefused("unknown mode \"" + name + "\"");
    return {*mode};
}

ResizeAction readResize(const json& value) {
    if (!value.is_array() || value.size() != 2)
        throw LineRefused("\"resize\" is not [width, height]");
    const platform::Size size{readNumber(value[0], "the width"),
                              readNumber(value[1], "the height")};
    const auto [smaller, larger] = std::minmax(size.width, size.height);
    if (smaller < 1 || larger > kLargestSide)
        throw LineRefused("\"resize\" is not between 1 and 16384 points a side");
    return {size};
}

OrientationAction readOrientation(const json& value) {
    const double number = readNumber(value, "\"orientation\"");
    if (number != 1 && number != 2 && number != 3 && number != 4)
        throw LineRefused("\"orientation\" is not 1, 2, 3 or 4");
    return {static_cast<platform::InterfaceOrientation>(static_cast<int>(number))};
}

TransparentAction readTransparent(const json& value) {
    if (!value.is_boolean())
        throw LineRefused("\"transparent\" is not true or false");
    return {value.get<bool>()};
}

SnapshotAction readSnapshot(const json& value) {
    const std::string name = readText(value, "\"snapshot\"");
    const std::filesystem::path path(name);
    const bool leaves =
        std::any_of(path.begin(), path.end(), [](const auto& part) { return part == ".."; });
    if (path.is_absolute() || leaves || path.extension() != ".png")
        throw LineRefused("\"" + name +
                          "\" is not the name of a .png file inside the output folder");
    return {name};
}

using Reader = decltype(Action::what) (*)(const json&);

struct ActionKind {
    std::string_view key;
    Reader read;
};

constexpr std::array<ActionKind, 5> kKinds{{
    {"mode", [](const json& value) -> decltype(Action::what) { return readMode(value); }},
    {"resize", [](const json& value) -> decltype(Action::what) { return readResize(value); }},
    {"orientation",
     [](const json& value) -> decltype(Action::what) { return readOrientation(value); }},
    {"transparent",
     [](const json& value) -> decltype(Action::what) { return readTransparent(value); }},
    {"snapshot", [](const json& value) -> decltype(Action::what) { return readSnapshot(value); }},
}};

const ActionKind& kindNamed(const std::string& key) {
    const auto* const kind = std::find_if(
        kKinds.begin(), kKinds.end(), [&](const ActionKind& known) { return known.key == key; });
    if (kind == kKinds.end())
        throw LineRefused("unknown action \"" + key + "\"");
    return *kind;
}

json parseObject(const std::string& line) {
    json object = json::parse(line, nullptr, false);
    if (object.is_discarded())
        throw LineRefused("this is not JSON");
    if (!object.is_object())
        throw LineRefused("this is not a JSON object");
    return object;
}

Action readAction(const std::string& line) {
    const json object = parseObject(line);
    std::optional<Action> action;
    for (const auto& [key, value] : object.items()) {
        if (key == "at")
            continue;
        const ActionKind& kind = kindNamed(key);
        if (action)
            throw LineRefused("more than one action in a line");
        action = Action{0, kind.read(value)};
    }
    if (!action)
        throw LineRefused("no action");
    if (!object.contains("at"))
        throw LineRefused("\"at\" is missing");
    action->at = readNumber(object["at"], "\"at\"");
    if (action->at < 0)
        throw LineRefused("\"at\" is below 0");
    return *action;
}

/// Collects actions and refuses those that do not fit what came before.
class Script {
public:
    void add(Action action) {
        if (!actions_.empty() && action.at < actions_.back().at)
            throw LineRefused("\"at\" is earlier than the line before");
        if (const auto* snapshot = std::get_if<SnapshotAction>(&action.what)) {
            const auto path = std::filesystem::path(snapshot->name).lexically_normal().string();
            if (!names_.insert(path).second)
                throw LineRefused("\"" + snapshot->name + "\" is written twice");
        }
        actions_.push_back(std::move(action));
    }
    [[nodiscard]] std::vector<Action> take() { return std::move(actions_); }

private:
    std::vector<Action> actions_;
    std::set<std::string> names_;
};

} // namespace

platform::Result<std::vector<Action>> readActionScript(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return platform::Error{platform::ErrorCode::Missing, path + ": there is no such file"};
    std::ifstream file(path);
    if (!file || std::filesystem::is_directory(path, ignored))
        return platform::Error{platform::ErrorCode::Unreadable, path + ": cannot be read"};
    return readActionScript(file, path);
}

platform::Result<std::vector<Action>> readActionScript(std::istream& stream,
                                                       const std::string& name) {
    Script script;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        try {
            script.add(readAction(line));
        } catch (const LineRefused& refused) {
            return platform::Error{platform::ErrorCode::Corrupt,
                                   name + ":" + std::to_string(number) + ": " + refused.what()};
        }
    }
    return script.take();
}
