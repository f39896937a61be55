#include "Apps/Player/Contents/BuiltInPanorama.h"
#include "Tests/Apps/Player/Rendering/ScriptedRender.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

using nlohmann::json;

namespace {

class Render : public ScriptedRender {};

/// What the library itself draws, without the program.
platform::ImagePtr expectedPicture(DisplayMode mode, platform::Size size, double scale = 1) {
    HeadlessPlayer player(size, scale);
    player.controller().setDisplayMode(mode);
    player.show(builtInPanorama());
    return player.snapshot();
}

} // namespace

TEST_F(Render, ShowsEveryModeAsTheLibraryDrawsIt) {
    ASSERT_EQ(renderScript(R"({"at":0,"snapshot":"sphere.png"}
{"at":1,"mode":"plane"}
{"at":1,"snapshot":"plane.png"}
{"at":2,"mode":"little-planet"}
{"at":2,"snapshot":"planet.png"})"),
              ExitCode::Done);
    EXPECT_TRUE(picturesAreEqual("render-sphere", *picture("sphere.png"),
                                 *expectedPicture(DisplayMode::Sphere, {160, 90})));
    EXPECT_TRUE(picturesAreEqual("render-plane", *picture("plane.png"),
                                 *expectedPicture(DisplayMode::Plane, {160, 90})));
    EXPECT_TRUE(picturesAreEqual("render-planet", *picture("planet.png"),
                                 *expectedPicture(DisplayMode::LittlePlanet, {160, 90})));
}

TEST_F(Render, ResizesLikeADeviceThatIsTurned) {
    ASSERT_EQ(renderScript(R"({"at":0,"mode":"plane"}
{"at":0.5,"resize":[90,160]}
{"at":0.5,"snapshot":"turned.png"}
{"at":0.6,"resize":[100,100]}
{"at":0.6,"snapshot":"square.png"})",
                           2),
              ExitCode::Done);
    EXPECT_TRUE(picturesAreEqual("render-turned", *picture("turned.png"),
                                 *expectedPicture(DisplayMode::Plane, {90, 160}, 2)));
    EXPECT_TRUE(picturesAreEqual("render-square", *picture("square.png"),
                                 *expectedPicture(DisplayMode::Plane, {100, 100}, 2)));
    EXPECT_EQ(trace()[0]["orientation"], 1);
}

TEST_F(Render, AppliesSettingsAtZeroBeforeTheViewAppears) {
    ASSERT_EQ(renderScript(R"({"at":0,"snapshot":"first.png"}
{"at":0,"mode":"plane"}
{"at":0,"resize":[90,160]}
{"at":0,"orientation":2})"),
              ExitCode::Done);
    const json record = trace().at(0);
    EXPECT_EQ(record["mode"], 0);
    EXPECT_EQ(record["orientation"], 2);
    EXPECT_EQ(record["presented"], 1) << "nothing was drawn before";
    EXPECT_TRUE(picturesAreEqual("render-first", *picture("first.png"),
                                 *expectedPicture(DisplayMode::Plane, {90, 160})));
}

TEST_F(Render, ClearsToNothingWhenTransparent) {
    ASSERT_EQ(renderScript(R"({"at":0,"resize":[200,80]}
{"at":0,"mode":"plane"}
{"at":0,"transparent":true}
{"at":0,"snapshot":"clear.png"}
{"at":1,"transparent":false}
{"at":1,"snapshot":"black.png"})"),
              ExitCode::Done);
    EXPECT_EQ(colourAt(*picture("clear.png"), 0, 0)[3], 0);
    EXPECT_EQ(colourAt(*picture("black.png"), 0, 0), (std::array<int, 4>{0, 0, 0, 255}));
}

TEST_F(Render, TracesWhatTheCameraWas) {
    ASSERT_EQ(renderScript(R"({"at":0.25,"snapshot":"a.png"}
{"at":0.5,"mode":"little-planet"}
{"at":0.75,"snapshot":"b.png"})"),
              ExitCode::Done);
    const auto records = trace();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0]["at"], 0.25);
    EXPECT_EQ(records[0]["frame"], "a.png");
    EXPECT_EQ(records[0]["mode"], 1);
    EXPECT_EQ(records[0]["orientation"], 3);
    const json& sphere = records[0]["views"].at(0);
    EXPECT_EQ(sphere["frame"], json({0.0, 0.0, 160.0, 90.0}));
    EXPECT_EQ(sphere["distance"], 0.40312);
    EXPECT_EQ(sphere["field_of_view"], 70.0);
    EXPECT_EQ(sphere["aspect"], 160.0 / 90.0);
    EXPECT_EQ(sphere["scale"], 1.0);
    EXPECT_TRUE(sphere["motion"].is_null());
    EXPECT_TRUE(sphere["hot_spots"].empty());
    for (const char* key : {"mvp", "view", "rotation", "translation"})
        EXPECT_EQ(sphere[key].size(), 16U) << key;
    const json& planet = records[1]["views"].at(0);
    EXPECT_EQ(planet["scale"], 0.800000011920929);
    EXPECT_EQ(planet["field_of_view"], 105.0);
    EXPECT_EQ(records[1]["presented"], records[0]["presented"].get<int>() + 1);
}

TEST_F(Render, GivesTheSameBytesEveryTime) {
    const std::string script = R"({"at":0.1,"mode":"plane"}
{"at":0.2,"snapshot":"a.png"})";
    ASSERT_EQ(renderScript(script), ExitCode::Done);
    const std::string firstTrace = folder_.read("trace.jsonl");
    const std::string firstPicture = folder_.read("out/a.png");
    ASSERT_EQ(renderScript(script), ExitCode::Done);
    EXPECT_EQ(folder_.read("trace.jsonl"), firstTrace);
    EXPECT_EQ(folder_.read("out/a.png"), firstPicture);
    EXPECT_FALSE(firstPicture.empty());
}

TEST_F(Render, WritesOnePictureAtTheEndOfAScriptThatNamesNone) {
    ASSERT_EQ(renderScript(R"({"at":0.5,"mode":"plane"})"), ExitCode::Done);
    EXPECT_TRUE(picturesAreEqual("render-end", *picture("panorama.png"),
                                 *expectedPicture(DisplayMode::Plane, {160, 90})));
    EXPECT_EQ(trace().back()["at"], 0.5);
}

TEST_F(Render, NeedsAFolderForAScriptThatNamesItsPictures) {
    RenderCommand command;
    command.output = folder_.pathOf("one.png");
    command.size = {16, 9};
    command.actionsFile = folder_.addText("script.jsonl", R"({"at":0,"snapshot":"a.png"})");
    EXPECT_EQ(render(command), ExitCode::WrongUse);
}
