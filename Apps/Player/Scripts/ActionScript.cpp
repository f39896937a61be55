#include "Apps/Player/Scripts/ActionScript.h"

#include "Apps/Player/Scripts/ActionLine.h"
#include "Apps/Player/Scripts/ActionReaders.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <utility>

using platform::TouchPhase;

namespace {

/// Enough for nine hours of a finger that moves in every frame. The limit is needed because a line
/// of a few bytes can yield tens of thousands of actions.
constexpr std::size_t kMostActions = 2'000'000;

/// Collects the actions of all lines and rejects lines that contradict earlier ones.
class Script {
public:
    void add(const ActionLine& line) {
        std::vector<Action> actions = readActions(line);
        if (line.at() < latestLine_)
            throw LineRefused("\"at\" is earlier than the line before");
        latestLine_ = line.at();
        if (actions_.size() + actions.size() > kMostActions)
            throw LineRefused("the script is too long: over " + std::to_string(kMostActions) +
                              " actions and touches of gestures");
        for (Action& action : actions) {
            if (const auto* snapshot = std::get_if<SnapshotAction>(&action.what))
                checkName(*snapshot);
            if (const auto* touch = std::get_if<TouchAction>(&action.what))
                checkTouch(touch->event);
            actions_.push_back(std::move(action));
        }
    }

    /// Returns the actions in time order: a gesture may overlap with later lines.
    [[nodiscard]] std::vector<Action> take() {
        std::stable_sort(actions_.begin(), actions_.end(),
                         [](const Action& a, const Action& b) { return a.at < b.at; });
        return std::move(actions_);
    }

private:
    void checkName(const SnapshotAction& snapshot) {
        const auto path = std::filesystem::path(snapshot.name).lexically_normal().string();
        if (!names_.insert(path).second)
            throw LineRefused("\"" + snapshot.name + "\" is written twice");
    }

    void checkTouch(const platform::TouchEvent& event) {
        const bool isDown = down_.contains(event.id);
        if (event.phase == TouchPhase::Down && isDown)
            throw LineRefused("touch " + std::to_string(event.id) + " is down already");
        if (event.phase != TouchPhase::Down && !isDown)
            throw LineRefused("touch " + std::to_string(event.id) + " is not down");
        if (event.phase == TouchPhase::Down)
            down_.insert(event.id);
        else if (event.phase != TouchPhase::Move)
            down_.erase(event.id);
    }

    std::vector<Action> actions_;
    double latestLine_ = 0;
    std::set<std::string> names_;
    std::set<std::int64_t> down_;
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
    const std::string folder = std::filesystem::path(name).parent_path().string();
    Script script;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        try {
            script.add(ActionLine(line, number, folder));
        } catch (const LineRefused& refused) {
            return platform::Error{platform::ErrorCode::Corrupt,
                                   name + ":" + std::to_string(number) + ": " + refused.what()};
        }
    }
    return script.take();
}
