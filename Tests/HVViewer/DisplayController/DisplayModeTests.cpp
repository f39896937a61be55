#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/HVViewer/DisplayController/ShownPanorama.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace std::chrono_literals;
using platform::Color;
using platform::Rect;

namespace {

const platform::Size kLandscape{322, 180};

} // namespace

TEST(DisplayMode, PutsTwoViewsSideBySideTwoPointsApart) {
    ShownPanorama player;
    EXPECT_TRUE(player.second().isHidden());
    EXPECT_EQ(player.view().frame(), (Rect{{}, kLandscape}));
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_FALSE(player.second().isHidden());
    EXPECT_EQ(player.view().frame(), (Rect{{0, 0}, {160, 180}}));
    EXPECT_EQ(player.second().frame(), (Rect{{162, 0}, {160, 180}}));
    EXPECT_EQ(player.view().displayVO(), DisplayMode::SideBySide);
    EXPECT_EQ(player.second().displayVO(), DisplayMode::SideBySide);
    player.controller().setDisplayMode(DisplayMode::LittlePlanet);
    EXPECT_TRUE(player.second().isHidden());
    EXPECT_EQ(player.view().frame(), (Rect{{}, kLandscape}));
    EXPECT_EQ(player.view().displayVO(), DisplayMode::LittlePlanet);
    EXPECT_EQ(player.second().displayVO(), DisplayMode::SideBySide) << "only hidden";
}

TEST(DisplayMode, ShowsTheSameOnBothSidesAndBlackBetween) {
    ShownPanorama player;
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    const auto picture = player.snapshot();
    EXPECT_TRUE(picturesMatch("side-by-side", *columnsOf(*picture, 162, 160),
                              *columnsOf(*picture, 0, 160)));
    for (const int x : {160, 161}) {
        for (const int y : {0, 90, 179})
            EXPECT_EQ(colourAt(*picture, x, y), (std::array{0, 0, 0, 255}));
    }
    EXPECT_GT(colourAt(*picture, 80, 90)[3], 0);
    EXPECT_NE(colourAt(*picture, 80, 90), (std::array{0, 0, 0, 255}));
}

TEST(DisplayMode, HalvesAnOddWidthWithoutAGapAtTheEdges) {
    ShownPanorama player({321, 180});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_EQ(player.view().frame(), (Rect{{0, 0}, {159.5, 180}}));
    EXPECT_EQ(player.second().frame(), (Rect{{161.5, 0}, {159.5, 180}}));
    const auto picture = player.snapshot();
    EXPECT_NE(colourAt(*picture, 0, 90), (std::array{0, 0, 0, 255}));
    EXPECT_NE(colourAt(*picture, 320, 90), (std::array{0, 0, 0, 255}));
}

TEST(DisplayMode, DoesNothingWhenItIsThePresentOne) {
    ShownPanorama player;
    player.advance(1s);
    player.view().interractor()->setScale(1.5);
    const int frames = player.host().framesPresented();
    player.controller().setDisplayMode(DisplayMode::Sphere);
    player.advance(1s);
    EXPECT_EQ(player.view().interractor()->scale(), 1.5);
    EXPECT_EQ(player.host().framesPresented(), frames);
}

TEST(DisplayMode, IsOnlyNotedBeforeTheViewIsLoaded) {
    for (const DisplayMode mode : {DisplayMode::Plane, DisplayMode::SideBySide}) {
        const auto host = makeHost(kLandscape);
        const auto controller = platform::make<ZNTDisplayViewController>();
        controller->setDisplayMode(mode);
        controller->setSphericalOffset(0.5F);
        controller->setEnableTransparentBackground(true);
        controller->turnOnTouchMotionInterraction(false);
        EXPECT_FALSE(controller->touchMotionIsOn()) << "there is no view to ask";
        host->embedded().setRootViewController(controller);
        EXPECT_EQ(controller->currentMode(), mode);
        EXPECT_EQ(controller->sphericalOffset(), 0.5F);
        EXPECT_TRUE(controller->enableTransparentBackground());
        const auto& view = *controller->displayView();
        EXPECT_EQ(view.displayVO(), DisplayMode::Sphere);
        EXPECT_EQ(view.initialRotationOffset(), 0.0F);
        EXPECT_FALSE(view.makeTransparent());
        EXPECT_TRUE(controller->touchMotionIsOn());
        EXPECT_TRUE(controller->virtualDisplayView()->isHidden());
        host->embedded().setRootViewController(nullptr);
    }
}

