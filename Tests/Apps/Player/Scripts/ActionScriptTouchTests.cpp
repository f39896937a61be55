#include "Apps/Player/Scripts/ActionScript.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

using platform::Point;
using platform::TouchEvent;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

platform::Result<std::vector<Action>> read(const std::string& text) {
    std::istringstream stream(text);
    return readActionScript(stream, "script");
}

std::vector<Action> actionsOf(const std::string& text) {
    auto script = read(text);
    EXPECT_TRUE(script) << (script ? "" : script.error().detail);
    return script ? std::move(script).value() : std::vector<Action>();
}

const TouchEvent& touchOf(const Action& action) {
    return std::get<TouchAction>(action.what).event;
}

/// Why the second line of a script is refused; the first has finger 1 down.
std::string refusal(const std::string& line) {
    const auto script = read("{\"at\":0.5,\"touch\":\"down\",\"id\":1,\"x\":1,\"y\":2}\n" + line);
    return script ? "accepted" : script.error().detail;
}

} // namespace

TEST(ActionScriptTouch, IsEveryPhaseOfAFinger) {
    const auto actions = actionsOf(R"({"at":0.5,"touch":"down","id":7,"x":320,"y":180.5}
{"y":-1,"x":2,"id":7,"touch":"move","at":0.5}
{"at":0.6,"touch":"up","id":7,"x":0,"y":0}
{"at":0.7,"touch":"down","id":7,"x":3,"y":4}
{"at":0.8,"touch":"cancel","id":7,"x":5,"y":6})");
    ASSERT_EQ(actions.size(), 5U);
    const std::vector<TouchPhase> phases{TouchPhase::Down, TouchPhase::Move, TouchPhase::Up,
                                         TouchPhase::Down, TouchPhase::Cancel};
    for (std::size_t i = 0; i < actions.size(); ++i) {
        EXPECT_EQ(touchOf(actions[i]).phase, phases[i]) << i;
        EXPECT_EQ(touchOf(actions[i]).id, 7) << i;
        EXPECT_EQ(touchOf(actions[i]).kind, TouchKind::Finger) << i;
    }
    EXPECT_EQ(actions[1].at, 0.5);
    EXPECT_EQ(touchOf(actions[0]).location, (Point{320, 180.5}));
    EXPECT_EQ(touchOf(actions[1]).location, (Point{2, -1}));
}

TEST(ActionScriptTouch, IsAMouseWhereItSaysSo) {
    const auto actions = actionsOf(R"({"at":0,"touch":"down","id":-1,"x":0,"y":0,"mouse":true}
{"at":0,"touch":"up","id":-1,"x":0,"y":0,"mouse":false})");
    EXPECT_EQ(touchOf(actions.at(0)).kind, TouchKind::Mouse);
    EXPECT_EQ(touchOf(actions.at(0)).id, -1);
    EXPECT_EQ(touchOf(actions.at(1)).kind, TouchKind::Finger);
}

TEST(ActionScriptTouch, TapsAtOnePlaceAndOneInstant) {
    const auto actions = actionsOf(R"({"at":0.25,"tap":[100,50]})");
    ASSERT_EQ(actions.size(), 2U);
    EXPECT_EQ(touchOf(actions[0]).phase, TouchPhase::Down);
    EXPECT_EQ(touchOf(actions[1]).phase, TouchPhase::Up);
    EXPECT_EQ(touchOf(actions[0]).id, touchOf(actions[1]).id);
    for (const Action& action : actions) {
        EXPECT_EQ(action.at, 0.25);
        EXPECT_EQ(touchOf(action).location, (Point{100, 50}));
    }
}

