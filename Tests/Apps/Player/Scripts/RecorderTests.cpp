#include "Apps/Player/Contents/BuiltInPanorama.h"
#include "Apps/Player/Scripts/ActionScript.h"
#include "Apps/Player/Scripts/Recorder.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/Apps/Player/Rendering/ScriptedRender.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

using namespace std::chrono_literals;
using nlohmann::json;
using platform::Instant;
using platform::Point;
using platform::TouchEvent;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

using Switch = SwitchAction::Switch;

/// A clock that stands where it is put, a script, and what stands in it.
struct Recording {
    Recording() { platform::AttitudeSource::shared().reset(); }

    Instant now{};
    std::ostringstream script;
    Recorder recorder{script, [this] { return now; }};

    void touch(TouchPhase phase, std::int64_t id, Instant time,
               TouchKind kind = TouchKind::Finger) {
        recorder.touch({phase, id, {1.5, 2}, kind, time});
    }
    void publish(const platform::Attitude& attitude) {
        platform::AttitudeSource::shared().publish(attitude);
        platform::MainQueue::main().runDue();
    }
};

/// A player whose actions are recorded while a test steers it at chosen times.
class Watched {
public:
    Watched() {
        player_.show(builtInPanorama());
        // The view has been there for a while, at no frame's instant.
        player_.host().advanceTo(Instant(1'234'567'891));
        start_ = player_.host().now();
        recorder_.emplace(script_, [this] { return player_.host().now(); });
        recorder_->begin({160, 90});
    }

    void touch(Instant at, TouchPhase phase, std::int64_t id, Point location,
               TouchKind kind = TouchKind::Finger) {
        player_.host().advanceTo(start_ + at);
        const TouchEvent event{phase, id, location, kind, start_ + at};
        recorder_->touch(event);
        player_.embedded().touch(event);
    }
    void wait(Instant until) { player_.host().advanceTo(start_ + until); }
    void switchMode(DisplayMode mode) {
        recorder_->note(ModeAction{mode});
        player_.controller().setDisplayMode(mode);
    }
    void resize(platform::Size size) {
        player_.embedded().resize(size, 1);
        recorder_->note(ResizeAction{size});
    }
    void steer(const platform::Attitude& attitude) { player_.embedded().setAttitude(attitude); }
    void followDevice() {
        recorder_->note(SwitchAction{Switch::DeviceMotion, true});
        player_.controller().turnOnDeviceMotionInterraction(true);
    }

    /// The line that the trace would contain for the present camera.
    [[nodiscard]] json camera() {
        (void)player_.snapshot();
        const auto& inputs = player_.view().cameraInputs();
        return {{"scale", inputs.scale},
                {"view", inputs.view.m},
                {"rotation", inputs.rotation.m},
                {"translation", inputs.translation.m},
                {"mvp", player_.view().camera().modelViewProjection.m},
                {"motion", inputs.motion ? json(inputs.motion->m) : json()}};
    }
    /// Ends the recording, and gives it.
    [[nodiscard]] std::string script() {
        recorder_.reset();
        return script_.str();
    }

private:
    HeadlessPlayer player_{{160, 90}};
    Instant start_{};
    std::ostringstream script_;
    std::optional<Recorder> recorder_;
};

class RecorderPlayback : public ScriptedRender {
protected:
    /// Plays a recording, lets everything come to rest, and gives the camera.
    json playBack(const std::string& script) {
        EXPECT_EQ(renderScript(script + R"({"at":100,"snapshot":"end.png"})"), ExitCode::Done)
            << script;
        json camera = view("end.png");
        for (const char* key : {"frame", "field_of_view", "aspect", "distance", "hot_spots"})
            camera.erase(key);
        return camera;
    }
};

void flick(Watched& watched, Instant at, TouchKind kind) {
    watched.touch(at, TouchPhase::Down, 77, {60, 40}, kind);
    watched.touch(at + 17'000'003ns, TouchPhase::Move, 77, {75, 46.25}, kind);
    watched.touch(at + 29'123'457ns, TouchPhase::Move, 77, {91.5, 51.125}, kind);
    watched.touch(at + 41'999'999ns, TouchPhase::Move, 77, {109.75, 53}, kind);
    watched.touch(at + 42'000'001ns, TouchPhase::Up, 77, {110, 53}, kind);
}

void pinch(Watched& watched, Instant at) {
    watched.touch(at, TouchPhase::Down, -5, {60.5, 40});
    watched.touch(at + 8'333'333ns, TouchPhase::Down, 1LL << 60, {100, 45.75});
    watched.touch(at + 16'666'667ns, TouchPhase::Move, 1LL << 60, {101, 45.75});
    watched.touch(at + 31'000'001ns, TouchPhase::Move, -5, {30, 40});
    watched.touch(at + 55'555'555ns, TouchPhase::Move, 1LL << 60, {155, 41});
    watched.touch(at + 70'000'000ns, TouchPhase::Up, -5, {30, 40});
    watched.touch(at + 71'000'000ns, TouchPhase::Up, 1LL << 60, {155, 41});
}

} // namespace

TEST_F(RecorderPlayback, EndsWithTheSameCameraAfterAFlickAndAPinch) {
    for (const TouchKind kind : {TouchKind::Finger, TouchKind::Mouse}) {
        std::string script;
        json camera;
        {
            Watched watched;
            flick(watched, 123'456'789ns, kind);
            watched.wait(20s);
            pinch(watched, 20'987'654'321ns);
            watched.wait(30s);
            camera = watched.camera();
            script = watched.script();
        }
        EXPECT_NE(camera["rotation"][0], 1.0);
        EXPECT_GT(camera["scale"].get<double>(), 1.5);
        EXPECT_EQ(playBack(script), camera);
    }
}

TEST_F(RecorderPlayback, EndsWithTheSameCameraAfterModesAndSizes) {
    std::string script;
    json camera;
    {
        Watched watched;
        watched.wait(1s);
        watched.switchMode(DisplayMode::Plane);
        watched.resize({110, 160});
        pinch(watched, 2s);
        watched.wait(5s);
        flick(watched, 5s + 1ns, TouchKind::Finger);
        watched.wait(9s);
        watched.resize({120, 100});
        watched.wait(20s);
        camera = watched.camera();
        script = watched.script();
    }
    EXPECT_NE(camera["translation"][12], 0.0);
    EXPECT_EQ(playBack(script), camera);
}

TEST_F(RecorderPlayback, EndsWithTheSameCameraAfterADeviceHasSteered) {
    std::string script;
    json camera;
    {
        Watched watched;
        watched.wait(1s);
        watched.steer({0.5, 0.5, 0.5, 0.5});
        watched.followDevice();
        watched.wait(2s);
        watched.steer({0.1, 0.2, 0.3, 0.927361849549570});
        flick(watched, 3s, TouchKind::Finger);
        watched.steer({0.6, 0, 0, 0.8});
        watched.wait(20s);
        camera = watched.camera();
        script = watched.script();
    }
    EXPECT_EQ(camera["motion"].size(), 16U);
    EXPECT_EQ(playBack(script), camera);
}

TEST(Recorder, WritesNothingBeforeTheViewAppears) {
    Recording recording;
    recording.touch(TouchPhase::Down, 1, 0ns);
    recording.recorder.note(ModeAction{DisplayMode::Plane});
    EXPECT_EQ(recording.script.str(), "");
    recording.now = 5s;
    recording.recorder.begin({1280, 720.5});
    recording.touch(TouchPhase::Up, 1, 6s);
    EXPECT_EQ(recording.script.str(), "{\"at\":0.000000000,\"resize\":[1280.0,720.5]}\n")
        << "a finger that was down before the recording is not recorded";
}

TEST(Recorder, WritesEveryLineAtOnceAndToTheNanosecond) {
    Recording recording;
    recording.now = 1s;
    recording.recorder.begin({10, 10});
    recording.touch(TouchPhase::Down, 9, 1s + 123'456'789ns, TouchKind::Mouse);
    EXPECT_NE(recording.script.str().find(
                  R"({"at":0.123456789,"touch":"down","id":1,"x":1.5,"y":2.0,"mouse":true})"
                  "\n"),
              std::string::npos)
        << recording.script.str();
    recording.touch(TouchPhase::Up, 9, 100'001s + 1ns);
    EXPECT_NE(recording.script.str().find(R"({"at":100000.000000001,"touch":"up","id":1)"),
              std::string::npos)
        << recording.script.str();
}

TEST(Recorder, WritesWhatTheScriptReaderReads) {
    std::ostringstream script;
    {
        Recording recording;
        recording.recorder.begin({640, 360});
        recording.recorder.note(ModeAction{DisplayMode::SideBySide});
        recording.recorder.note(ResizeAction{{360, 640.25}});
        recording.recorder.note(OrientationAction{platform::InterfaceOrientation::LandscapeLeft});
        recording.recorder.note(SphericalOffsetAction{0.1F});
        for (const Switch each :
             {Switch::TouchMotion, Switch::PinchZoom, Switch::LockVertical, Switch::Transparent})
            recording.recorder.note(SwitchAction{each, true});
        recording.touch(TouchPhase::Down, 4, 1s);
        recording.touch(TouchPhase::Move, 4, 2s);
        recording.touch(TouchPhase::Cancel, 4, 3s);
        recording.recorder.note(SnapshotAction{"a.png"});
        script << recording.script.str();
    }
    std::istringstream stream(script.str());
    const auto actions = readActionScript(stream, "script");
    ASSERT_TRUE(actions) << actions.error().detail;
    ASSERT_EQ(actions.value().size(), 13U);
    const auto& list = actions.value();
    EXPECT_EQ(std::get<ModeAction>(list[1].what).mode, DisplayMode::SideBySide);
    EXPECT_EQ(std::get<ResizeAction>(list[2].what).size, (platform::Size{360, 640.25}));
    EXPECT_EQ(std::get<SphericalOffsetAction>(list[4].what).radians, 0.1F);
    EXPECT_EQ(std::get<SwitchAction>(list[7].what).which, Switch::LockVertical);
    EXPECT_EQ(std::get<TouchAction>(list[11].what).event.phase, TouchPhase::Cancel);
}

TEST(Recorder, GivesEveryFingerAnIdOfItsOwn) {
    Recording recording;
    recording.recorder.begin({10, 10});
    recording.touch(TouchPhase::Down, 1LL << 62, 1s);
    recording.touch(TouchPhase::Down, -7, 1s);
    recording.touch(TouchPhase::Down, -7, 1s); // is down already
    recording.touch(TouchPhase::Move, 3, 1s);  // never went down
    recording.touch(TouchPhase::Up, 1LL << 62, 1s);
    recording.touch(TouchPhase::Down, 1LL << 62, 1s);
    recording.recorder.touch({TouchPhase::Move, -7, {NAN, 0}, TouchKind::Finger, 1s});
    std::istringstream lines(recording.script.str());
    std::vector<std::string> touches;
    for (std::string line; std::getline(lines, line);) {
        const json record = json::parse(line);
        if (record.contains("touch"))
            touches.push_back(record["touch"].get<std::string>() + record["id"].dump());
    }
    EXPECT_EQ(touches, (std::vector<std::string>{"down1", "down2", "up1", "down3"}));
}

TEST(Recorder, NeverGoesBackInTime) {
    Recording recording;
    recording.now = 10s;
    recording.recorder.begin({10, 10});
    recording.touch(TouchPhase::Down, 1, 9s);
    recording.now = 12s;
    recording.recorder.note(ModeAction{DisplayMode::Plane});
    recording.touch(TouchPhase::Up, 1, 11s);
    std::istringstream lines(recording.script.str());
    std::vector<double> times;
    for (std::string line; std::getline(lines, line);)
        times.push_back(json::parse(line)["at"]);
    EXPECT_EQ(times, (std::vector<double>{0, 0, 2, 2}));
}

TEST(Recorder, WritesAttitudesWhereTheyChangeAndLetsATouchKeepItsTime) {
    std::string text;
    {
        Recording recording;
        recording.publish({0, 0, 0, 1});
        recording.recorder.begin({10, 10});
        recording.now = 1s;
        recording.publish({0, 0, 0, 1});
        recording.publish({1, 0, 0, 0});
        recording.touch(TouchPhase::Down, 1, 900ms);
        recording.now = 2s;
        recording.publish({0, 0, 0, 0});
        recording.publish({NAN, 0, 0, 0});
        recording.publish({0, 1, 0, 0});
        text = recording.script.str();
        EXPECT_EQ(text.find("[0.0,1.0,0.0,0.0]"), std::string::npos) << "it may be replaced yet";
    }
    EXPECT_EQ(text, R"({"at":0.000000000,"resize":[10.0,10.0]}
{"at":0.000000000,"attitude":[0.0,0.0,0.0,1.0]}
{"at":0.900000000,"attitude":[1.0,0.0,0.0,0.0]}
{"at":0.900000000,"touch":"down","id":1,"x":1.5,"y":2.0}
)");
}

TEST(Recorder, WritesTheLastAttitudeWhenItGoes) {
    std::ostringstream script;
    {
        Recorder recorder(script, [] { return Instant(1s); });
        recorder.begin({10, 10});
        platform::AttitudeSource::shared().publish({0, 1, 0, 0});
        platform::MainQueue::main().runDue();
    }
    EXPECT_NE(script.str().find("[0.0,1.0,0.0,0.0]"), std::string::npos);
    platform::AttitudeSource::shared().publish({0, 0, 1, 0});
    platform::MainQueue::main().runDue();
    EXPECT_EQ(script.str().find("[0.0,0.0,1.0,0.0]"), std::string::npos);
}

TEST(Recorder, TurnsDeviceMotionOnOnlyOnceTheScriptHasADevice) {
    const SwitchAction on{Switch::DeviceMotion, true};
    const SwitchAction off{Switch::DeviceMotion, false};
    {
        Recording recording;
        recording.recorder.begin({10, 10});
        recording.recorder.note(on);
        EXPECT_EQ(recording.script.str().find("device_motion"), std::string::npos);
        recording.now = 1s;
        recording.publish({0, 0, 0, 1});
        EXPECT_NE(recording.script.str().find("\"attitude\":[0.0,0.0,0.0,1.0]}\n"
                                              "{\"at\":1.000000000,\"device_motion\":true}\n"),
                  std::string::npos)
            << recording.script.str();
    }
    platform::AttitudeSource::shared().reset();
    {
        Recording recording;
        recording.recorder.begin({10, 10});
        recording.recorder.note(on);
        recording.recorder.note(off);
        recording.publish({0, 0, 0, 1});
        recording.recorder.note(ModeAction{DisplayMode::Plane});
        EXPECT_EQ(recording.script.str().find("\"device_motion\":true"), std::string::npos);
    }
}

TEST(Recorder, WritesAnAttitudeThatNobodyHasBeenToldOfBeforeTheSwitch) {
    Recording recording;
    recording.recorder.begin({10, 10});
    platform::AttitudeSource::shared().publish({0, 0, 1, 0});
    recording.recorder.note(SwitchAction{Switch::DeviceMotion, true});
    const std::string text = recording.script.str();
    EXPECT_LT(text.find("attitude"), text.find("device_motion")) << text;
    EXPECT_NE(text.find("device_motion"), std::string::npos);
}
