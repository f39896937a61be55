#include "Apps/Player/ActionScript.h"

#include <gtest/gtest.h>

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
)");
    ASSERT_TRUE(script);
    const auto& actions = script.value();
    ASSERT_EQ(actions.size(), 5U);
    EXPECT_EQ(std::get<ModeAction>(actions[0].what).mode, DisplayMode::LittlePlanet);
    EXPECT_EQ(std::get<ResizeAction>(actions[1].what).size, (platform::Size{360, 640.5}));
    EXPECT_EQ(std::get<OrientationAction>(actions[2].what).orientation,
              platform::InterfaceOrientation::LandscapeLeft);
    EXPECT_TRUE(std::get<TransparentAction>(actions[3].what).on);
    EXPECT_EQ(std::get<SnapshotAction>(actions[4].what).name, "folder/name.png");
    EXPECT_EQ(actions[2].at, 1.5);
    EXPECT_TRUE(actions[3].isSetting());
    EXPECT_FALSE(actions[4].isSetting());
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
        {R"({"at":1,"resize":["a",1]})", "the width is not a number"},
        {R"({"at":1,"resize":[0,100]})", "\"resize\" is not between 1 and 16384 points a side"},
        {R"({"at":1,"resize":[100,20000]})", "\"resize\" is not between 1 and 16384 points a side"},
        {R"({"at":1,"orientation":5})", "\"orientation\" is not 1, 2, 3 or 4"},
        {R"({"at":1,"orientation":1.5})", "\"orientation\" is not 1, 2, 3 or 4"},
        {R"({"at":1,"transparent":1})", "\"transparent\" is not true or false"},
        {R"({"at":1,"snapshot":5})", "\"snapshot\" is not a text"}};
    for (const auto& [line, reason] : cases)
        EXPECT_EQ(refusal(line), "script:2: " + reason) << line;
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
