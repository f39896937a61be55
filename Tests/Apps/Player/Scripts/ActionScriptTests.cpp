#include "Apps/Player/Scripts/ActionScript.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

platform::Result<std::vector<Action>> read(const std::string& text) {
    std::istringstream stream(text);
    return readActionScript(stream, "script");
}

/// Why the second line of a script is refused.
std::string refusal(const std::string& line) {
    const auto script = read("{\"at\":0.5,\"mode\":\"plane\"}\n" + line);
    return script ? "accepted" : script.error().detail;
}

} // namespace

TEST(ActionScript, ReadsEveryKindInOrder) {
    const auto script = read(R"({"at":0,"mode":"little-planet"}
{"resize":[360,640.5],"at":0}

{"at":1.5,"orientation":4}
{"at":1.5,"transparent":true}
{"at":2,"snapshot":"folder/name.png"}
{"at":2,"spherical_offset":-0.5}
{"at":2,"mode":"side-by-side"}
)");
    ASSERT_TRUE(script);
    const auto& actions = script.value();
    ASSERT_EQ(actions.size(), 7U);
    EXPECT_EQ(std::get<ModeAction>(actions[0].what).mode, DisplayMode::LittlePlanet);
    EXPECT_EQ(std::get<ResizeAction>(actions[1].what).size, (platform::Size{360, 640.5}));
    EXPECT_EQ(std::get<OrientationAction>(actions[2].what).orientation,
              platform::InterfaceOrientation::LandscapeLeft);
    EXPECT_TRUE(std::get<SwitchAction>(actions[3].what).on);
    EXPECT_EQ(std::get<SnapshotAction>(actions[4].what).name, "folder/name.png");
    EXPECT_EQ(std::get<SphericalOffsetAction>(actions[5].what).radians, -0.5F);
    EXPECT_EQ(std::get<ModeAction>(actions[6].what).mode, DisplayMode::SideBySide);
    EXPECT_EQ(actions[2].at, 1.5);
}

TEST(ActionScript, ReadsWhatIsDoneToContent) {
    const auto script = read(R"({"at":0,"video":"a/tour.mp4"}
{"at":0,"image":"https://example.org/p.jpg"}
{"at":1,"seek":12.5}
{"at":1,"volume":0.25}
{"at":1,"play":true}
{"at":1,"pause":true}
{"at":1,"appear":true}
{"at":1,"reload":true}
)");
    ASSERT_TRUE(script) << script.error().detail;
    const auto& actions = script.value();
    ASSERT_EQ(actions.size(), 8U);
    EXPECT_EQ(std::get<ContentAction>(actions[0].what).kind, ContentAction::Kind::Video);
    EXPECT_EQ(std::get<ContentAction>(actions[0].what).input, "a/tour.mp4");
    EXPECT_EQ(std::get<ContentAction>(actions[1].what).kind, ContentAction::Kind::Picture);
    EXPECT_EQ(std::get<ContentAction>(actions[1].what).input, "https://example.org/p.jpg");
    EXPECT_EQ(std::get<SeekAction>(actions[2].what).seconds, 12.5);
    EXPECT_EQ(std::get<VolumeAction>(actions[3].what).volume, 0.25);
    EXPECT_EQ(std::get<CommandAction>(actions[4].what), CommandAction::Play);
    EXPECT_EQ(std::get<CommandAction>(actions[5].what), CommandAction::Pause);
    EXPECT_EQ(std::get<CommandAction>(actions[6].what), CommandAction::Appear);
    EXPECT_EQ(std::get<CommandAction>(actions[7].what), CommandAction::Reload);
    for (const Action& action : actions)
        EXPECT_FALSE(action.isSetting()) << "content needs a view that has appeared";
}

TEST(ActionScript, RefusesContentThatCannotBe) {
    EXPECT_EQ(refusal(R"({"at":1,"volume":1.5})"), "script:2: \"volume\" is not between 0 and 1");
    EXPECT_EQ(refusal(R"({"at":1,"play":false})"), "script:2: \"play\" is not true");
    EXPECT_EQ(refusal(R"({"at":1,"video":""})"), "script:2: \"video\" names nothing");
    EXPECT_NE(refusal(R"({"at":1,"seek":"late"})"), "accepted");
    EXPECT_NE(refusal(R"({"at":1,"play":true,"pause":true})"), "accepted");
    EXPECT_NE(refusal(R"({"at":1,"seek":1,"volume":1})"), "accepted");
}

