#include "Apps/Player/Output/PictureOutput.h"
#include "Tests/Apps/Player/Rendering/ScriptedRender.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/TestClips.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

using nlohmann::json;

namespace {

constexpr double kTick = 0.33F;

/// Renders three seconds of a video, with one hot spot straight ahead.
class RenderVideoHotSpots : public ScriptedRender {
protected:
    RenderVideoHotSpots() {
        const std::string path = folder_.pathOf("red.png");
        EXPECT_FALSE(PictureOutput(path).write("", *flatPicture(16, 16, 255, 0, 0)).has_value());
        command_.input = tests::testClip({.frames = 90});
        command_.size = {160, 90};
    }

    [[nodiscard]] static json hotSpots() {
        return {{"hot_spots",
                 {{{"name", "door"}, {"image", "red.png"}, {"vertical", 0}, {"horizontal", 0}}}}};
    }
    static std::string line(double at, json action) {
        action["at"] = at;
        return action.dump() + "\n";
    }
    /// The first hot spot is reported at every look, from the first one on.
    void expectAPickAtEveryLook() const {
        std::size_t looks = 0;
        for (const json& record : trace()) {
            if (record.value("hook", "") != "detectPickedHotSpotObjectWithName")
                continue;
            EXPECT_NEAR(record["at"].get<double>(), static_cast<double>(++looks) * kTick, 1e-6);
            EXPECT_EQ(record["name"], "door");
            EXPECT_EQ(record["tap"], false);
        }
        EXPECT_EQ(looks, 6U);
    }

    RenderCommand command_;
    std::string end_ = line(2.1, {{"snapshot", "end.png"}});
};

} // namespace

TEST_F(RenderVideoHotSpots, OfAFileAreLookedAt) {
    command_.hotSpotsFile = folder_.addText("spots.json", hotSpots().dump());
    ASSERT_EQ(renderScript(end_, command_), ExitCode::Done);
    expectAPickAtEveryLook();
}

TEST_F(RenderVideoHotSpots, OfAScriptAreLookedAtWhicheverComesFirst) {
    const std::string spots = line(0, hotSpots());
    const std::string picking = line(0, {{"auto_picking", true}});
    for (const std::string& script : {spots + picking, picking + spots}) {
        ASSERT_EQ(renderScript(script + end_, command_), ExitCode::Done);
        expectAPickAtEveryLook();
    }
}

TEST_F(RenderVideoHotSpots, AreNotLookedAtOnceTheScriptSaysSo) {
    command_.hotSpotsFile = folder_.addText("spots.json", hotSpots().dump());
    ASSERT_EQ(renderScript(line(0, {{"auto_picking", false}}) + end_, command_), ExitCode::Done);
    for (const json& record : trace())
        EXPECT_NE(record.value("hook", ""), "detectPickedHotSpotObjectWithName");
}
