#include "Apps/Player/Contents/BuiltInPanorama.h"
#include "Tests/Apps/Player/ProgramRun.h"
#include "Tests/Apps/Player/Window/DesktopWindow.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

using namespace std::chrono_literals;

namespace {

/// Asks again and again until it is so, for a minute at most.
bool becomesTrue(const std::function<bool()>& isSo) {
    const auto end = std::chrono::steady_clock::now() + 1min;
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(20ms); // between two questions, not instead of them
    }
    return true;
}

platform::ImagePtr headlessPicture(platform::Size size) {
    HeadlessPlayer player(size);
    player.show(builtInPanorama());
    return player.snapshot();
}

/// Whether the window comes to show the picture; the last comparison says why not.
::testing::AssertionResult comesToShow(const DesktopWindow& window, const std::string& name,
                                       const platform::Image& expected) {
    auto result = ::testing::AssertionFailure() << "the window cannot be read";
    becomesTrue([&] {
        if (const auto picture = window.picture())
            result = picturesMatch(name, *picture, expected);
        return static_cast<bool>(result);
    });
    return result;
}

} // namespace

TEST(Desktop, ShowsWhatTheHeadlessHostShowsAndFollowsTheWindow) {
    const auto display = tests::VirtualDisplay::start();
    if (!display)
        GTEST_SKIP() << "Xvfb is not installed or does not start";
    const auto wide = headlessPicture({1280, 720});
    const auto high = headlessPicture({400, 600});
    tests::ChildProcess program({ZANTO_PLAYER}, {"DISPLAY=" + display->name(),
                                                 "SDL_VIDEODRIVER=x11", tests::kWithoutLeakCheck});
    std::unique_ptr<DesktopWindow> window;
    ASSERT_TRUE(becomesTrue([&] {
        window = DesktopWindow::find(display->name(), "zanto-player");
        return window != nullptr;
    }));
    EXPECT_TRUE(comesToShow(*window, "desktop-wide", *wide));
    window->resize({400, 600});
    EXPECT_TRUE(comesToShow(*window, "desktop-high", *high));
    window->resize({1280, 720});
    EXPECT_TRUE(comesToShow(*window, "desktop-wide-again", *wide));
    window->close();
    EXPECT_EQ(program.exitCode(), 0);
}

TEST(Desktop, RecordsADragThatPlaysBackToWhatTheWindowShows) {
    const auto display = tests::VirtualDisplay::start();
    if (!display)
        GTEST_SKIP() << "Xvfb is not installed or does not start";
    const tests::TemporaryFolder folder;
    const std::string script = folder.pathOf("script.jsonl");
    const auto atRest = headlessPicture({400, 300});
    tests::ChildProcess program(
        {ZANTO_PLAYER, "--record", script},
        {"DISPLAY=" + display->name(), "SDL_VIDEODRIVER=x11", tests::kWithoutLeakCheck},
        tests::ChildProcess::StandardError::Dropped);
    std::unique_ptr<DesktopWindow> window;
    ASSERT_TRUE(becomesTrue([&] {
        window = DesktopWindow::find(display->name(), "zanto-player");
        return window != nullptr;
    }));
    window->resize({400, 300});
    ASSERT_TRUE(comesToShow(*window, "desktop-before-drag", *atRest));
    window->drag({100, 200}, {180, 150});
    ASSERT_TRUE(becomesTrue([&] {
        return folder.read("script.jsonl").find("\"up\"") != std::string::npos;
    })) << folder.read("script.jsonl");

    const ProgramRun playback = runPlayer("render --size 1280x720 --time 1000 --actions " + script +
                                          " --output " + folder.pathOf("end.png"));
    ASSERT_EQ(playback.exitCode, 0) << playback.standardError;
    const auto end = platform::Image::imageWithContentsOfFile(folder.pathOf("end.png"));
    ASSERT_NE(end, nullptr);
    EXPECT_FALSE(std::ranges::equal(end->pixels(), atRest->pixels())) << "the drag did nothing";
    EXPECT_TRUE(comesToShow(*window, "desktop-after-drag", *end));
    window->close();
    EXPECT_EQ(program.exitCode(), 0);
}

