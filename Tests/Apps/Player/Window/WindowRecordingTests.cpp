#include "Apps/Player/Scripts/ActionScript.h"
#include "Apps/Player/Window/WindowRecording.h"
#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

/// A window that is recorded into a file.
class WindowRecordingTest : public ::testing::Test {
protected:
    WindowRecordingTest() { scene_.show(directionPanorama(256)); }

    [[nodiscard]] std::unique_ptr<WindowRecording> record() {
        auto recording = WindowRecording::create(folder_.pathOf("script.jsonl"));
        if (recording)
            recording.value()->begin(scene_.host());
        return recording ? std::move(recording).value() : nullptr;
    }
    void moveMouse(Uint32 kind, int x, int y) const {
        SDL_Event event{};
        event.type = kind;
        if (kind == SDL_MOUSEMOTION) {
            event.motion.windowID = scene_.windowId();
            event.motion.state = SDL_BUTTON_LMASK;
            event.motion.x = x;
            event.motion.y = y;
        } else {
            event.button.windowID = scene_.windowId();
            event.button.button = SDL_BUTTON_LEFT;
            event.button.state = kind == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
            event.button.x = x;
            event.button.y = y;
        }
        SDL_PushEvent(&event);
    }
    [[nodiscard]] std::vector<Action> script() const {
        auto actions = readActionScript(folder_.pathOf("script.jsonl"));
        EXPECT_TRUE(actions) << actions.error().detail;
        return actions ? std::move(actions).value() : std::vector<Action>();
    }

    tests::TemporaryFolder folder_;
    SDLScene scene_;
};

} // namespace

TEST_F(WindowRecordingTest, HasTheWindowsSizeItsTouchesAndWhatTheProgramDoes) {
    const auto recording = record();
    ASSERT_NE(recording, nullptr);
    moveMouse(SDL_MOUSEBUTTONDOWN, 30, 40);
    moveMouse(SDL_MOUSEMOTION, 50, 45);
    moveMouse(SDL_MOUSEBUTTONUP, 50, 45);
    scene_.settle();
    recording->note(ModeAction{DisplayMode::Plane});
    const auto actions = script(); // before its end: nothing waits to be written
    ASSERT_EQ(actions.size(), 5U);
    EXPECT_EQ(actions[0].at, 0.0);
    EXPECT_EQ(std::get<ResizeAction>(actions[0].what).size, (platform::Size{160, 90}));
    const auto& move = std::get<TouchAction>(actions[2].what).event;
    EXPECT_EQ(move.kind, platform::TouchKind::Mouse);
    EXPECT_EQ(move.location, (platform::Point{50, 45}));
    EXPECT_EQ(std::get<TouchAction>(actions[3].what).event.phase, platform::TouchPhase::Up);
    EXPECT_EQ(std::get<ModeAction>(actions[4].what).mode, DisplayMode::Plane);
}

TEST_F(WindowRecordingTest, HasTheOtherSizesOfTheWindow) {
    const auto recording = record();
    ASSERT_NE(recording, nullptr);
    SDL_SetWindowSize(scene_.window(), 100, 120);
    scene_.settle();
    EXPECT_FALSE(recording->end().has_value());
    const auto actions = script();
    ASSERT_GE(actions.size(), 2U);
    EXPECT_EQ(std::get<ResizeAction>(actions.back().what).size, (platform::Size{100, 120}));
}

TEST_F(WindowRecordingTest, HasNothingThatComesAfterItsEnd) {
    {
        const auto recording = record();
        ASSERT_NE(recording, nullptr);
    }
    moveMouse(SDL_MOUSEBUTTONDOWN, 30, 40);
    SDL_SetWindowSize(scene_.window(), 100, 120);
    scene_.settle();
    EXPECT_EQ(script().size(), 1U);
}

TEST_F(WindowRecordingTest, HandsTouchesOnWhileItLasts) {
    auto recording = WindowRecording::create(folder_.pathOf("script.jsonl"));
    ASSERT_TRUE(recording);
    std::vector<platform::TouchPhase> heard;
    recording.value()->begin(scene_.host(), [&heard](const platform::TouchEvent& event) {
        heard.push_back(event.phase);
    });
    moveMouse(SDL_MOUSEBUTTONDOWN, 30, 40);
    moveMouse(SDL_MOUSEBUTTONUP, 30, 40);
    scene_.settle();
    EXPECT_EQ(heard, (std::vector{platform::TouchPhase::Down, platform::TouchPhase::Up}));
    EXPECT_EQ(script().size(), 3U);
    EXPECT_FALSE(recording.value()->end().has_value());
    moveMouse(SDL_MOUSEBUTTONDOWN, 30, 40);
    scene_.settle();
    EXPECT_EQ(heard.size(), 2U);
}

TEST_F(WindowRecordingTest, SaysWhatPlaysItBack) {
    const auto recording = record();
    ASSERT_NE(recording, nullptr);
    const std::string file = folder_.pathOf("script.jsonl");
    EXPECT_EQ(recording->playbackOptions({}), "--actions " + file + " --size 160x90 --scale 1");
    EXPECT_EQ(recording->playbackOptions({.finger = 2.5, .mouse = 2.5}),
              "--actions " + file + " --size 160x90 --scale 1 --touch-slop 2.5");
}

TEST_F(WindowRecordingTest, TellsOfADiskThatIsFull) {
    auto recording = WindowRecording::create("/dev/full");
    ASSERT_TRUE(recording);
    recording.value()->begin(scene_.host());
    const auto failure = recording.value()->end();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->detail, "/dev/full: cannot be written");
}
