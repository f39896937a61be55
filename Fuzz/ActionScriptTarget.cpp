#include "Apps/Player/Scripts/ActionScript.h"
#include "Apps/Player/Scripts/ActionWriter.h"
#include "Fuzz/Property.h"
#include "Fuzz/Targets.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace fuzz {
namespace {

using Actions = std::vector<Action>;

/// Longer scripts are not written again: a line of forty bytes may yield seventy thousand touches.
constexpr std::size_t kMostWritten = 5'000;

platform::Result<Actions> read(const std::string& text) {
    std::istringstream stream(text);
    return readActionScript(stream, "script");
}

std::int64_t* touchIdOf(Action& action) {
    auto* const touch = std::get_if<TouchAction>(&action.what);
    return touch ? &touch->event.id : nullptr;
}

/// A gesture's fingers have ids that no line can contain; they get other ids here.
void renameOwnTouches(Actions& actions) {
    constexpr std::int64_t leastSaid = -(std::int64_t{1} << 53);
    std::set<std::int64_t> said;
    for (Action& action : actions) {
        if (const auto* const id = touchIdOf(action); id && *id > leastSaid)
            said.insert(*id);
    }
    std::map<std::int64_t, std::int64_t> renamed;
    std::int64_t next = 0;
    for (Action& action : actions) {
        auto* const id = touchIdOf(action);
        if (!id || *id > leastSaid)
            continue;
        const auto [entry, isNew] = renamed.try_emplace(*id);
        while (isNew && said.contains(next))
            ++next;
        if (isNew)
            entry->second = next++;
        *id = entry->second;
    }
}

std::string written(const Actions& actions) {
    std::string text;
    for (const Action& action : actions) {
        nlohmann::ordered_json line = describeAction(action.what);
        line["at"] = action.at;
        text += line.dump() + "\n";
    }
    return text;
}

void checkTimes(const Actions& actions) {
    require(std::is_sorted(actions.begin(), actions.end(),
                           [](const Action& a, const Action& b) { return a.at < b.at; }),
            "actions are in time order");
    require(std::all_of(actions.begin(), actions.end(),
                        [](const Action& a) { return std::isfinite(a.at) && a.at >= 0; }),
            "times are numbers from 0 on");
}

/// Touches are consistent: no down without an up before the next down, and no event of a finger
/// that is not down.
void checkTouches(Actions& actions) {
    std::set<std::int64_t> down;
    for (Action& action : actions) {
        const auto* const id = touchIdOf(action);
        if (!id)
            continue;
        const platform::TouchPhase phase = std::get<TouchAction>(action.what).event.phase;
        require(down.contains(*id) == (phase != platform::TouchPhase::Down),
                "a touch goes down once and moves and ends only then");
        if (phase == platform::TouchPhase::Down)
            down.insert(*id);
        else if (phase != platform::TouchPhase::Move)
            down.erase(*id);
    }
}

void checkWrittenAgain(Actions actions) {
    renameOwnTouches(actions);
    const std::string text = written(actions);
    const auto again = read(text);
    require(again.ok(), "what was read can be written and read again: " +
                            (again ? "" : again.error().detail + " in\n" + text));
    require(written(again.value()) == text, "written and read again, it is the same: " + text);
}

} // namespace

void checkActionScript(Bytes input) {
    auto script = read(std::string(input.begin(), input.end()));
    if (!script)
        return requireReadable(script.error(), "script:");
    checkTimes(script.value());
    checkTouches(script.value());
    if (script.value().size() <= kMostWritten)
        checkWrittenAgain(std::move(script).value());
}

} // namespace fuzz
