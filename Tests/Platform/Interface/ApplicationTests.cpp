#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/Application.h"
#include "Platform/Interface/Window.h"
#include "Tests/Support/RecordingController.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace platform;
using Orientation = InterfaceOrientation;

namespace {

/// An application of its own with a window, and what is seen at each step of a change.
struct Scene {
    struct Step {
        std::string name;
        Orientation orientation;
        Size screen;
        Size view;
        friend bool operator==(const Step&, const Step&) = default;
    };

    Scene() {
        window->setRootViewController(controller);
        application.setKeyWindow(window);
        controller->onEvent = [this](const std::string& event) { note(event); };
        auto& center = NotificationCenter::defaultCenter();
        center.addObserver(observer, kWillChangeStatusBarFrame, [this](const Notification& n) {
            announced = n.value<Rect>(kStatusBarFrameUserInfoKey);
            note("will change");
        });
        center.addObserver(observer, kDidChangeStatusBarFrame,
                           [this](const Notification&) { note("did change"); });
    }
    void note(const std::string& name) {
        steps.push_back({name, application.statusBarOrientation(),
                         Screen::mainScreen().bounds().size, controller->view()->frame().size});
    }

    Application application;
    std::shared_ptr<Window> window = make<Window>();
    std::shared_ptr<RecordingController> controller = make<RecordingController>();
    std::shared_ptr<Object> observer = make<Object>();
    std::vector<Step> steps;
    Rect announced;
};

constexpr Size kWide{640, 360};
constexpr Size kTall{360, 640};

} // namespace

TEST(InterfaceOrientation, IsPortraitOrLandscapeOrNeither) {
    EXPECT_TRUE(isPortrait(Orientation::Portrait) && isPortrait(Orientation::PortraitUpsideDown));
    EXPECT_TRUE(isLandscape(Orientation::LandscapeLeft) &&
                isLandscape(Orientation::LandscapeRight));
    EXPECT_FALSE(isPortrait(Orientation::LandscapeLeft) || isPortrait(Orientation::Unknown));
    EXPECT_FALSE(isLandscape(Orientation::Portrait) || isLandscape(Orientation::Unknown));
}

TEST(Orientation, IsThreeWhenWiderThanHigh) {
    Application application;
    EXPECT_EQ(application.statusBarOrientation(), Orientation::Unknown);
    application.setContentSize(kWide, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 3);
}

TEST(Orientation, IsOneOtherwise) {
    Application application;
    application.setContentSize(kTall, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 1);
    application.setContentSize({500, 500}, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 1);
}

TEST(Orientation, IsFourWhenWiderThanHighAndLastSetSo) {
    Application application;
    application.setContentSize(kWide, 1);
    application.setOrientation(Orientation::LandscapeLeft);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 4);
    application.setContentSize(kTall, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 1);
    application.setContentSize(kWide, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 4);
}

TEST(Orientation, IsTwoOtherwiseAndLastSetSo) {
    Application application;
    application.setContentSize(kTall, 1);
    application.setOrientation(Orientation::PortraitUpsideDown);
    application.setContentSize(kWide, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 3);
    application.setContentSize({359, 640}, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 2);
}

TEST(Orientation, ComesBackToTheUsualOneWhenSetSo) {
    Application application;
    application.setContentSize(kWide, 1);
    application.setOrientation(Orientation::LandscapeLeft);
    application.setOrientation(Orientation::LandscapeRight);
    application.setContentSize(kTall, 1);
    application.setContentSize(kWide, 1);
    EXPECT_EQ(static_cast<int>(application.statusBarOrientation()), 3);
}

TEST(Application, SetsScreenAndStatusBarFrame) {
    Application application;
    application.setContentSize(kWide, 2);
    EXPECT_EQ(application.statusBarFrame(), (Rect{{}, kWide}));
    EXPECT_EQ(Screen::mainScreen().bounds(), (Rect{{}, kWide}));
    EXPECT_EQ(Screen::mainScreen().scale(), 2.0);
}

TEST(Application, ChangesItsSizeInTheAgreedOrder) {
    Scene scene;
    scene.application.setContentSize(kTall, 1);
    scene.steps.clear();
    scene.application.setContentSize(kWide, 1);
    const std::vector<Scene::Step> expected{
        {"will change", Orientation::Portrait, kTall, kTall},
        {"will transition", Orientation::LandscapeRight, kWide, kTall},
        {"did change", Orientation::LandscapeRight, kWide, kWide}};
    EXPECT_EQ(scene.steps, expected);
    EXPECT_EQ(scene.announced, (Rect{{}, kWide}));
    EXPECT_EQ(scene.controller->lastSize, kWide);
}

TEST(Application, TurnsWithoutTellingTheControllerOfASize) {
    Scene scene;
    scene.application.setContentSize(kWide, 2);
    scene.steps.clear();
    scene.application.setOrientation(Orientation::LandscapeLeft);
    const std::vector<Scene::Step> expected{
        {"will change", Orientation::LandscapeRight, kWide, kWide},
        {"did change", Orientation::LandscapeLeft, kWide, kWide}};
    EXPECT_EQ(scene.steps, expected);
    EXPECT_EQ(scene.announced, (Rect{{}, kWide}));
    EXPECT_EQ(Screen::mainScreen().scale(), 2.0);
}

TEST(Application, DoesWithoutAWindow) {
    Application application;
    application.setContentSize(kWide, 1);
    const auto empty = make<Window>();
    application.setKeyWindow(empty);
    application.setContentSize(kTall, 1);
    EXPECT_EQ(application.statusBarFrame().size, kTall);
}

TEST(Application, HoldsItsWindowWeakly) {
    Application application;
    auto window = make<Window>();
    application.setKeyWindow(window);
    EXPECT_EQ(application.keyWindow(), window);
    window.reset();
    EXPECT_EQ(application.keyWindow(), nullptr);
}

TEST(Application, IsOneForTheProcess) {
    EXPECT_EQ(&Application::sharedApplication(), &Application::sharedApplication());
}
