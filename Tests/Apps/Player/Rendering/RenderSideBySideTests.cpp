#include "Tests/Apps/Player/Rendering/ScriptedRender.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

using nlohmann::json;

namespace {

/// Two halves of 79 × 90 points, two points apart.
class RenderSideBySide : public ScriptedRender {};

/// Columns of a picture, from `left` on.
platform::ImagePtr columns(const platform::Image& picture, int left, int widthPx) {
    platform::PixelStorage part(widthPx, picture.heightPx());
    for (int y = 0; y < picture.heightPx(); ++y) {
        const auto start = static_cast<std::size_t>(y * picture.widthPx() + left) * 4;
        const auto row = picture.pixels().subspan(start, static_cast<std::size_t>(widthPx) * 4);
        std::copy(row.begin(), row.end(), part.row(y));
    }
    return std::make_shared<platform::Image>(std::move(part));
}

bool isBlack(const platform::Image& picture, int x) {
    for (int y = 0; y < picture.heightPx(); ++y) {
        if (colourAt(picture, x, y) != std::array<int, 4>{0, 0, 0, 255})
            return false;
    }
    return true;
}

} // namespace

TEST_F(RenderSideBySide, ShowsTheSameTwiceAndBlackBetween) {
    for (const int scale : {1, 2}) {
        ASSERT_EQ(renderScript(R"({"at":0,"mode":"side-by-side"}
{"at":0,"snapshot":"both.png"})",
                               scale),
                  ExitCode::Done);
        const auto both = picture("both.png");
        ASSERT_EQ(both->widthPx(), 160 * scale);
        // A rasteriser may round another way in another place.
        EXPECT_TRUE(picturesMatch("both-halves", *columns(*both, 81 * scale, 79 * scale),
                                  *columns(*both, 0, 79 * scale), {.channel = 1, .fraction = 0}));
        for (int x = 79 * scale; x < 81 * scale; ++x)
            EXPECT_TRUE(isBlack(*both, x)) << x;
        EXPECT_FALSE(isBlack(*both, 79 * scale - 1));
        EXPECT_FALSE(isBlack(*both, 81 * scale));
    }
}

TEST_F(RenderSideBySide, ShowsTheMiddleOfThePanoramaInTheMiddleOfEachHalf) {
    ASSERT_EQ(renderScript(R"({"at":0,"mode":"side-by-side"}
{"at":0,"snapshot":"both.png"}
{"at":1,"mode":"sphere"}
{"at":1,"resize":[79,90]}
{"at":2,"snapshot":"one.png"})"),
              ExitCode::Done);
    const auto both = picture("both.png");
    const auto one = picture("one.png");
    // The same field of view through a window of a half's size, but from the middle of the sphere.
    const json half = view("both.png");
    EXPECT_EQ(half["field_of_view"], view("one.png")["field_of_view"]);
    EXPECT_EQ(half["aspect"], 79.0 / 90.0);
    EXPECT_EQ(colourAt(*both, 39, 45), colourAt(*one, 39, 45));
}

TEST_F(RenderSideBySide, TracesBothViews) {
    ASSERT_EQ(renderScript(R"({"at":0,"snapshot":"one.png"}
{"at":1,"mode":"side-by-side"}
{"at":1,"snapshot":"both.png"}
{"at":2,"mode":"sphere"}
{"at":2,"snapshot":"one-again.png"})"),
              ExitCode::Done);
    const auto records = trace();
    EXPECT_EQ(records.at(0)["views"].size(), 1U);
    EXPECT_EQ(records.at(2)["views"].size(), 1U);
    EXPECT_EQ(records.at(2)["views"][0]["frame"], json({0.0, 0.0, 160.0, 90.0}));
    const json& both = records.at(1);
    EXPECT_EQ(both["mode"], 3);
    ASSERT_EQ(both["views"].size(), 2U);
    EXPECT_EQ(both["views"][0]["frame"], json({0.0, 0.0, 79.0, 90.0})) << "never on the way there";
    EXPECT_EQ(both["views"][1]["frame"], json({81.0, 0.0, 79.0, 90.0}));
    json right = both["views"][1];
    right["frame"] = both["views"][0]["frame"];
    EXPECT_EQ(right, both["views"][0]) << "one camera, twice";
    for (const char* key : {"scale", "field_of_view", "aspect", "distance", "mvp", "view",
                            "rotation", "translation", "motion", "hot_spots"})
        EXPECT_TRUE(both["views"][1].contains(key)) << key;
}

TEST_F(RenderSideBySide, FollowsTheDeviceWhereThereIsOneAndNoFinger) {
    ASSERT_EQ(renderScript(R"({"at":0,"attitude":[0,0,0,1]}
{"at":0,"mode":"side-by-side"}
{"at":0,"snapshot":"steered.png"}
{"at":1,"touch":"down","id":1,"x":30,"y":40}
{"at":1.1,"touch":"move","id":1,"x":30,"y":60}
{"at":1.2,"touch":"move","id":1,"x":60,"y":60}
{"at":1.3,"touch":"up","id":1,"x":60,"y":60}
{"at":3,"snapshot":"touched.png"})"),
              ExitCode::Done);
    for (const json& record : trace()) {
        for (const json& each : record["views"])
            EXPECT_EQ(each["motion"].size(), 16U);
    }
    EXPECT_EQ(view("touched.png")["mvp"], view("steered.png")["mvp"]);
}

TEST_F(RenderSideBySide, CanBeTheModeToBeginWith) {
    RenderCommand command;
    command.size = {160, 90};
    command.mode = DisplayMode::SideBySide;
    ASSERT_EQ(renderScript("{\"at\":0,\"snapshot\":\"a.png\"}", command), ExitCode::Done);
    EXPECT_EQ(trace().at(0)["views"].size(), 2U);
    EXPECT_TRUE(isBlack(*picture("a.png"), 79));
}

TEST_F(RenderSideBySide, FollowsADeviceThatComesAfterTheMode) {
    RenderCommand command;
    command.size = {160, 90};
    command.mode = DisplayMode::SideBySide;
    ASSERT_EQ(renderScript(R"({"at":0,"snapshot":"level.png"}
{"at":1,"attitude":[0.5,0.5,0.5,0.5]}
{"at":1,"snapshot":"steered.png"})",
                           command),
              ExitCode::Done);
    const json steered = trace().at(1);
    for (const json& each : steered["views"])
        EXPECT_EQ(each["motion"].size(), 16U);
    EXPECT_EQ(steered["views"][0]["mvp"], steered["views"][1]["mvp"]);
    EXPECT_NE(view("steered.png")["mvp"], view("level.png")["mvp"]);
}