TEST(Desktop, PrintsWhatIsPickedAndRecordsIt) {
    const auto display = tests::VirtualDisplay::start();
    if (!display)
        GTEST_SKIP() << "Xvfb is not installed or does not start";
    const tests::TemporaryFolder folder;
    const std::string hotSpots = folder.addText(
        "spots.json", R"({"auto_picking":false,"hot_spots":[{"name":"door","vertical":0,)"
                      R"("horizontal":0,"image":")" +
                          std::string(ZANTO_SOURCE_DIR) + R"(/Resources/watermark.png"}]})");
    const std::string script = folder.pathOf("script.jsonl");
    // The shell sends standard output where it can be read.
    tests::ChildProcess program(
        {"/bin/sh", "-c",
         std::string("exec '") + ZANTO_PLAYER + "' --hot-spots '" + hotSpots + "' --record '" +
             script + "' >'" + folder.pathOf("picks") + "'"},
        {"DISPLAY=" + display->name(), "SDL_VIDEODRIVER=x11", tests::kWithoutLeakCheck},
        tests::ChildProcess::StandardError::Dropped);
    std::unique_ptr<DesktopWindow> window;
    ASSERT_TRUE(becomesTrue([&] {
        window = DesktopWindow::find(display->name(), "zanto-player");
        return window != nullptr;
    }));
    ASSERT_TRUE(becomesTrue([&] { return window->picture() != nullptr; }));
    window->drag({640, 360}, {640, 360});
    EXPECT_TRUE(becomesTrue([&] { return !folder.read("picks").empty(); }));
    EXPECT_EQ(folder.read("picks"), "{\"pick\":\"door\",\"index\":0,\"tap\":true}\n");
    window->close();
    EXPECT_EQ(program.exitCode(), 0);

    const ProgramRun playback = runPlayer(
        "render --size 1280x720 --actions " + script + " --hot-spots " + hotSpots + " --trace " +
        folder.pathOf("trace.jsonl") + " --output " + folder.pathOf("end.png"));
    ASSERT_EQ(playback.exitCode, 0) << playback.standardError;
    EXPECT_NE(folder.read("trace.jsonl")
                  .find(R"("hook":"detectPickedHotSpotObjectWithName","name":"door")"),
              std::string::npos);
}

TEST(Desktop, IsSteeredByAnAttitudeTrace) {
    const auto display = tests::VirtualDisplay::start();
    if (!display)
        GTEST_SKIP() << "Xvfb is not installed or does not start";
    const tests::TemporaryFolder folder;
    const std::string trace = folder.addText("trace.csv", "seconds,x,y,z,w\n"
                                                          "0,0,0,0,1\n"
                                                          "0.1,0.5,0.5,0.5,0.5\n");
    const std::string script =
        folder.addText("script.jsonl", R"({"at":0,"attitude":[0.5,0.5,0.5,0.5]}
{"at":0,"device_motion":true})");
    const ProgramRun rendering = runPlayer("render --size 1280x720 --actions " + script +
                                           " --output " + folder.pathOf("steered.png"));
    ASSERT_EQ(rendering.exitCode, 0) << rendering.standardError;
    const auto steered = platform::Image::imageWithContentsOfFile(folder.pathOf("steered.png"));
    ASSERT_NE(steered, nullptr);
    EXPECT_FALSE(std::ranges::equal(steered->pixels(), headlessPicture({1280, 720})->pixels()));

    tests::ChildProcess program(
        {ZANTO_PLAYER, "--attitude-trace", trace},
        {"DISPLAY=" + display->name(), "SDL_VIDEODRIVER=x11", tests::kWithoutLeakCheck});
    std::unique_ptr<DesktopWindow> window;
    ASSERT_TRUE(becomesTrue([&] {
        window = DesktopWindow::find(display->name(), "zanto-player");
        return window != nullptr;
    }));
    EXPECT_TRUE(comesToShow(*window, "desktop-steered", *steered));
    window->close();
    EXPECT_EQ(program.exitCode(), 0);
}
