#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/LayoutConstraint.h"
#include "Tests/Hosts/EmbeddedScene.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace platform;

namespace {

constexpr Size kWide{64, 36};
constexpr Size kTall{36, 64};

int orientation() {
    return static_cast<int>(Application::sharedApplication().statusBarOrientation());
}

/// A scene whose view fills the window, and what could be seen at each step of a resize.
struct Watched {
    struct Step {
        std::string name;
        int orientation;
        Size screen;
        Size window;
        Size view;
        friend bool operator==(const Step&, const Step&) = default;
    };

    Watched() {
        for (const char* format : {"|[view]|", "V:|[view]|"}) {
            LayoutConstraint::activateConstraints(LayoutConstraint::constraintsWithVisualFormat(
                format, 0, {{"view", app.controller().view()->subviews().front()}}));
        }
        app.host().resize(kTall, 1);
        app.controller().onEvent = [this](const std::string& event) { note(event); };
        auto& center = NotificationCenter::defaultCenter();
        center.addObserver(observer, kWillChangeStatusBarFrame, [this](const Notification& n) {
            announced = n.value<Rect>(kStatusBarFrameUserInfoKey);
            note("will change");
        });
        center.addObserver(observer, kDidChangeStatusBarFrame,
                           [this](const Notification&) { note("did change"); });
    }
    void note(const std::string& name) {
        steps.push_back({name, orientation(), Screen::mainScreen().bounds().size,
                         app.controller().view()->frame().size, app.view().frame().size});
    }

    std::shared_ptr<Object> observer = make<Object>();
    std::vector<Step> steps;
    Rect announced;
    EmbeddedScene app; // goes first, which the controller is told
};

} // namespace

TEST(Resize, RunsInTheAgreedOrder) {
    Watched scene;
    scene.app.host().resize(kWide, 1);
    const std::vector<Watched::Step> expected{{"will change", 1, kTall, kTall, kTall},
                                              {"will transition", 3, kWide, kTall, kTall},
                                              {"did change", 3, kWide, kWide, kWide}};
    EXPECT_EQ(scene.steps, expected);
    EXPECT_EQ(scene.announced, (Rect{{}, kWide}));
    EXPECT_EQ(scene.app.controller().lastSize, kWide);
}

TEST(Resize, WantsTheNewSizeDrawn) {
    Watched scene;
    scene.app.host().appear();
    scene.app.turn();
    EXPECT_FALSE(scene.app.ask().drawNow);
    scene.app.host().resize(kWide, 1);
    scene.app.jumpTo(frame(1));
    EXPECT_TRUE(scene.app.turn());
    EXPECT_EQ(scene.app.painter().lastRect, (Rect{{}, kWide}));
}

TEST(Resize, TakesAnotherScaleForTheSameSize) {
    Watched scene;
    scene.app.host().resize(kTall, 2);
    EXPECT_EQ(Screen::mainScreen().scale(), 2.0);
    EXPECT_EQ(Screen::mainScreen().nativeBounds(), (Rect{{}, {72, 128}}));
}

TEST(Resize, DrawsAnewForAnotherScaleAlone) {
    EmbeddedScene scene;
    scene.host().appear();
    EXPECT_TRUE(scene.turn());
    scene.jumpTo(frame(1));
    scene.host().resize({16, 12}, 1);
    EXPECT_FALSE(scene.turn());
    scene.host().resize({16, 12}, 2);
    scene.jumpTo(frame(2));
    EXPECT_TRUE(scene.turn());
}

TEST(Turning, RunsInTheAgreedOrderWithoutAChangeOfSize) {
    Watched scene;
    scene.app.host().setOrientation(InterfaceOrientation::PortraitUpsideDown);
    const std::vector<Watched::Step> expected{{"will change", 1, kTall, kTall, kTall},
                                              {"did change", 2, kTall, kTall, kTall}};
    EXPECT_EQ(scene.steps, expected);
    EXPECT_EQ(scene.announced, (Rect{{}, kTall}));
}

TEST(HostOrientation, FollowsTheShapeUnlessLastSetOtherwise) {
    EmbeddedScene scene;
    scene.host().resize(kWide, 1);
    EXPECT_EQ(orientation(), 3);
    scene.host().resize(kTall, 1);
    EXPECT_EQ(orientation(), 1);
    scene.host().setOrientation(InterfaceOrientation::PortraitUpsideDown);
    EXPECT_EQ(orientation(), 2);
    scene.host().resize(kWide, 1);
    EXPECT_EQ(orientation(), 3);
    scene.host().setOrientation(InterfaceOrientation::LandscapeLeft);
    EXPECT_EQ(orientation(), 4);
    scene.host().resize(kTall, 1);
    EXPECT_EQ(orientation(), 2);
    scene.host().resize(kWide, 1);
    EXPECT_EQ(orientation(), 4);
}

TEST(HostOrientation, IsPortraitForASquare) {
    EmbeddedScene scene;
    scene.host().resize({50, 50}, 1);
    EXPECT_EQ(orientation(), 1);
}
