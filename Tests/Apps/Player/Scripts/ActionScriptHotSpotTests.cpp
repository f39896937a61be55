#include "Apps/Player/Scripts/ActionScript.h"
#include "Apps/Player/Scripts/ActionWriter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

platform::Result<std::vector<Action>> read(const std::string& text) {
    std::istringstream stream(text);
    return readActionScript(stream, "folder/script");
}

HotSpotsAction hotSpotsOf(const std::string& line) {
    const auto script = read(line);
    EXPECT_TRUE(script) << (script ? "" : script.error().detail);
    return script ? std::get<HotSpotsAction>(script.value().at(0).what) : HotSpotsAction();
}

/// Why an action with this list, and this after it, is refused.
std::string refusal(const std::string& list, const std::string& rest = "") {
    const auto script = read(R"({"at":1,"hot_spots":)" + list + rest + "}");
    return script ? "accepted" : script.error().detail;
}

const std::string kFull =
    R"({"at":1,"hot_spots":[{"name":"door","image":"door.png","vertical":0.1,"horizontal":-0.2,)"
    R"("scale":2,"x":0.5,"y":3},{"image":"/icons/a.png","horizontal":1e3,"vertical":-7}],)"
    R"("picking_point":[0.25,1],"reject_rate":7})";

} // namespace

TEST(ActionScriptHotSpots, HaveEverythingThatTheLineSays) {
    const auto action = hotSpotsOf(kFull);
    ASSERT_EQ(action.hotSpots.size(), 2U);
    const HotSpot& door = action.hotSpots[0];
    EXPECT_EQ(door.name, "door");
    EXPECT_EQ(door.vertical, 0.1F);
    EXPECT_EQ(door.horizontal, -0.2F);
    EXPECT_EQ(door.scale, 2.0F);
    EXPECT_EQ(door.x, 0.5F);
    EXPECT_EQ(door.y, 3.0F);
    EXPECT_EQ(action.pickingPoint, (platform::Point{0.25, 1}));
    EXPECT_EQ(action.rejectRate, 7);
}

TEST(ActionScriptHotSpots, HaveDefaultsForWhatMayBeLeftOut) {
    const auto action =
        hotSpotsOf(R"({"at":0,"hot_spots":[{"image":"a.png","vertical":0,"horizontal":0}]})");
    const HotSpot& spot = action.hotSpots.at(0);
    EXPECT_EQ(spot.name, "");
    EXPECT_EQ(spot.scale, 1.0F);
    EXPECT_EQ(spot.x, 1.0F);
    EXPECT_EQ(spot.y, 1.0F);
    EXPECT_EQ(action.pickingPoint, (platform::Point{0.5, 0.5}));
    EXPECT_EQ(action.rejectRate, 1);
}

TEST(ActionScriptHotSpots, HavePicturesRelativeToTheScript) {
    const auto action = hotSpotsOf(kFull);
    EXPECT_EQ(action.hotSpots.at(0).image, "folder/door.png");
    EXPECT_EQ(action.hotSpots.at(1).image, "/icons/a.png");
}

TEST(ActionScriptHotSpots, MayBeNoneOrMoreThanCanBeToldApart) {
    EXPECT_TRUE(hotSpotsOf(R"({"at":0,"hot_spots":[]})").hotSpots.empty());
    std::string list;
    for (int i = 0; i < 207; ++i)
        list += std::string(list.empty() ? "" : ",") +
                R"({"name":"","image":"a.png","vertical":0,"horizontal":0})";
    EXPECT_EQ(hotSpotsOf(R"({"at":0,"hot_spots":[)" + list + "]}").hotSpots.size(), 207U);
}

TEST(ActionScriptHotSpots, AreWrittenAsTheyAreRead) {
    auto line = describeAction(hotSpotsOf(kFull));
    const auto again = [&line] {
        line["at"] = 1;
        return hotSpotsOf(line.dump());
    }();
    EXPECT_EQ(again.hotSpots.at(0).vertical, 0.1F);
    EXPECT_EQ(again.hotSpots.at(0).y, 3.0F);
    EXPECT_EQ(again.hotSpots.at(1).image, "/icons/a.png");
    EXPECT_EQ(again.pickingPoint, (platform::Point{0.25, 1}));
    EXPECT_EQ(again.rejectRate, 7);
}

