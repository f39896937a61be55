#include "Tests/Apps/Player/Rendering/ScriptedRender.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <string>

using nlohmann::json;

namespace {

/// Scripts that steer otherwise than by touches, or say what touches may do.
class RenderCamera : public ScriptedRender {};

const json kIdentity{1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0,
                     0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0};

/// A drag that turns and tilts and rests before it ends, then a pinch, then a picture.
const std::string kDragAndPinch = R"({"at":1,"touch":"down","id":1,"x":60,"y":40}
{"at":1.1,"touch":"move","id":1,"x":60,"y":50}
{"at":1.2,"touch":"move","id":1,"x":100,"y":45}
{"at":1.4,"touch":"move","id":1,"x":100,"y":45}
{"at":1.5,"touch":"up","id":1,"x":100,"y":45}
{"at":2,"pinch":1.5,"center":[80,45],"over":0.1}
{"at":9,"snapshot":"a.png"})";

} // namespace

TEST_F(RenderCamera, FollowsTheDeviceOnceItIsAskedTo) {
    ASSERT_EQ(renderScript(R"({"at":0,"orientation":3}
{"at":2,"attitude":[0,0,0,1]}
{"at":2,"snapshot":"off.png"}
{"at":3,"device_motion":true}
{"at":3,"snapshot":"on.png"}
{"at":4,"attitude":[0.5,0.5,0.5,0.5]}
{"at":4,"snapshot":"turned.png"}
{"at":5,"device_motion":false}
{"at":5,"snapshot":"off-again.png"})"),
              ExitCode::Done);
    EXPECT_TRUE(view("off.png")["motion"].is_null()) << "an attitude never turns it on";
    const json quarterTurn = view("on.png")["motion"];
    ASSERT_EQ(quarterTurn.size(), 16U);
    // Held in landscape, a device that lies on its back has the interface turned a quarter.
    EXPECT_NEAR(std::abs(quarterTurn[1].get<double>()), 1, 1e-6);
    EXPECT_NEAR(quarterTurn[10].get<double>(), 1, 1e-6);
    EXPECT_NE(view("turned.png")["motion"], quarterTurn);
    EXPECT_TRUE(view("off-again.png")["motion"].is_null());
}

TEST_F(RenderCamera, TakesAnAttitudeAtZeroBeforeTheViewAppears) {
    ASSERT_EQ(renderScript(R"({"at":0,"snapshot":"a.png"}
{"at":0,"attitude":[0,0,0,1]}
{"at":0,"device_motion":true}
{"at":0,"resize":[90,160]})"),
              ExitCode::Done);
    EXPECT_EQ(view("a.png")["motion"], kIdentity) << "portrait, as the device is built";
    EXPECT_EQ(trace().at(0)["presented"], 1) << "nothing was drawn before";
}

TEST_F(RenderCamera, FollowsADeviceThatComesAfterItWasAskedTo) {
    ASSERT_EQ(renderScript(R"({"at":0,"device_motion":true}
{"at":0,"snapshot":"no-source.png"}
{"at":1,"attitude":[0.5,0.5,0.5,0.5]}
{"at":1,"snapshot":"steered.png"})"),
              ExitCode::Done);
    EXPECT_TRUE(view("no-source.png")["motion"].is_null());
    EXPECT_EQ(view("steered.png")["motion"].size(), 16U);
    EXPECT_NE(view("steered.png")["mvp"], view("no-source.png")["mvp"]);
}

TEST_F(RenderCamera, KeepsTheFileOrderOfSettingsAtZero) {
    ASSERT_EQ(renderScript(R"({"at":0,"device_motion":true}
{"at":0,"device_motion":false}
{"at":0,"attitude":[0,0,0,1]}
{"at":0,"snapshot":"a.png"})"),
              ExitCode::Done);
    EXPECT_TRUE(view("a.png")["motion"].is_null()) << "it was switched off last";
}

TEST_F(RenderCamera, DoesWhatTheSwitchesSay) {
    const auto camera = [this](const std::string& setting) {
        EXPECT_EQ(renderScript(setting + "\n" + kDragAndPinch), ExitCode::Done);
        return view("a.png");
    };
    const json free = camera("");
    EXPECT_NE(free["rotation"], kIdentity);
    EXPECT_NE(free["view"], kIdentity);
    EXPECT_NEAR(free["scale"].get<double>(), 1.5, 1e-9);

    const json untouched = camera(R"({"at":0,"touch_motion":false})");
    EXPECT_EQ(untouched["rotation"], kIdentity);
    EXPECT_EQ(untouched["view"], kIdentity);
    EXPECT_EQ(untouched["scale"], free["scale"]);

    const json unzoomed = camera(R"({"at":0,"pinch_zoom":false})");
    EXPECT_EQ(unzoomed["rotation"], free["rotation"]);
    EXPECT_EQ(unzoomed["scale"], 1.0);

    const json locked = camera(R"({"at":0,"lock_vertical":true})");
    EXPECT_EQ(locked["rotation"], free["rotation"]);
    EXPECT_EQ(locked["view"], kIdentity);

    EXPECT_EQ(camera(R"({"at":0,"touch_motion":false}
{"at":0.5,"touch_motion":true})"),
              free);
}

TEST_F(RenderCamera, TurnsTheSceneByAnOffset) {
    ASSERT_EQ(renderScript(R"({"at":0,"spherical_offset":0.5}
{"at":0,"snapshot":"offset.png"}
{"at":1,"spherical_offset":0}
{"at":1,"snapshot":"none.png"}
{"at":2,"spherical_offset":6.283185307179586}
{"at":2,"snapshot":"once-around.png"})"),
              ExitCode::Done);
    EXPECT_EQ(view("offset.png")["rotation"], kIdentity) << "the interactor's own matrix stays";
    const auto mvp = view("none.png")["mvp"];
    const auto turned = view("offset.png")["mvp"];
    // The first column is where the scene's x axis comes to lie: x and y of it turn by the angle.
    EXPECT_NEAR(turned[0].get<double>(), mvp[0].get<double>() * std::cos(0.5), 1e-5);
    EXPECT_NEAR(turned[4].get<double>(), -mvp[0].get<double>() * std::sin(0.5), 1e-5);
    EXPECT_TRUE(
        picturesMatch("offset-once-around", *picture("once-around.png"), *picture("none.png")));
}
