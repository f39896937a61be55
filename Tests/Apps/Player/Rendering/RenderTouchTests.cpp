#include "HVViewer/Utilities/ZNTMath.h"
#include "Tests/Apps/Player/Rendering/ScriptedRender.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

/// Scripts of touches in a window of 160 × 90 points, one pixel each.
class RenderTouch : public ScriptedRender {
protected:
    /// The camera's turn to the side after a script, in points of a drag.
    [[nodiscard]] double pointsTurned(const std::string& picture) const {
        const auto rotation = view(picture)["rotation"];
        const double yaw = std::atan2(rotation[1].get<double>(), rotation[0].get<double>());
        return -yaw / DegToRad(ViewAngle / kNativeWidth);
    }
    /// The same up and down.
    [[nodiscard]] double pointsTilted(const std::string& picture) const {
        const auto matrix = view(picture)["view"];
        const double pitch = std::atan2(matrix[6].get<double>(), matrix[5].get<double>());
        return -pitch / DegToRad(ViewAngle / kNativeWidth);
    }

    static constexpr double kNativeWidth = 90;
};

/// A drag from (60, 40) that is recognised at (60, 50), ends at (100, 45) and rests there.
const std::string kDrag = R"({"at":1,"touch":"down","id":1,"x":60,"y":40}
{"at":1.1,"touch":"move","id":1,"x":60,"y":50}
{"at":1.2,"touch":"move","id":1,"x":100,"y":45}
{"at":1.4,"touch":"move","id":1,"x":100,"y":45}
{"at":1.5,"touch":"up","id":1,"x":100,"y":45}
)";
const std::string kSnapshot = R"({"at":9,"snapshot":"a.png"})";

} // namespace

TEST_F(RenderTouch, DragsTurnTheCameraByTheWayFromWhereTheyWereRecognised) {
    ASSERT_EQ(renderScript(kDrag + kSnapshot), ExitCode::Done);
    EXPECT_NEAR(pointsTurned("a.png"), 40, 1e-3);
    EXPECT_NEAR(pointsTilted("a.png"), -5, 1e-3);
}

TEST_F(RenderTouch, DragsTurnLessPerPointWherePointsAreMorePixels) {
    ASSERT_EQ(renderScript(kDrag + kSnapshot, 2), ExitCode::Done);
    EXPECT_NEAR(pointsTurned("a.png"), 20, 1e-3);
}

TEST_F(RenderTouch, TouchesAreTimedBySoTheyCanFlick) {
    const std::string flick = R"({"at":1,"touch":"down","id":1,"x":60,"y":40}
{"at":1.01,"touch":"move","id":1,"x":80,"y":40}
{"at":1.02,"touch":"move","id":1,"x":100,"y":40}
{"at":1.02,"touch":")";
    const std::string rest = R"(","id":1,"x":100,"y":40}
{"at":1.02,"snapshot":"at-once.png"}
)" + kSnapshot;
    ASSERT_EQ(renderScript(flick + "up" + rest), ExitCode::Done);
    EXPECT_NEAR(pointsTurned("at-once.png"), 20, 1e-3);
    EXPECT_GT(std::abs(pointsTurned("a.png") - 20), 5) << "it coasts on";
    ASSERT_EQ(renderScript(flick + "cancel" + rest), ExitCode::Done);
    EXPECT_NEAR(pointsTurned("a.png"), 20, 1e-3) << "a finger that was lost does not flick";
}

TEST_F(RenderTouch, DragsBeginWhereTheSlopEnds) {
    const auto drag = [](double points, const std::string& mouse) {
        const auto line = [&](const char* at, const char* phase, double x) {
            return R"({"at":)" + std::string(at) + R"(,"touch":")" + phase +
                   R"(","id":1,"y":40,"x":)" + std::to_string(x) + mouse + "}\n";
        };
        return line("1", "down", 40) + line("1.1", "move", 40 + points) +
               line("1.2", "move", 40 + 2 * points) + line("1.4", "move", 40 + 2 * points) +
               line("1.5", "up", 40 + 2 * points) + kSnapshot;
    };
    const std::string mouse = R"(,"mouse":true)";
    ASSERT_EQ(renderScript(drag(4, "")), ExitCode::Done);
    EXPECT_EQ(pointsTurned("a.png"), 0);
    ASSERT_EQ(renderScript(drag(4, mouse)), ExitCode::Done);
    EXPECT_NEAR(pointsTurned("a.png"), 4, 1e-3);
    RenderCommand command;
    command.size = {160, 90};
    for (const std::string& kind : {std::string(), mouse}) {
        command.touchSlop = {.finger = 0, .mouse = 0};
        ASSERT_EQ(renderScript(drag(1, kind), command), ExitCode::Done);
        EXPECT_NEAR(pointsTurned("a.png"), 1, 1e-3) << "at the first move" << kind;
        command.touchSlop = {.finger = 30, .mouse = 30};
        ASSERT_EQ(renderScript(drag(12, kind), command), ExitCode::Done);
        EXPECT_EQ(pointsTurned("a.png"), 0) << kind;
    }
}

