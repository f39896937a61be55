#include "Platform/Foundation/MainQueue.h"
#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

using namespace std::chrono_literals;
using platform::Point;
using platform::TouchEvent;
using platform::TouchPhase;

namespace {

constexpr std::array<int, 4> kRed{255, 0, 0, 255};
constexpr std::array<int, 3> kGreen{0, 255, 0};

/// A window that shows red.
struct OverlayScene : SDLScene {
    OverlayScene() {
        host().setTouchListener([this](const TouchEvent& event) { heard.push_back(event); });
        show(flatPicture(8, 4, 255, 0, 0));
    }
    /// A green square over the upper left corner.
    void drawGreen() {
        host().setOverlay([this](platform::Size size, double scale) {
            ++overlays;
            drawnSize = size;
            drawnScale = scale;
            glEnable(GL_SCISSOR_TEST);
            glScissor(0, static_cast<int>(size.height * scale) - 10, 10, 10);
            glClearColor(0, 1, 0, 1);
            glClear(GL_COLOR_BUFFER_BIT);
            glDisable(GL_SCISSOR_TEST);
        });
    }
    [[nodiscard]] std::array<int, 3> corner() {
        const auto colour = colourAt(*windowPicture(), 5, 5);
        return {colour[0], colour[1], colour[2]};
    }
    void click() const {
        pushButton(SDL_MOUSEBUTTONDOWN, 40, 40);
        pushButton(SDL_MOUSEBUTTONUP, 40, 40);
    }
    void pushDrop(Uint32 type, const char* text, Uint32 window) const {
        SDL_Event event{};
        event.type = type;
        event.drop.file = text ? SDL_strdup(text) : nullptr;
        event.drop.windowID = window;
        SDL_PushEvent(&event);
    }

    std::vector<TouchEvent> heard;
    int overlays = 0;
    platform::Size drawnSize;
    double drawnScale = 0;
};

} // namespace

TEST(SDLHostOverlay, IsDrawnOverEveryFrame) {
    OverlayScene scene;
    scene.drawGreen();
    scene.push(SDL_WINDOWEVENT_EXPOSED);
    scene.settle();
    EXPECT_EQ(scene.corner(), kGreen);
    EXPECT_EQ(colourAt(*scene.windowPicture(), 80, 20), kRed);
    EXPECT_EQ(scene.drawnSize, (platform::Size{160, 90}));
    EXPECT_EQ(scene.drawnScale, 1.0);
}

TEST(SDLHostOverlay, IsInNoSnapshot) {
    OverlayScene scene;
    scene.drawGreen();
    EXPECT_EQ(colourAt(*scene.embedded().snapshot(1).value(), 5, 5), kRed);
    EXPECT_EQ(scene.overlays, 0);
}

TEST(SDLHostOverlay, GetsOneFrameHoweverOftenItIsAskedFor) {
    OverlayScene scene;
    scene.drawGreen();
    const int frames = scene.host().framesPresented();
    scene.host().setNeedsFrame();
    scene.host().setNeedsFrame();
    scene.settle();
    EXPECT_EQ(scene.host().framesPresented(), frames + 1);
    EXPECT_EQ(scene.overlays, 1);
    EXPECT_EQ(scene.corner(), kGreen);
}

TEST(SDLHostOverlay, GoesWithTheNextFrameOnceItIsTakenAway) {
    OverlayScene scene;
    scene.drawGreen();
    scene.host().setNeedsFrame();
    scene.settle();
    scene.host().setOverlay({});
    scene.host().setNeedsFrame();
    scene.settle();
    EXPECT_EQ(colourAt(*scene.windowPicture(), 5, 5), kRed);
}

TEST(SDLHostOverlay, MayAskForTheNextFrameWhileItIsDrawn) {
    OverlayScene scene;
    int left = 3;
    scene.host().setOverlay([&](platform::Size /*size*/, double /*scale*/) {
        if (--left > 0)
            scene.host().setNeedsFrame();
    });
    const int frames = scene.host().framesPresented();
    scene.host().setNeedsFrame();
    scene.settle();
    EXPECT_EQ(scene.host().framesPresented(), frames + 3);
}

TEST(SDLHostOverlay, IsGivenTheFrameWhoseInstantComesWhileItIsDrawn) {
    OverlayScene scene;
    int overlays = 0;
    scene.host().setOverlay([&](platform::Size /*size*/, double /*scale*/) {
        if (++overlays == 1) {
            const auto late = scene.embedded().now() + 50ms;
            while (scene.embedded().now() < late) {
            }
            return;
        }
        SDL_Event ending{}; // of the wait after the last frame
        ending.type = SDL_USEREVENT;
        SDL_PushEvent(&ending);
    });
    bool hasWaited = false;
    platform::MainQueue::main().asyncAfter(10s, [&] { hasWaited = true; });
    scene.host().setNeedsFrame();
    scene.push(SDL_WINDOWEVENT_EXPOSED); // draws at once, before that frame
    while (overlays < 2 && !hasWaited)
        scene.host().turn(std::nullopt);
    EXPECT_FALSE(hasWaited);
}

