#include "Apps/Player/BuiltInPanorama.h"
#include "Tests/Apps/Player/DesktopWindow.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
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