TEST(ActionScriptHotSpots, AreSettings) {
    const auto script = read(R"({"at":0,"hot_spots":[]}
{"at":0,"auto_picking":true}
{"at":0,"tap_detection":false})");
    ASSERT_TRUE(script);
    for (const Action& action : script.value())
        EXPECT_TRUE(action.isSetting());
    const auto& automatic = std::get<SwitchAction>(script.value()[1].what);
    EXPECT_EQ(automatic.which, SwitchAction::Switch::AutoPicking);
    EXPECT_TRUE(automatic.on);
    const auto& taps = std::get<SwitchAction>(script.value()[2].what);
    EXPECT_EQ(taps.which, SwitchAction::Switch::TapDetection);
    EXPECT_FALSE(taps.on);
}

TEST(ActionScriptHotSpots, AreRefusedWithTheMemberThatIsWrong) {
    const std::string good = R"({"image":"a.png","vertical":0,"horizontal":0},)";
    const std::vector<std::pair<std::string, std::string>> spots{
        {R"({"vertical":0,"horizontal":0})", ".image is missing"},
        {R"({"image":5,"vertical":0,"horizontal":0})", ".image is not a text"},
        {R"({"image":"a.png","horizontal":0})", ".vertical is missing"},
        {R"({"image":"a.png","vertical":"up","horizontal":0})", ".vertical is not a number"},
        {R"({"image":"a.png","vertical":0,"horizontal":null})", ".horizontal is not a number"},
        {R"({"image":"a.png","vertical":0,"horizontal":1e300})", ".horizontal is not a number"},
        {R"({"image":"a.png","vertical":0,"horizontal":0,"name":1})", ".name is not a text"},
        {R"({"image":"a.png","vertical":0,"horizontal":0,"scale":0})", ".scale is not above 0"},
        {R"({"image":"a.png","vertical":0,"horizontal":0,"scale":1e-300})",
         ".scale is not above 0"},
        {R"({"image":"a.png","vertical":0,"horizontal":0,"x":-1})", ".x is not above 0"},
        {R"({"image":"a.png","vertical":0,"horizontal":0,"y":"1"})", ".y is not a number"},
        {R"({"image":"a.png","vertical":0,"horizontal":0,"z":1})", R"( knows no "z")"},
        {"7", " is not a JSON object"},
        {"[]", " is not a JSON object"}};
    for (const auto& [spot, reason] : spots)
        EXPECT_EQ(refusal("[" + good + good + good + spot + "]"),
                  "folder/script:1: hot_spots[3]" + reason)
            << spot;
}

TEST(ActionScriptHotSpots, AreRefusedWithWhatIsWrongBesideThem) {
    EXPECT_EQ(refusal("{}"), R"(folder/script:1: "hot_spots" is not a list)");
    EXPECT_EQ(refusal("null"), R"(folder/script:1: "hot_spots" is not a list)");
    for (const char* point : {"[0.5]", "0.5", "[-0.1,0.5]", "[0.5,1.1]", "[0.5,\"a\"]", "null"})
        EXPECT_EQ(refusal("[]", R"(,"picking_point":)" + std::string(point)),
                  R"(folder/script:1: "picking_point" is not [x, y], each from 0 to 1)")
            << point;
    for (const char* rate : {"0", "-3"})
        EXPECT_EQ(refusal("[]", R"(,"reject_rate":)" + std::string(rate)),
                  R"(folder/script:1: "reject_rate" is below 1)");
    for (const char* rate : {"1.5", "\"1\"", "null"})
        EXPECT_EQ(refusal("[]", R"(,"reject_rate":)" + std::string(rate)),
                  R"(folder/script:1: "reject_rate" is not an integer)");
    EXPECT_EQ(refusal("[]", R"(,"gaze":1)"), R"(folder/script:1: "hot_spots" knows no "gaze")");
    EXPECT_EQ(refusal("[]", R"(,"auto_picking":true)"),
              "folder/script:1: more than one action in a line");
    const auto alone = read(R"({"at":1,"auto_picking":1})");
    ASSERT_FALSE(alone);
    EXPECT_EQ(alone.error().detail, R"(folder/script:1: "auto_picking" is not true or false)");
}
