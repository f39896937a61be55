#include "Apps/Player/Output/PictureOutput.h"
#include "Tests/Apps/Player/Rendering/ScriptedRender.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

using Angles = std::vector<std::pair<double, double>>; // vertical, horizontal

constexpr double kTick = 0.33;
constexpr std::array<int, 4> kRed{255, 0, 0, 255};

/// Scripts with hot spots whose picture is red all over.
class RenderHotSpots : public ScriptedRender {
protected:
    RenderHotSpots() {
        const std::string path = folder_.pathOf("red.png");
        EXPECT_FALSE(PictureOutput(path).write("", *flatPicture(16, 16, 255, 0, 0)).has_value());
    }

    /// Named "0", "1" and so on.
    static json spots(const Angles& angles, const std::string& image = "red.png") {
        json list = json::array();
        for (const auto& [vertical, horizontal] : angles)
            list.push_back({{"name", std::to_string(list.size())},
                            {"image", image},
                            {"vertical", vertical},
                            {"horizontal", horizontal}});
        return list;
    }
    static std::string line(double at, json action) {
        action["at"] = at;
        return action.dump() + "\n";
    }
    static std::string show(double at, const Angles& angles) {
        return line(at, {{"hot_spots", spots(angles)}});
    }

    [[nodiscard]] json frame(const std::string& picture) const {
        for (const json& record : trace()) {
            if (record.value("frame", "") == picture)
                return record;
        }
        return {};
    }
    /// Where the middle of a hot spot is, by the trace.
    [[nodiscard]] static platform::Point middleOf(const json& view, std::size_t index) {
        const json& matrix = view["hot_spots"].at(index);
        const json& frame = view["frame"];
        const auto number = [](const json& value) { return value.get<double>(); };
        const double w = number(matrix[15]);
        return {number(frame[0]) + (1 + number(matrix[12]) / w) / 2 * number(frame[2]),
                number(frame[1]) + (1 - number(matrix[13]) / w) / 2 * number(frame[3])};
    }
    [[nodiscard]] std::vector<json> picks() const {
        std::vector<json> found;
        for (const json& record : trace()) {
            if (record.value("hook", "") == "detectPickedHotSpotObjectWithName")
                found.push_back(record);
        }
        return found;
    }
    [[nodiscard]] std::vector<std::string> logLines() const {
        std::vector<std::string> found;
        for (const json& record : trace()) {
            if (record.contains("log"))
                found.push_back(record["log"]);
        }
        return found;
    }
    [[nodiscard]] std::array<int, 4> colourInTheMiddle(const std::string& name) const {
        return colourAt(*picture(name), 80, 45);
    }
};

struct Case {
    std::string mode;
    platform::Size size;
    Angles angles; // all in sight
};

const Angles kAhead{{0.05, 0.3}, {0.1, 0}, {-0.05, -0.28}};
const Angles kBelow{{0.9, 0}, {0.9, 3}, {0.9, 1.5}};

/// Taps on three hot spots and a gaze at the second, as the trace has them.
class PicksInEveryMode : public RenderHotSpots, public ::testing::WithParamInterface<Case> {
protected:
    [[nodiscard]] RenderCommand command() const {
        RenderCommand command;
        command.size = GetParam().size;
        return command;
    }
    [[nodiscard]] std::string mode() const { return line(0, {{"mode", GetParam().mode}}); }

    std::vector<platform::Point> places() {
        EXPECT_EQ(renderScript(mode() + show(0, GetParam().angles) +
                                   line(0, {{"snapshot", "places.png"}}),
                               command()),
                  ExitCode::Done);
        std::vector<platform::Point> found;
        for (std::size_t i = 0; i < 3; ++i)
            found.push_back(middleOf(view("places.png"), i));
        return found;
    }
};

} // namespace