TEST(DisplayMode, MayChangeAfterLoadingAndBeforeAppearing) {
    const auto host = makeHost(kLandscape);
    const auto controller = platform::make<ZNTDisplayViewController>();
    controller->prepareImage(directionPanorama(256));
    host->embedded().setRootViewController(controller);
    controller->setDisplayMode(DisplayMode::SideBySide);
    host->embedded().appear();
    host->settle();
    const int frames = host->framesPresented();
    host->advanceTo(1s);
    EXPECT_EQ(host->framesPresented(), frames) << "the layout change was not drawn";
    const auto picture = host->embedded().snapshot(1.0).value();
    EXPECT_NE(colourAt(*picture, 240, 90), (std::array{0, 0, 0, 255}));
    host->embedded().setRootViewController(nullptr);
}

TEST(DisplayMode, WorksInPortrait) {
    ShownPanorama player({180, 322});
    for (const DisplayMode mode : {DisplayMode::Plane, DisplayMode::LittlePlanet,
                                   DisplayMode::SideBySide, DisplayMode::Sphere}) {
        player.controller().setDisplayMode(mode);
        player.advance(500ms);
        const auto picture = player.snapshot();
        EXPECT_NE(colourAt(*picture, 45, 161), (std::array{0, 0, 0, 255}))
            << static_cast<int>(mode);
    }
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_EQ(player.second().frame(), (Rect{{91, 0}, {89, 322}}));
}

TEST(DisplayMode, FollowsATurnOfTheDeviceSideBySide) {
    ShownPanorama player;
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.embedded().resize({180, 322}, 1);
    player.advance(1s);
    EXPECT_EQ(player.view().frame(), (Rect{{0, 0}, {89, 322}}));
    EXPECT_EQ(player.second().frame(), (Rect{{91, 0}, {89, 322}}));
    const auto picture = player.snapshot();
    EXPECT_TRUE(picturesMatch("side-by-side-turned", *columnsOf(*picture, 91, 89),
                              *columnsOf(*picture, 0, 89)));
    EXPECT_DOUBLE_EQ(player.view().camera().aspect, 89.0 / 322.0);
}

TEST(DisplayMode, KeepsTheSecondViewHiddenAndStartsAnewBetweenTheSingleModes) {
    ShownPanorama player;
    for (const DisplayMode mode :
         {DisplayMode::Plane, DisplayMode::LittlePlanet, DisplayMode::Sphere}) {
        player.view().interractor()->setScale(1.7);
        player.controller().setDisplayMode(mode);
        EXPECT_TRUE(player.second().isHidden());
        EXPECT_EQ(player.view().displayVO(), mode);
        EXPECT_NE(player.view().interractor()->scale(), 1.7);
    }
}

TEST(DisplayMode, SurvivesAViewWithoutASize) {
    ShownPanorama player;
    for (const DisplayMode mode : {DisplayMode::Sphere, DisplayMode::SideBySide}) {
        player.controller().setDisplayMode(mode);
        player.embedded().resize({0, 0}, 1);
        player.advance(1s);
        player.embedded().resize(kLandscape, 1);
        player.advance(1s);
        EXPECT_NE(colourAt(*player.snapshot(), 80, 90), (std::array{0, 0, 0, 255}));
    }
}

TEST(Switches, ReachTheMainViewOnly) {
    ShownPanorama player;
    player.embedded().setAttitudeAvailable(true);
    ZNTDisplayViewController& controller = player.controller();
    EXPECT_TRUE(controller.scaleIsOn());
    controller.turnOnScaleInterraction(false);
    controller.turnOnTouchMotionInterraction(false);
    controller.turnOnDeviceMotionInterraction(true);
    controller.setLockVerticalRotation(true);
    EXPECT_FALSE(controller.scaleIsOn());
    EXPECT_FALSE(controller.touchMotionIsOn());
    EXPECT_TRUE(controller.deviceMotionIsOn());
    EXPECT_TRUE(controller.lockVerticalRotation());
    EXPECT_TRUE(player.second().scaleIsOn());
    EXPECT_TRUE(player.second().touchMotionIsOn());
    EXPECT_FALSE(player.second().deviceMotionIsOn());
    EXPECT_FALSE(player.second().lockVerticalRotation());
}