TEST(ActionScript, ReadsEverySwitch) {
    using Switch = SwitchAction::Switch;
    const std::vector<std::pair<std::string, Switch>> switches{
        {"device_motion", Switch::DeviceMotion}, {"touch_motion", Switch::TouchMotion},
        {"pinch_zoom", Switch::PinchZoom},       {"lock_vertical", Switch::LockVertical},
        {"transparent", Switch::Transparent},    {"auto_picking", Switch::AutoPicking},
        {"tap_detection", Switch::TapDetection}};
    for (const auto& [name, which] : switches) {
        const auto script =
            read("{\"at\":0,\"" + name + "\":true}\n{\"at\":0,\"" + name + "\":false}");
        ASSERT_TRUE(script) << name;
        const auto on = std::get<SwitchAction>(script.value()[0].what);
        const auto off = std::get<SwitchAction>(script.value()[1].what);
        EXPECT_EQ(on.which, which) << name;
        EXPECT_TRUE(on.on) << name;
        EXPECT_EQ(off.which, which) << name;
        EXPECT_FALSE(off.on) << name;
        EXPECT_EQ(refusal("{\"at\":1,\"" + name + "\":1}"),
                  "script:2: \"" + name + "\" is not true or false");
    }
}

TEST(ActionScript, KeepsAnAttitudeOfUnitLengthToTheLastBit) {
    const auto script = read(R"({"at":0,"attitude":[0.5,-0.5,0.5,0.5000001]}
{"at":0,"attitude":[0,0,0,-4]}
{"at":0,"attitude":[1e200,0,0,0]})");
    ASSERT_TRUE(script);
    const auto attitude = [&](std::size_t i) {
        return std::get<AttitudeAction>(script.value()[i].what).attitude;
    };
    EXPECT_EQ(attitude(0), (platform::Attitude{0.5, -0.5, 0.5, 0.5000001}));
    EXPECT_EQ(attitude(1), (platform::Attitude{0, 0, 0, -1})) << "others are brought to it";
    EXPECT_EQ(attitude(2), (platform::Attitude{1, 0, 0, 0}));
}

TEST(ActionScript, TakesEverythingButTouchesAndPicturesForASetting) {
    const auto script = read(R"({"at":0,"mode":"plane"}
{"at":0,"resize":[10,10]}
{"at":0,"orientation":1}
{"at":0,"attitude":[0,0,0,1]}
{"at":0,"device_motion":true}
{"at":0,"spherical_offset":1}
{"at":0,"snapshot":"a.png"}
{"at":0,"touch":"down","id":1,"x":0,"y":0}
{"at":0,"tap":[1,1]}
{"at":0,"pinch":1,"center":[1,1],"over":0})");
    ASSERT_TRUE(script);
    const auto& actions = script.value();
    for (std::size_t i = 0; i < actions.size(); ++i)
        EXPECT_EQ(actions[i].isSetting(), i < 6) << i;
}

TEST(ActionScript, MayBeEmpty) {
    EXPECT_TRUE(read("").value().empty());
    EXPECT_TRUE(read("\n \n\t\r\n").value().empty());
}