TEST(ActionScriptTouch, PinchesInMovesOfASixtieth) {
    const auto actions = actionsOf(R"({"at":1,"pinch":3,"center":[200,80],"over":0.05})");
    using Phase = TouchPhase;
    struct Step {
        double at;
        Phase phase;
        double distance;
    };
    const std::vector<Step> left{{1, Phase::Down, 100},
                                 {1, Phase::Move, 100},
                                 {1 + 1 / 60.0, Phase::Move, 100 * (1 + 2 / 3.0)},
                                 {1 + 2 / 60.0, Phase::Move, 100 * (1 + 4 / 3.0)},
                                 {1.05, Phase::Move, 300},
                                 {1.05, Phase::Up, 300}};
    std::size_t next = 0;
    std::set<std::int64_t> ids;
    for (const Action& action : actions) {
        ids.insert(touchOf(action).id);
        EXPECT_EQ(touchOf(action).location.y, 80);
        if (touchOf(action).id != touchOf(actions[0]).id)
            continue;
        ASSERT_LT(next, left.size());
        EXPECT_DOUBLE_EQ(action.at, left[next].at) << next;
        EXPECT_EQ(touchOf(action).phase, left[next].phase) << next;
        EXPECT_NEAR(touchOf(action).location.x, 200 - left[next].distance / 2, 1e-9) << next;
        ++next;
    }
    EXPECT_EQ(next, left.size());
    EXPECT_EQ(ids.size(), 2U);
    EXPECT_EQ(touchOf(actions.back()).location, (Point{350, 80})) << "the right finger mirrors it";
}

TEST(ActionScriptTouch, PinchesAtOnceOverNoTime) {
    const auto actions = actionsOf(R"({"at":1,"pinch":0.5,"center":[0,0],"over":0})");
    ASSERT_EQ(actions.size(), 7U) << "two down, a hold, two moves, two up";
    for (const Action& action : actions)
        EXPECT_EQ(action.at, 1);
    EXPECT_EQ(touchOf(actions[4]).location, (Point{25, 0}));
}

TEST(ActionScriptTouch, LetsOtherLinesHaveTheirTurnDuringAPinch) {
    const auto actions = actionsOf(R"({"at":1,"pinch":2,"center":[0,0],"over":1}
{"at":1.5,"mode":"plane"}
{"at":2,"snapshot":"end.png"})");
    for (std::size_t i = 1; i < actions.size(); ++i)
        EXPECT_LE(actions[i - 1].at, actions[i].at) << i;
    EXPECT_TRUE(actions.back().isSnapshot()) << "equal times keep the order of the lines";
    const auto isMode = [](const Action& action) {
        return std::holds_alternative<ModeAction>(action.what);
    };
    const auto mode = std::find_if(actions.begin(), actions.end(), isMode);
    ASSERT_NE(mode, actions.end());
    EXPECT_EQ((mode - 1)->at, 1.5);
    EXPECT_GT((mode + 1)->at, 1.5);
}

TEST(ActionScriptTouch, NeverSharesAFingerWithAnotherLine) {
    const auto actions = actionsOf(R"({"at":0,"touch":"down","id":-9007199254740991,"x":0,"y":0}
{"at":0,"touch":"down","id":9007199254740991,"x":0,"y":0}
{"at":0,"tap":[0,0]}
{"at":0,"pinch":2,"center":[0,0],"over":1}
{"at":0.5,"pinch":2,"center":[0,0],"over":1}
{"at":0.6,"tap":[0,0]})");
    std::vector<std::int64_t> downs;
    for (const Action& action : actions) {
        if (touchOf(action).phase == TouchPhase::Down)
            downs.push_back(touchOf(action).id);
    }
    EXPECT_EQ(downs.size(), 8U);
    EXPECT_EQ(std::set<std::int64_t>(downs.begin(), downs.end()).size(), downs.size());
}

