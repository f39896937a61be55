#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/Window.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PaintedView.h"
#include "Tests/Support/RecordingController.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

using namespace platform;

namespace {

using Events = std::vector<std::string>;

/// A window of its own on a screen of 30 by 20 points, without a host.
struct LooseWindow {
    LooseWindow() { Screen::mainScreen().setSize({30, 20}, 1); }

    std::shared_ptr<Window> window = make<Window>();
    std::shared_ptr<RecordingController> controller = make<RecordingController>();
};

/// The window of a host, with two painted views side by side in it.
struct PaintedWindow {
    PaintedWindow() {
        controller->view()->addSubview(left.view);
        controller->view()->addSubview(right.view);
        window->setRootViewController(controller);
        window->makeKeyAndVisible();
    }
    void draw() { window->draw({0, {0, 0, 16, 12}, 1}); }
    [[nodiscard]] int drawings() const { return left.painter->drawings + right.painter->drawings; }

    std::unique_ptr<zanto::HeadlessHost> host = makeHost({16, 12});
    std::shared_ptr<Window> window = make<Window>();
    std::shared_ptr<ViewController> controller = make<ViewController>();
    PaintedView left{{{0, 0}, {8, 12}}, kRedColor};
    PaintedView right{{{8, 0}, {8, 12}}, kBlueColor};
};

} // namespace

TEST(Window, LoadsTheViewAndGivesItTheScreensSize) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    EXPECT_EQ(s.window->rootViewController(), s.controller);
    EXPECT_EQ(s.controller->events, Events{"did load"});
    EXPECT_EQ(s.controller->view()->frame(), (Rect{{}, {30, 20}}));
    EXPECT_EQ(s.controller->view()->window(), s.window);
    EXPECT_FALSE(s.window->isVisible());
}

TEST(Window, IsTheWindowOfEveryViewInside) {
    LooseWindow s;
    const auto child = make<View>(Rect{});
    const auto grandchild = make<View>(Rect{});
    child->addSubview(grandchild);
    s.window->setRootViewController(s.controller);
    EXPECT_EQ(grandchild->window(), nullptr);
    s.controller->view()->addSubview(child);
    EXPECT_EQ(grandchild->window(), s.window);
}

TEST(Window, TellsTheControllerBeforeAndAfterItAppears) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    std::vector<bool> visible;
    s.controller->onEvent = [&](const std::string&) { visible.push_back(s.window->isVisible()); };
    s.window->makeKeyAndVisible();
    s.window->makeKeyAndVisible();
    EXPECT_EQ(s.controller->events, (Events{"did load", "will appear", "did appear"}));
    EXPECT_EQ(visible, (std::vector<bool>{false, true}));
}

TEST(Window, TellsTheControllerBeforeAndAfterItDisappears) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    s.window->makeKeyAndVisible();
    s.controller->events.clear();
    std::vector<bool> visible;
    s.controller->onEvent = [&](const std::string&) { visible.push_back(s.window->isVisible()); };
    s.window->resignVisible();
    s.window->resignVisible();
    EXPECT_EQ(s.controller->events, (Events{"will disappear", "did disappear"}));
    EXPECT_EQ(visible, (std::vector<bool>{true, false}));
}

TEST(Window, LaysOutAfterTheControllerWasToldThatItAppears) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    Screen::mainScreen().setSize({40, 50}, 1);
    std::vector<Size> sizes;
    s.controller->onEvent = [&](const std::string&) {
        sizes.push_back(s.controller->view()->frame().size);
    };
    s.window->makeKeyAndVisible();
    EXPECT_EQ(sizes, (std::vector<Size>{{30, 20}, {40, 50}}));
}

TEST(Window, LetsAReplacedControllerDisappear) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    s.window->makeKeyAndVisible();
    s.controller->events.clear();
    const auto next = make<RecordingController>();
    s.window->setRootViewController(next);
    EXPECT_EQ(s.controller->events, (Events{"will disappear", "did disappear"}));
    EXPECT_EQ(s.controller->view()->window(), nullptr);
    EXPECT_EQ(next->events, Events{"did load"});
    EXPECT_FALSE(s.window->isVisible());
}

TEST(Window, LetsGoOfAControllerThatIsTakenOut) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    s.window->setRootViewController(nullptr);
    EXPECT_EQ(s.controller.use_count(), 1);
    s.window->makeKeyAndVisible();
    s.window->layout();
    EXPECT_FALSE(s.window->isVisible());
    EXPECT_FALSE(s.window->needsDisplay());
}

TEST(Window, HasNothingToDrawWhileInvisible) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    EXPECT_TRUE(s.controller->view()->needsDisplay());
    EXPECT_FALSE(s.window->needsDisplay());
    s.window->makeKeyAndVisible();
    EXPECT_TRUE(s.window->needsDisplay());
    s.window->resignVisible();
    EXPECT_FALSE(s.window->needsDisplay());
}

TEST(Window, HasNoPictureWithoutARootView) {
    const auto host = makeHost({4, 4});
    const auto picture = make<Window>()->snapshot(1);
    ASSERT_FALSE(picture.ok());
    EXPECT_EQ(picture.error().code, ErrorCode::Unavailable);
}

TEST(Window, HasNoPictureWithoutAHost) {
    LooseWindow s;
    s.window->setRootViewController(s.controller);
    const auto picture = s.window->snapshot(1);
    ASSERT_FALSE(picture.ok());
    EXPECT_EQ(picture.error().code, ErrorCode::Unavailable);
}