TEST(ActionScript, RefusesWithFileLineAndReason) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"nonsense", "this is not JSON"},
        {"[1]", "this is not a JSON object"},
        {"{}", "no action"},
        {R"({"at":1})", "no action"},
        {R"({"mode":"plane"})", "\"at\" is missing"},
        {R"({"at":"1","mode":"plane"})", "\"at\" is not a number"},
        {R"({"at":-1,"mode":"plane"})", "\"at\" is below 0"},
        {R"({"at":0.4,"mode":"plane"})", "\"at\" is earlier than the line before"},
        {R"({"at":1e999,"mode":"plane"})", "this is not JSON"},
        {R"({"at":1,"mode":"cube"})", "unknown mode \"cube\""},
        {R"({"at":1,"mode":2})", "\"mode\" is not a text"},
        {R"({"at":1,"dance":true})", "unknown action \"dance\""},
        {R"({"at":1,"mode":"plane","transparent":true})", "more than one action in a line"},
        {R"({"at":1,"resize":[360]})", "\"resize\" is not [width, height]"},
        {R"({"at":1,"resize":["a",1]})", "\"resize\" is not [width, height]"},
        {R"({"at":1,"resize":[0,100]})", "\"resize\" is not between 1 and 16384 points a side"},
        {R"({"at":1,"resize":[100,20000]})", "\"resize\" is not between 1 and 16384 points a side"},
        {R"({"at":1,"orientation":5})", "\"orientation\" is not 1, 2, 3 or 4"},
        {R"({"at":1,"orientation":1.5})", "\"orientation\" is not 1, 2, 3 or 4"},
        {R"({"at":1,"mode":"plane","x":1})", "\"mode\" knows no \"x\""},
        {R"({"at":1000001,"mode":"plane"})", "\"at\" is over 1000000 seconds"},
        {R"({"at":1,"attitude":[0,0,1]})", "\"attitude\" is not [x, y, z, w]"},
        {R"({"at":1,"attitude":[0,0,0,null]})", "\"attitude\" is not [x, y, z, w]"},
        {R"({"at":1,"attitude":[0,0,0,0]})",
         "\"attitude\" is not a rotation: its length is close to 0 or not finite"},
        {R"({"at":1,"attitude":[1.7e308,1.7e308,0,0]})",
         "\"attitude\" is not a rotation: its length is close to 0 or not finite"},
        {R"({"at":1,"spherical_offset":"1"})", "\"spherical_offset\" is not a number"},
        {R"({"at":1,"spherical_offset":1e300})", "\"spherical_offset\" is not a number"},
        {R"({"at":1,"snapshot":5})", "\"snapshot\" is not a text"}};
    for (const auto& [line, reason] : cases)
        EXPECT_EQ(refusal(line), "script:2: " + reason) << line;
}

TEST(ActionScript, IsRefusedOnOneLineWhateverItQuotes) {
    EXPECT_EQ(refusal(R"({"at":1,"\u001b[2J\n\u007f":1})"), "script:2: unknown action \"?[2J??\"");
    EXPECT_EQ(refusal(R"({"at":1,"mode":"\u009bcube é"})"), "script:2: unknown mode \"??cube é\"");
}

TEST(ActionScript, IsRefusedWhenItIsNestedWithoutEnd) {
    constexpr std::size_t depth = 200'000; // more than a stack holds
    const std::string lists = std::string(depth, '[') + std::string(depth, ']');
    EXPECT_EQ(refusal(R"({"at":1,"hot_spots":[{"name":)" + lists + "}]}"),
              "script:2: this is nested too deeply");
}

TEST(ActionScript, KeepsPicturesInsideTheOutputFolder) {
    for (const std::string name : {"/tmp/x.png", "../x.png", "a/../../x.png", "x.jpg", "x", ""}) {
        EXPECT_EQ(refusal(R"({"at":1,"snapshot":")" + name + "\"}"),
                  "script:2: \"" + name +
                      "\" is not the name of a .png file inside the output folder");
    }
}

TEST(ActionScript, WritesNoPictureTwice) {
    const auto script =
        read("{\"at\":0,\"snapshot\":\"a.png\"}\n{\"at\":1,\"snapshot\":\"./a.png\"}");
    ASSERT_FALSE(script);
    EXPECT_EQ(script.error().detail, "script:2: \"./a.png\" is written twice");
}

TEST(ActionScript, NamesAFileThatCannotBeRead) {
    const auto missing = readActionScript("/no/such/script");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().detail, "/no/such/script: there is no such file");
    const auto folder = readActionScript(::testing::TempDir());
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().detail, ::testing::TempDir() + ": cannot be read");
}

TEST(ActionScript, ReadsEveryExampleOfItsManual) {
    std::ifstream manual(std::string(ZANTO_SOURCE_DIR) + "/docs/scripts.md");
    int examples = 0;
    for (std::string line; std::getline(manual, line);) {
        if (line != "```jsonl")
            continue;
        std::string example;
        while (std::getline(manual, line) && line != "```")
            example += line + "\n";
        const auto script = read(example);
        EXPECT_TRUE(script) << script.error().detail << "\n" << example;
        ++examples;
    }
    EXPECT_GT(examples, 4);
}

TEST(ActionScript, RefusesGesturesThatOnlyAHugeMemoryCouldHold) {
    std::string script;
    for (int line = 0; line < 40; ++line)
        script += R"({"at":)" + std::to_string(line) +
                  R"(,"pinch":2,"center":[10,10],"over":600})" + "\n";
    const auto result = read(script);
    ASSERT_FALSE(result);
    EXPECT_NE(result.error().detail.find("the script is too long"), std::string::npos)
        << result.error().detail;
}