TEST_P(PicksInEveryMode, CountTapsAtOnceAndAGazeByLooks) {
    const auto middles = places();
    for (const auto& middle : middles)
        EXPECT_EQ(colourAt(*picture("places.png"), static_cast<int>(middle.x),
                           static_cast<int>(middle.y)),
                  kRed);
    const bool isDouble = GetParam().mode == "side-by-side";
    const double width = GetParam().size.width / (isDouble ? 2 : 1);
    std::string script =
        mode() +
        line(0, {{"hot_spots", spots(GetParam().angles)},
                 {"picking_point", {middles[1].x / width, middles[1].y / GetParam().size.height}},
                 {"reject_rate", 3}}) +
        line(0, {{"tap_detection", true}}) + line(0, {{"auto_picking", true}});
    for (std::size_t i = 0; i < 3; ++i)
        script += line(0.05 * static_cast<double>(i + 1), {{"tap", {middles[i].x, middles[i].y}}});
    ASSERT_EQ(renderScript(script + line(2.6, {{"snapshot", "end.png"}}), command()),
              ExitCode::Done);

    const auto found = picks();
    ASSERT_EQ(found.size(), 5U) << json(found);
    for (int i = 0; i < 3; ++i) {
        const auto& pick = found[static_cast<std::size_t>(i)];
        EXPECT_NEAR(pick["at"].get<double>(), 0.05 * (i + 1), 0.02) << pick;
        EXPECT_EQ(pick["name"], std::to_string(i));
        EXPECT_EQ(pick["index"], i);
        EXPECT_EQ(pick["tap"], true);
    }
    for (const int look : {4, 7}) {
        const auto& pick = found[look == 4 ? 3 : 4];
        EXPECT_NEAR(pick["at"].get<double>(), look * kTick, 1e-6) << pick;
        EXPECT_EQ(pick["name"], "1");
        EXPECT_EQ(pick["index"], 1);
        EXPECT_EQ(pick["tap"], false);
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, PicksInEveryMode,
                         ::testing::Values(Case{"sphere", {160, 90}, kAhead},
                                           Case{"sphere", {90, 160}, kAhead},
                                           Case{"little-planet", {160, 90}, kBelow},
                                           Case{"little-planet", {90, 160}, kBelow},
                                           Case{"plane", {160, 90}, {{0.9, 0}, {0.9, 3}, {0.8, 1}}},
                                           Case{"side-by-side", {160, 90}, kAhead}));

TEST_F(RenderHotSpots, LieToTheLeftAndBelowForPositiveAngles) {
    ASSERT_EQ(
        renderScript(show(0, {{0, 0}, {0, 0.2}, {0.1, 0}}) + line(0, {{"snapshot", "a.png"}})),
        ExitCode::Done);
    const json shown = view("a.png");
    EXPECT_NEAR(middleOf(shown, 0).x, 80, 1e-3);
    EXPECT_NEAR(middleOf(shown, 0).y, 45, 1e-3);
    EXPECT_LT(middleOf(shown, 1).x, 65);
    EXPECT_GT(middleOf(shown, 2).y, 50);
}

TEST_F(RenderHotSpots, AreShownAtOnceAndReplaceThoseBefore) {
    ASSERT_EQ(renderScript(line(0, {{"snapshot", "none.png"}}) + show(1, {{0, 0}}) +
                           line(1, {{"snapshot", "one.png"}}) + show(2, {{1.5, 0}, {1.5, 3}}) +
                           line(2, {{"snapshot", "two.png"}}) + show(3, {}) +
                           line(3, {{"snapshot", "none-again.png"}})),
              ExitCode::Done);
    EXPECT_NE(colourInTheMiddle("none.png"), kRed);
    EXPECT_EQ(colourInTheMiddle("one.png"), kRed);
    EXPECT_EQ(colourInTheMiddle("two.png"), colourInTheMiddle("none.png"));
    EXPECT_EQ(view("none.png")["hot_spots"].size(), 0U);
    EXPECT_EQ(view("one.png")["hot_spots"].size(), 1U);
    EXPECT_EQ(view("two.png")["hot_spots"].size(), 2U);
    EXPECT_EQ(view("none-again.png")["hot_spots"].size(), 0U);
    EXPECT_EQ(folder_.read("out/none-again.png"), folder_.read("out/none.png"));
}

TEST_F(RenderHotSpots, KeepTheCameraWhenTheyAreShownLater) {
    const std::string turn = line(0.5, {{"touch", "down"}, {"id", 1}, {"x", 20}, {"y", 40}}) +
                             line(0.6, {{"touch", "move"}, {"id", 1}, {"x", 40}, {"y", 40}}) +
                             line(0.7, {{"touch", "move"}, {"id", 1}, {"x", 90}, {"y", 40}}) +
                             line(0.9, {{"touch", "up"}, {"id", 1}, {"x", 90}, {"y", 40}});
    ASSERT_EQ(renderScript(turn + line(3, {{"snapshot", "before.png"}}) + show(3, {{0, 0}}) +
                           line(3, {{"snapshot", "after.png"}})),
              ExitCode::Done);
    EXPECT_NE(view("before.png")["rotation"][0], 1.0);
    EXPECT_EQ(view("after.png")["mvp"], view("before.png")["mvp"]);
}

TEST_F(RenderHotSpots, AreInBothHalvesSideBySide) {
    ASSERT_EQ(renderScript(line(0, {{"mode", "side-by-side"}}) + show(0, {{0, 0.1}}) +
                           line(0, {{"snapshot", "a.png"}})),
              ExitCode::Done);
    const json views = frame("a.png")["views"];
    ASSERT_EQ(views.size(), 2U);
    EXPECT_EQ(views[0]["hot_spots"], views[1]["hot_spots"]);
    for (const json& each : views) {
        const auto middle = middleOf(each, 0);
        EXPECT_EQ(
            colourAt(*picture("a.png"), static_cast<int>(middle.x), static_cast<int>(middle.y)),
            kRed);
    }
}

TEST_F(RenderHotSpots, AreLeftOutWhenTheirPictureFails) {
    const std::string broken = folder_.addText("broken.png", "no picture");
    json list = spots({{0, 0}, {0.4, 0}, {0, 0.3}});
    list[0]["image"] = "missing.png";
    list[1]["image"] = "broken.png";
    ASSERT_EQ(renderScript(line(0, {{"hot_spots", list}}) + line(0, {{"tap_detection", true}}) +
                           line(0, {{"snapshot", "a.png"}})),
              ExitCode::Done);
    EXPECT_EQ(view("a.png")["hot_spots"].size(), 1U);
    EXPECT_LT(middleOf(view("a.png"), 0).x, 60) << "the third";
    EXPECT_NE(colourInTheMiddle("a.png"), kRed);
    const std::string failed = "Error - cant setup texture for hotSpot, nill image";
    EXPECT_THAT(logLines(), ElementsAre(HasSubstr(folder_.pathOf("missing.png")), HasSubstr(broken),
                                        failed, failed));
}

TEST_F(RenderHotSpots, ReadAPictureOnceHoweverManyShowIt) {
    ASSERT_EQ(renderScript(line(0, {{"hot_spots", spots({{0, 0}, {0, 1}}, "missing.png")}})),
              ExitCode::Done);
    int named = 0;
    for (const std::string& text : logLines())
        named += text.find("missing.png") == std::string::npos ? 0 : 1;
    EXPECT_EQ(named, 1);
}

TEST_F(RenderHotSpots, AreLookedAtOnlyWhileAutomaticPickingIsOn) {
    ASSERT_EQ(renderScript(show(0, {{1, 0}, {0, 0}}) + line(1, {{"auto_picking", true}}) +
                           line(2.5, {{"auto_picking", false}}) + line(6, {{"snapshot", "a.png"}})),
              ExitCode::Done);
    const auto found = picks();
    ASSERT_EQ(found.size(), 3U) << json(found);
    EXPECT_NEAR(found[0]["at"].get<double>(), 1 + 2 * kTick, 1e-6) << "the second look";
    EXPECT_NEAR(found[2]["at"].get<double>(), 1 + 4 * kTick, 1e-6);
}

TEST_F(RenderHotSpots, AreNotTappedUnlessAsked) {
    for (const bool asked : {false, true}) {
        ASSERT_EQ(renderScript(show(0, {{0, 0}}) + line(0, {{"tap_detection", asked}}) +
                               line(1, {{"tap", {80, 45}}}) + line(2, {{"tap", {10, 10}}})),
                  ExitCode::Done);
        EXPECT_EQ(picks().size(), asked ? 1U : 0U);
    }
}

TEST_F(RenderHotSpots, SayOnceThatOnly206CanBeToldApart) {
    const auto messages = [&](std::size_t count) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(renderScript(show(0, Angles(count, {0, 0}))), ExitCode::Done);
        return ::testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ(messages(206), "");
    EXPECT_EQ(messages(207), "zanto-player: only the first 206 of 207 hot spots can be told apart "
                             "when they are picked\n");
}

TEST_F(RenderHotSpots, ComeFromAFileAndYieldToTheScript) {
    RenderCommand command;
    command.size = {160, 90};
    std::filesystem::create_directory(folder_.pathOf("set"));
    std::filesystem::copy_file(folder_.pathOf("red.png"), folder_.pathOf("set/icon.png"));
    const json file{{"hot_spots", spots({{1, 0}, {0, 0}}, "icon.png")}};
    command.hotSpotsFile = folder_.addText("set/spots.json", file.dump(2));
    const std::string tap = line(0.9, {{"tap", {80, 45}}}) + line(1.1, {{"snapshot", "a.png"}});
    ASSERT_EQ(renderScript(tap, command), ExitCode::Done);
    EXPECT_EQ(colourInTheMiddle("a.png"), kRed);
    std::vector<bool> taps;
    for (const json& pick : picks())
        taps.push_back(pick["tap"]);
    EXPECT_THAT(taps, ElementsAre(false, true, false)) << "looks at 0.66 and 0.99";

    ASSERT_EQ(renderScript(line(0, {{"auto_picking", false}}) + show(0, {{0, 0}}) + tap, command),
              ExitCode::Done);
    ASSERT_EQ(picks().size(), 1U);
    EXPECT_EQ(picks()[0]["index"], 0);
    EXPECT_EQ(view("a.png")["hot_spots"].size(), 1U);
}

TEST_F(RenderHotSpots, AreSixOverTheBuiltInPanoramaInTheExample) {
    RenderCommand command;
    command.size = {160, 90};
    command.hotSpotsFile = std::string(ZANTO_SOURCE_DIR) + "/Examples/hot-spots/hot-spots.json";
    ASSERT_EQ(renderScript(line(0, {{"snapshot", "a.png"}}), command), ExitCode::Done);
    const json shown = view("a.png");
    EXPECT_EQ(shown["hot_spots"].size(), 6U);
    EXPECT_TRUE(logLines().empty());
    const auto north = middleOf(shown, 0);
    EXPECT_NEAR(north.x, 80, 1e-3);
    const auto badge =
        colourAt(*picture("a.png"), static_cast<int>(north.x) - 5, static_cast<int>(north.y));
    EXPECT_GT(badge[0], badge[1] + 80) << "red";
}

TEST_F(RenderHotSpots, AreRefusedBeforeAnythingIsDrawn) {
    RenderCommand command;
    command.size = {160, 90};
    command.hotSpotsFile = folder_.addText("spots.json", "{\n\"hot_spots\":[}");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(renderScript("", command), ExitCode::WrongUse);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "zanto-player: " + command.hotSpotsFile + ":2: this is not JSON\n");
    EXPECT_FALSE(std::filesystem::exists(folder_.pathOf("out")));
}

TEST_F(RenderHotSpots, GiveTheSameBytesEveryTime) {
    const std::string script =
        show(0, kAhead) + line(0, {{"auto_picking", true}}) + line(0, {{"tap_detection", true}}) +
        line(0.5, {{"tap", {80, 55}}}) + line(1, {{"mode", "side-by-side"}}) +
        line(1.5, {{"snapshot", "a.png"}}) + line(2, {{"mode", "little-planet"}}) +
        line(2.5, {{"snapshot", "b.png"}});
    ASSERT_EQ(renderScript(script), ExitCode::Done);
    const std::string firstTrace = folder_.read("trace.jsonl");
    const std::string firstPicture = folder_.read("out/a.png");
    EXPECT_FALSE(picks().empty());
    ASSERT_EQ(renderScript(script), ExitCode::Done);
    EXPECT_EQ(folder_.read("trace.jsonl"), firstTrace);
    EXPECT_EQ(folder_.read("out/a.png"), firstPicture);
}
