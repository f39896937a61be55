#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/Screen.h"
#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

using namespace std::chrono_literals;
using platform::MainQueue;

namespace {

/// A window that shows a picture.
struct Shown : SDLScene {
    Shown() { show(flatPicture(8, 4, 255, 0, 0)); }
};

} // namespace

TEST(SDLHostLoop, PresentsNothingAndHardlyTurnsWhileNothingIsDirty) {
    Shown scene;
    const int frames = scene.host().framesPresented();
    EXPECT_LE(scene.turnsWithin(300ms), 3);
    EXPECT_EQ(scene.host().framesPresented(), frames);
}

TEST(SDLHostLoop, ReturnsAtOnceWhenItMayNotWait) {
    Shown scene;
    const auto before = scene.embedded().now();
    EXPECT_TRUE(scene.host().turn(0ms));
    EXPECT_LT(scene.embedded().now() - before, 1s);
}

TEST(SDLHostLoop, WaitsNoLongerThanADeadline) {
    Shown scene;
    MainQueue::main().asyncAfter(20ms, [&] { scene.host().quit(); });
    int turns = 1;
    while (scene.host().turn(std::nullopt))
        ++turns;
    // One for the wake-up that queueing sent, one at the deadline.
    EXPECT_LE(turns, 4);
}

TEST(SDLHostLoop, WakesForABlockOfAnotherThread) {
    Shown scene;
    std::thread other;
    // Queued once the loop waits, or just before: both have to wake it.
    MainQueue::main().async([&] {
        other = std::thread([&] { MainQueue::main().async([&] { scene.host().quit(); }); });
    });
    scene.host().run();
    other.join();
    EXPECT_FALSE(scene.host().turn(0ms));
}

TEST(SDLHostLoop, HasOneWakeUpOnItsWayHoweverOftenItIsRung) {
    Shown scene;
    for (int i = 0; i < 1000; ++i)
        MainQueue::main().wakeUp();
    EXPECT_LE(SDL_PeepEvents(nullptr, 1000, SDL_PEEKEVENT, SDL_USEREVENT, SDL_LASTEVENT), 1);
    EXPECT_LE(scene.turnsWithin(100ms), 4);
}

TEST(SDLHostLoop, DrawsAnExposedWindowOnce) {
    Shown scene;
    const int frames = scene.host().framesPresented();
    scene.push(SDL_WINDOWEVENT_EXPOSED);
    scene.push(SDL_WINDOWEVENT_EXPOSED);
    scene.settle();
    EXPECT_EQ(scene.host().framesPresented(), frames + 1);
}

TEST(SDLHostLoop, DrawsNothingWhileHiddenAndCatchesUpWhenShown) {
    Shown scene;
    SDL_HideWindow(scene.window());
    scene.settle();
    const int frames = scene.host().framesPresented();
    scene.controller().setDisplayMode(DisplayMode::Plane);
    EXPECT_LE(scene.turnsWithin(200ms), 5) << "a pass that is not visible causes no busy loop";
    EXPECT_EQ(scene.host().framesPresented(), frames);
    SDL_ShowWindow(scene.window());
    scene.settle();
    EXPECT_EQ(scene.host().framesPresented(), frames + 1);
}

TEST(SDLHostLoop, PacesAViewThatAlwaysAsks) {
    Shown scene;
    const int frames = scene.host().framesPresented();
    const auto before = scene.embedded().now();
    while (scene.host().framesPresented() < frames + 6) {
        scene.controller().view()->setNeedsDisplay();
        scene.host().turn(20ms);
    }
    // Six instants lie five intervals apart, and the first frame may come late.
    EXPECT_GE(scene.embedded().now() - before, 4 * 16ms);
}

TEST(SDLHostLoop, EndsWhenTheWindowIsClosed) {
    Shown scene;
    scene.push(SDL_WINDOWEVENT_CLOSE);
    scene.host().run();
    EXPECT_FALSE(scene.host().turn(std::nullopt)) << "and does not wait any more";
}

TEST(SDLHostLoop, EndsWhenTheSystemSaysSo) {
    Shown scene;
    SDL_Event event{};
    event.type = SDL_QUIT;
    SDL_PushEvent(&event);
    scene.host().run();
    EXPECT_FALSE(scene.host().turn(std::nullopt));
}

TEST(SDLHostKeys, ReachTheListenerInOrder) {
    Shown scene;
    std::u32string keys;
    scene.host().setKeyListener([&](const zanto::KeyEvent& press) {
        keys += press.character;
        if (press.key == zanto::KeyEvent::Key::Escape)
            scene.host().quit();
    });
    scene.pressKey(SDLK_1);
    scene.pressKey(SDLK_F5);
    scene.pressKey(SDLK_a);
    scene.pressKey(SDLK_ESCAPE);
    scene.host().run();
    EXPECT_EQ(keys, (std::u32string{U'1', U'a', U'\0'}));
}

TEST(SDLHostKeys, OfAnotherWindowAreNotOurs) {
    Shown scene;
    int keys = 0;
    scene.host().setKeyListener([&](const zanto::KeyEvent&) { ++keys; });
    SDL_Event event{};
    event.type = SDL_KEYDOWN;
    event.key.windowID = scene.windowId() + 1;
    event.key.keysym.sym = SDLK_a;
    SDL_PushEvent(&event);
    scene.settle();
    EXPECT_EQ(keys, 0);
}

TEST(SDLHostKeys, MayReplaceTheirListener) {
    Shown scene;
    int later = 0;
    scene.host().setKeyListener([&](const zanto::KeyEvent&) {
        scene.host().setKeyListener([&](const zanto::KeyEvent&) { ++later; });
    });
    scene.pressKey(SDLK_a);
    scene.pressKey(SDLK_b);
    scene.settle();
    EXPECT_EQ(later, 1);
}

TEST(SDLHostFullScreen, FillsTheDisplayAndGoesBack) {
    Shown scene;
    EXPECT_FALSE(scene.host().isFullScreen());
    scene.host().setFullScreen(true);
    scene.settle();
    EXPECT_TRUE(scene.host().isFullScreen());
    SDL_DisplayMode mode{};
    SDL_GetCurrentDisplayMode(0, &mode);
    const auto whole = platform::Screen::mainScreen().bounds().size;
    EXPECT_EQ(whole, (platform::Size{static_cast<double>(mode.w), static_cast<double>(mode.h)}));
    scene.host().setFullScreen(false);
    scene.settle();
    EXPECT_FALSE(scene.host().isFullScreen());
    EXPECT_EQ(platform::Screen::mainScreen().bounds().size, (platform::Size{160, 90}));
}

TEST(SDLHostFullScreen, MayBeTheStart) {
    SDLScene scene({.title = "test", .size = {160, 90}, .isFullScreen = true});
    scene.host().turn(0ms);
    EXPECT_TRUE(scene.host().isFullScreen());
    scene.host().setFullScreen(false);
    scene.host().turn(0ms);
    EXPECT_EQ(platform::Screen::mainScreen().bounds().size, (platform::Size{160, 90}));
}