TEST(WindowPass, DrawsEveryVisibleViewOnceHoweverOftenItAsked) {
    PaintedWindow s;
    s.draw();
    EXPECT_EQ(s.drawings(), 2);
    EXPECT_FALSE(s.window->needsDisplay());
    s.left.view->setNeedsDisplay();
    s.left.view->setNeedsDisplay();
    EXPECT_TRUE(s.window->needsDisplay());
    s.draw();
    EXPECT_EQ(s.left.painter->drawings, 2);
    EXPECT_EQ(s.right.painter->drawings, 2);
}

TEST(WindowPass, LeavesWhatIsAskedForWhileDrawingToALaterPass) {
    PaintedWindow s;
    s.left.painter->during = [](GLView& view) { view.setNeedsDisplay(); };
    s.draw();
    EXPECT_EQ(s.drawings(), 2);
    EXPECT_TRUE(s.window->needsDisplay());
    EXPECT_FALSE(s.window->needsDisplayAtOnce());
}

TEST(WindowPass, DrawsNothingWhileInvisible) {
    PaintedWindow s;
    s.window->resignVisible();
    s.draw();
    EXPECT_EQ(s.drawings(), 0);
}

TEST(Display, AsksForAPassAtOnceOutsideOne) {
    PaintedWindow s;
    s.draw();
    s.left.view->display();
    EXPECT_EQ(s.drawings(), 2);
    EXPECT_TRUE(s.window->needsDisplayAtOnce());
    s.draw();
    EXPECT_EQ(s.drawings(), 4);
    EXPECT_FALSE(s.window->needsDisplayAtOnce());
    EXPECT_FALSE(s.window->needsDisplay());
}

TEST(Display, DrawsAtOnceInsideAPass) {
    PaintedWindow s;
    s.draw();
    s.right.painter->during = [&](GLView&) { s.left.view->display(); };
    s.draw();
    EXPECT_EQ(s.left.painter->drawings, 3);
    EXPECT_EQ(s.left.painter->lastRect, (Rect{{}, {8, 12}}));
    EXPECT_FALSE(s.window->needsDisplay());
}

TEST(Display, OfAHiddenViewDrawsNothingAndHurriesNobody) {
    PaintedWindow s;
    s.draw();
    s.left.view->setHidden(true);
    s.draw();
    s.left.view->display();
    EXPECT_FALSE(s.window->needsDisplay());
    s.right.view->setNeedsDisplay();
    EXPECT_TRUE(s.window->needsDisplay());
    EXPECT_FALSE(s.window->needsDisplayAtOnce());
}

TEST(Display, OfAViewInsideAHiddenOneDrawsNothing) {
    PaintedWindow s;
    const auto holder = make<View>(Rect{{}, {8, 12}});
    holder->setHidden(true);
    holder->addSubview(s.left.view);
    s.controller->view()->addSubview(holder);
    s.right.painter->during = [&](GLView&) { s.left.view->display(); };
    s.draw();
    EXPECT_EQ(s.left.painter->drawings, 0);
}

TEST(Display, WaitsForAPassAfterOneThatFailed) {
    PaintedWindow s;
    s.right.painter->during = [](GLView&) { throw AssertionFailure("File", 1, "broken"); };
    EXPECT_THROW(s.draw(), AssertionFailure);
    const int before = s.left.painter->drawings;
    s.left.view->display();
    EXPECT_EQ(s.left.painter->drawings, before);
    EXPECT_TRUE(s.window->needsDisplayAtOnce());
}

TEST(WindowSnapshot, DrawsAFreshFrameAndLeavesRequestsAlone) {
    PaintedWindow s;
    s.draw();
    s.left.view->setNeedsDisplay();
    const auto picture = s.window->snapshot(2);
    ASSERT_TRUE(picture.ok());
    EXPECT_EQ(picture.value()->widthPx(), 32);
    EXPECT_EQ(picture.value()->heightPx(), 24);
    EXPECT_EQ(picture.value()->scale(), 2.0);
    EXPECT_EQ(colourAt(*picture.value(), 15, 0), (std::array<int, 4>{255, 0, 0, 255}));
    EXPECT_EQ(colourAt(*picture.value(), 16, 0), (std::array<int, 4>{0, 0, 255, 255}));
    EXPECT_TRUE(s.window->needsDisplay());
}

TEST(WindowSnapshot, IsOpaqueOverAnOpaqueRootView) {
    PaintedWindow s;
    PaintedView pale{{{0, 0}, {16, 12}}, {0, 1, 0, 0.25F}};
    s.controller->view()->addSubview(pale.view);
    const auto picture = s.window->snapshot(1);
    ASSERT_TRUE(picture.ok());
    EXPECT_EQ(colourAt(*picture.value(), 0, 0)[3], 255);
    s.controller->view()->setBackgroundColor(kClearColor);
    const auto transparent = s.window->snapshot(1);
    ASSERT_TRUE(transparent.ok());
    EXPECT_EQ(colourAt(*transparent.value(), 0, 0)[3], 64);
}

TEST(WindowSnapshot, IsRefusedBeyondWhatAFramebufferHolds) {
    PaintedWindow s;
    const auto picture = s.window->snapshot(1e4);
    ASSERT_FALSE(picture.ok());
    EXPECT_EQ(picture.error().code, ErrorCode::TooLarge);
}

TEST(WindowSnapshot, LeavesTheFramebufferBindingAlone) {
    PaintedWindow s;
    GLint before = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &before);
    ASSERT_TRUE(s.window->snapshot(1).ok());
    GLint after = -1;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &after);
    EXPECT_EQ(after, before);
}