TEST(Switches, GiveTheSphereAloneToTheDevice) {
    ShownPanorama player;
    ZNTDisplayViewController& controller = player.controller();
    EXPECT_FALSE(controller.deviceMotionAvailable()) << "there is no sensor";
    player.embedded().setAttitudeAvailable(true);
    EXPECT_TRUE(controller.deviceMotionAvailable());
    for (const DisplayMode mode : {DisplayMode::Plane, DisplayMode::LittlePlanet}) {
        controller.setDisplayMode(mode);
        EXPECT_FALSE(controller.deviceMotionAvailable());
        controller.turnOnDeviceMotionInterraction(true);
        EXPECT_FALSE(controller.deviceMotionIsOn());
    }
    controller.setDisplayMode(DisplayMode::SideBySide);
    EXPECT_FALSE(controller.deviceMotionAvailable());
    controller.turnOnDeviceMotionInterraction(false);
    EXPECT_TRUE(controller.deviceMotionIsOn()) << "side by side cannot be switched off";
}

TEST(Offset, TurnsAllViewsInEveryModeAndShowsAtOnce) {
    ShownPanorama player;
    player.advance(1s);
    const int frames = player.host().framesPresented();
    player.controller().setSphericalOffset(1.0F);
    player.advance(1s);
    EXPECT_EQ(player.host().framesPresented(), frames + 1);
    EXPECT_EQ(player.view().initialRotationOffset(), 1.0F);
    EXPECT_EQ(player.second().initialRotationOffset(), 1.0F);
    player.controller().setSphericalOffset(1.0F);
    player.advance(1s);
    EXPECT_EQ(player.host().framesPresented(), frames + 1) << "nothing changed";
}

TEST(Offset, IsRefusedUnlessItIsFinite) {
    ShownPanorama player;
    player.controller().setSphericalOffset(1.0F);
    player.advance(1s);
    const int frames = player.host().framesPresented();
    const LogRecorder log;
    for (const float refused : {std::nanf(""), HUGE_VALF, -HUGE_VALF})
        player.controller().setSphericalOffset(refused);
    EXPECT_EQ(log.lines().size(), 3U);
    player.advance(1s);
    EXPECT_EQ(player.controller().sphericalOffset(), 1.0F);
    EXPECT_EQ(player.view().initialRotationOffset(), 1.0F);
    EXPECT_EQ(player.second().initialRotationOffset(), 1.0F);
    EXPECT_EQ(player.host().framesPresented(), frames);
}

TEST(TransparentBackground, ReachesAllViews) {
    ShownPanorama player;
    player.controller().setEnableTransparentBackground(true);
    for (platform::View* view :
         {player.controller().view().get(), static_cast<platform::View*>(&player.view()),
          static_cast<platform::View*>(&player.second())})
        EXPECT_EQ(view->backgroundColor(), platform::kClearColor);
    EXPECT_TRUE(player.view().makeTransparent());
    EXPECT_TRUE(player.second().makeTransparent());
    player.controller().setEnableTransparentBackground(false);
    for (platform::View* view :
         {player.controller().view().get(), static_cast<platform::View*>(&player.view()),
          static_cast<platform::View*>(&player.second())})
        EXPECT_EQ(view->backgroundColor(), platform::kBlackColor);
    EXPECT_FALSE(player.second().makeTransparent());
}

TEST(TransparentBackground, ShowsWhatTheHostDrewBefore) {
    HeadlessPlayer player(kLandscape);
    player.show(flatPicture(64, 32, 0, 0, 255));
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.controller().setEnableTransparentBackground(true);
    player.view().interractor()->setScale(0.5); // the flat picture leaves a margin free
    const auto target = std::move(platform::OffscreenTarget::create({322, 180})).value();
    glBindFramebuffer(GL_FRAMEBUFFER, target->framebuffer());
    glDisable(GL_SCISSOR_TEST);
    glClearColor(1, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    player.embedded().draw(target->framebuffer(), {0, 0, 322, 180});
    const platform::Image picture(target->readPixels());
    EXPECT_EQ(colourAt(picture, 3, 3), (std::array{255, 0, 0, 255}));
    EXPECT_EQ(colourAt(picture, 161, 80), (std::array{0, 0, 255, 255}));
}