TEST(SDLHostTouchFilter, KeepsTheTouchesThatItTakesFromEverybodyElse) {
    OverlayScene scene;
    std::vector<TouchPhase> offered;
    scene.host().setTouchFilter([&offered](const TouchEvent& event) {
        offered.push_back(event.phase);
        return event.phase == TouchPhase::Down; // which is the answer that counts
    });
    scene.click();
    scene.act();
    EXPECT_EQ(offered, (std::vector{TouchPhase::Down, TouchPhase::Up}));
    EXPECT_TRUE(scene.heard.empty());
}

TEST(SDLHostTouchFilter, LeavesTheOthersAsTheyAre) {
    OverlayScene scene;
    scene.host().setTouchFilter(
        [](const TouchEvent& event) { return event.phase != TouchPhase::Down; });
    scene.click();
    scene.act();
    EXPECT_EQ(scene.heard.size(), 2U);
}

TEST(SDLHostTouchFilter, KeepsATouchToItsEndThoughItHasGone) {
    OverlayScene scene;
    scene.host().setTouchFilter([](const TouchEvent& /*event*/) { return true; });
    scene.pushButton(SDL_MOUSEBUTTONDOWN, 40, 40);
    scene.act();
    scene.host().setTouchFilter({});
    scene.pushButton(SDL_MOUSEBUTTONUP, 40, 40);
    scene.act();
    EXPECT_TRUE(scene.heard.empty());
    scene.click();
    scene.act();
    EXPECT_EQ(scene.heard.size(), 2U) << "the next one";
}

TEST(SDLHostTouchFilter, HearsOfTouchesThatAreLost) {
    OverlayScene scene;
    std::vector<TouchPhase> offered;
    scene.host().setTouchFilter([&offered](const TouchEvent& event) {
        offered.push_back(event.phase);
        return true;
    });
    scene.pushButton(SDL_MOUSEBUTTONDOWN, 40, 40);
    scene.push(SDL_WINDOWEVENT_FOCUS_LOST);
    scene.act();
    EXPECT_EQ(offered, (std::vector{TouchPhase::Down, TouchPhase::Cancel}));
}

TEST(SDLHostPointer, IsToldOfWhereverItMovesAndThatItHasLeft) {
    OverlayScene scene;
    std::vector<std::optional<Point>> places;
    scene.host().setPointerListener(
        [&places](std::optional<Point> place) { places.push_back(place); });
    scene.pushMotion(10, 20);
    scene.push(SDL_WINDOWEVENT_LEAVE);
    scene.act();
    ASSERT_EQ(places.size(), 2U);
    EXPECT_EQ(places[0], (Point{10, 20}));
    EXPECT_FALSE(places[1]);
}

TEST(SDLHostDrop, TellsOfFilesAndOfText) {
    OverlayScene scene;
    std::vector<std::string> dropped;
    scene.host().setDropListener([&dropped](const std::string& what) { dropped.push_back(what); });
    for (const auto& [type, text] :
         {std::pair(SDL_DROPFILE, "/a b.jpg"), {SDL_DROPTEXT, "https://host/a.mp4"}}) {
        scene.pushDrop(SDL_DROPBEGIN, nullptr, scene.windowId());
        scene.pushDrop(static_cast<Uint32>(type), text, scene.windowId());
        scene.pushDrop(SDL_DROPCOMPLETE, nullptr, scene.windowId());
    }
    scene.act();
    EXPECT_EQ(dropped, (std::vector<std::string>{"/a b.jpg", "https://host/a.mp4"}));
}

TEST(SDLHostDrop, TellsOfTheFirstOfSeveral) {
    OverlayScene scene;
    std::vector<std::string> dropped;
    scene.host().setDropListener([&dropped](const std::string& what) { dropped.push_back(what); });
    scene.pushDrop(SDL_DROPBEGIN, nullptr, scene.windowId());
    scene.pushDrop(SDL_DROPFILE, "first", scene.windowId());
    scene.pushDrop(SDL_DROPFILE, "second", scene.windowId());
    scene.act();
    EXPECT_EQ(dropped, std::vector<std::string>{"first"});
}

TEST(SDLHostDrop, IsNotOfAnotherWindow) {
    OverlayScene scene;
    int drops = 0;
    scene.host().setDropListener([&drops](const std::string& /*what*/) { ++drops; });
    scene.pushDrop(SDL_DROPFILE, "theirs", scene.windowId() + 1);
    scene.act();
    EXPECT_EQ(drops, 0);
    scene.pushDrop(SDL_DROPFILE, "anybody's", 0);
    scene.act();
    EXPECT_EQ(drops, 1);
}