TEST(ActionScriptTouch, RefusesWithFileLineAndReason) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {R"({"at":1,"touch":"press","id":1,"x":0,"y":0})", "unknown phase \"press\""},
        {R"({"at":1,"touch":3,"id":1,"x":0,"y":0})", "\"touch\" is not a text"},
        {R"({"at":1,"touch":"down","x":0,"y":0})", "\"id\" is missing"},
        {R"({"at":1,"touch":"move","id":1,"y":0})", "\"x\" is missing"},
        {R"({"at":1,"touch":"cancel","id":1,"x":0})", "\"y\" is missing"},
        {R"({"touch":"up","id":1,"x":0,"y":0})", "\"at\" is missing"},
        {R"({"at":1,"touch":"up","id":1.5,"x":0,"y":0})", "\"id\" is not an integer"},
        {R"({"at":1,"touch":"up","id":"1","x":0,"y":0})", "\"id\" is not an integer"},
        {R"({"at":1,"touch":"up","id":9007199254740992,"x":0,"y":0})", "\"id\" is not an integer"},
        {R"({"at":1,"touch":"up","id":18446744073709551615,"x":0,"y":0})",
         "\"id\" is not an integer"},
        {R"({"at":1,"touch":"up","id":1,"x":null,"y":0})", "\"x\" is not a number"},
        {R"({"at":1,"touch":"up","id":1,"x":0,"y":true})", "\"y\" is not a number"},
        {R"({"at":1,"touch":"up","id":1,"x":0,"y":0,"mouse":1})", "\"mouse\" is not true or false"},
        {R"({"at":1,"touch":"up","id":1,"x":0,"y":0,"force":1})", "\"touch\" knows no \"force\""},
        {R"({"at":1,"touch":"up","id":1,"x":0,"y":0,"tap":[0,0]})",
         "more than one action in a line"},
        {R"({"at":1,"x":1})", "unknown action \"x\""},
        {R"({"at":1,"touch":"move","id":2,"x":0,"y":0})", "touch 2 is not down"},
        {R"({"at":1,"touch":"up","id":2,"x":0,"y":0})", "touch 2 is not down"},
        {R"({"at":1,"touch":"cancel","id":2,"x":0,"y":0})", "touch 2 is not down"},
        {R"({"at":1,"touch":"down","id":1,"x":0,"y":0})", "touch 1 is down already"},
        {R"({"at":1,"tap":[100]})", "\"tap\" is not [x, y]"},
        {R"({"at":1,"tap":100})", "\"tap\" is not [x, y]"},
        {R"({"at":1,"tap":[1,1],"over":1})", "\"tap\" knows no \"over\""},
        {R"({"at":1,"pinch":2,"center":[0,0]})", "\"over\" is missing"},
        {R"({"at":1,"pinch":2,"over":1})", "\"center\" is missing"},
        {R"({"at":1,"pinch":2,"over":1,"center":[0]})", "\"center\" is not [x, y]"},
        {R"({"at":1,"pinch":"2","over":1,"center":[0,0]})", "\"pinch\" is not a number"},
        {R"({"at":1,"pinch":0,"over":1,"center":[0,0]})", "\"pinch\" is not above 0"},
        {R"({"at":1,"pinch":-2,"over":1,"center":[0,0]})", "\"pinch\" is not above 0"},
        {R"({"at":1,"pinch":2,"over":-0.1,"center":[0,0]})",
         "\"over\" is not between 0 and 600 seconds"},
        {R"({"at":1,"pinch":2,"over":601,"center":[0,0]})",
         "\"over\" is not between 0 and 600 seconds"}};
    for (const auto& [line, reason] : cases)
        EXPECT_EQ(refusal(line), "script:2: " + reason) << line;
}

TEST(ActionScriptTouch, IsNotDownAfterItWasLiftedOrLost) {
    for (const std::string end : {"up", "cancel"}) {
        const auto script = read(R"({"at":0,"touch":"down","id":1,"x":0,"y":0}
{"at":0,"touch":")" + end + R"(","id":1,"x":0,"y":0}
{"at":0,"touch":"move","id":1,"x":0,"y":0})");
        ASSERT_FALSE(script) << end;
        EXPECT_EQ(script.error().detail, "script:3: touch 1 is not down");
    }
}