TEST_F(RenderTouch, PinchesZoomByTheirFactorOverTheirTime) {
    ASSERT_EQ(renderScript(R"({"at":0,"mode":"plane"}
{"at":1,"pinch":2.0,"center":[80,45],"over":0.5}
{"at":1.25,"snapshot":"half.png"}
{"at":1.5,"snapshot":"end.png"}
{"at":3,"snapshot":"later.png"})"),
              ExitCode::Done);
    EXPECT_NEAR(view("half.png")["scale"].get<double>(), 1.5, 1e-9);
    EXPECT_NEAR(view("end.png")["scale"].get<double>(), 2, 1e-9);
    EXPECT_NEAR(view("later.png")["scale"].get<double>(), 2, 1e-9);
}

TEST_F(RenderTouch, PinchesSpringBackIntoTheLimits) {
    ASSERT_EQ(renderScript(R"({"at":1,"pinch":0.55,"center":[80,45],"over":0}
{"at":1,"snapshot":"pulled.png"}
{"at":3,"snapshot":"rests.png"})"),
              ExitCode::Done);
    EXPECT_NEAR(view("pulled.png")["scale"].get<double>(), 0.55, 1e-9);
    EXPECT_NEAR(view("rests.png")["scale"].get<double>(), 0.7, 0.02);
}

TEST_F(RenderTouch, PinchesEndWithAChangeOfTheMode) {
    ASSERT_EQ(renderScript(R"({"at":0,"mode":"plane"}
{"at":1,"pinch":2.0,"center":[80,45],"over":1}
{"at":1.5,"mode":"sphere"}
{"at":1.5,"snapshot":"changed.png"}
{"at":2,"snapshot":"end.png"})"),
              ExitCode::Done);
    EXPECT_EQ(view("changed.png")["scale"], 1.0);
    EXPECT_EQ(view("end.png")["scale"], 1.0) << "though the fingers have not been lifted";
}

TEST_F(RenderTouch, TapsTurnNothing) {
    ASSERT_EQ(renderScript(R"({"at":1,"tap":[30,30]}
{"at":1,"tap":[130,60]}
)" + kSnapshot),
              ExitCode::Done);
    EXPECT_EQ(pointsTurned("a.png"), 0);
    EXPECT_EQ(view("a.png")["scale"], 1.0);
}

TEST_F(RenderTouch, TouchesAtZeroMeetTheViewThatTheSettingsMade) {
    // The window has become too narrow for the finger, though its line comes first.
    ASSERT_EQ(renderScript(R"({"at":0,"touch":"down","id":1,"x":150,"y":10}
{"at":0,"resize":[90,160]}
{"at":0.1,"touch":"move","id":1,"x":150,"y":40}
{"at":0.2,"touch":"move","id":1,"x":120,"y":40}
{"at":0.3,"touch":"up","id":1,"x":120,"y":40}
)" + kSnapshot),
              ExitCode::Done);
    EXPECT_EQ(pointsTurned("a.png"), 0);
}

TEST_F(RenderTouch, GivesTheSameBytesEveryTime) {
    const std::string script = kDrag + R"({"at":1.7,"pinch":2.3,"center":[80,45],"over":0.3}
{"at":2.5,"touch":"down","id":1,"x":60,"y":40}
{"at":2.51,"touch":"move","id":1,"x":80,"y":60}
{"at":2.517,"touch":"move","id":1,"x":97,"y":71}
{"at":2.52,"touch":"up","id":1,"x":97,"y":71}
{"at":2.6,"snapshot":"coasting.png"}
{"at":2.7,"mode":"side-by-side"}
{"at":2.8,"snapshot":"both.png"}
)" + kSnapshot;
    ASSERT_EQ(renderScript(script), ExitCode::Done);
    const std::string firstTrace = folder_.read("trace.jsonl");
    const std::string firstCoasting = folder_.read("out/coasting.png");
    const std::string firstBoth = folder_.read("out/both.png");
    ASSERT_EQ(renderScript(script), ExitCode::Done);
    EXPECT_EQ(folder_.read("trace.jsonl"), firstTrace);
    EXPECT_EQ(folder_.read("out/coasting.png"), firstCoasting);
    EXPECT_EQ(folder_.read("out/both.png"), firstBoth);
}

TEST_F(RenderTouch, WritesOnePictureAfterAScriptOfTouchesOnly) {
    ASSERT_EQ(renderScript(kDrag), ExitCode::Done);
    EXPECT_NE(picture("panorama.png"), nullptr);
    EXPECT_EQ(trace().back()["at"], 1.5);
    EXPECT_NEAR(pointsTurned("panorama.png"), 40, 1e-3);
}
