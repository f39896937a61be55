#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"
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

/// A player that shows a picture whose every direction has a colour of its own.
struct Shown : HeadlessPlayer {
    explicit Shown(platform::Size size = kLandscape) : HeadlessPlayer(size) {
        show(directionPanorama(1024));
    }
    [[nodiscard]] ZNTDisplayView& second() { return *controller().virtualDisplayView(); }
    void advance(platform::Instant span) { host().advanceTo(host().now() + span); }
};

platform::ImagePtr half(const platform::Image& picture, int left, int widthPx) {
    const auto height = static_cast<int>(picture.size().height);
    platform::PixelStorage part(widthPx, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < widthPx; ++x) {
            const auto colour = colourAt(picture, left + x, y);
            std::copy(colour.begin(), colour.end(),
                      part.row(y) + static_cast<std::ptrdiff_t>(4) * x);
        }
    }
    return std::make_shared<platform::Image>(std::move(part));
}

} // namespace

TEST(DisplayMode, PutsTwoViewsSideBySideTwoPointsApart) {
    Shown player;
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
    Shown player;
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    const auto picture = player.snapshot();
    EXPECT_TRUE(picturesMatch("side-by-side", *half(*picture, 162, 160), *half(*picture, 0, 160)));
    for (const int x : {160, 161}) {
        for (const int y : {0, 90, 179})
            EXPECT_EQ(colourAt(*picture, x, y), (std::array{0, 0, 0, 255}));
    }
    EXPECT_GT(colourAt(*picture, 80, 90)[3], 0);
    EXPECT_NE(colourAt(*picture, 80, 90), (std::array{0, 0, 0, 255}));
}

TEST(DisplayMode, HalvesAnOddWidthWithoutAGapAtTheEdges) {
    Shown player({321, 180});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_EQ(player.view().frame(), (Rect{{0, 0}, {159.5, 180}}));
    EXPECT_EQ(player.second().frame(), (Rect{{161.5, 0}, {159.5, 180}}));
    const auto picture = player.snapshot();
    EXPECT_NE(colourAt(*picture, 0, 90), (std::array{0, 0, 0, 255}));
    EXPECT_NE(colourAt(*picture, 320, 90), (std::array{0, 0, 0, 255}));
}

TEST(DisplayMode, DoesNothingWhenItIsThePresentOne) {
    Shown player;
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
    EXPECT_EQ(host->framesPresented(), frames) << "nobody saw the layout change";
    const auto picture = host->embedded().snapshot(1.0).value();
    EXPECT_NE(colourAt(*picture, 240, 90), (std::array{0, 0, 0, 255}));
    host->embedded().setRootViewController(nullptr);
}

TEST(DisplayMode, WorksInPortrait) {
    Shown player({180, 322});
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

TEST(DisplayMode, MovesIntoItsLayoutWithinThirdsOfASecond) {
    Shown player;
    player.advance(1s);
    const int frames = player.host().framesPresented();
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.advance(2s);
    const int moving = player.host().framesPresented() - frames;
    EXPECT_GE(moving, 18);
    EXPECT_LE(moving, 21);
}

TEST(DisplayMode, FollowsATurnOfTheDeviceSideBySide) {
    Shown player;
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.embedded().resize({180, 322}, 1);
    player.advance(1s);
    EXPECT_EQ(player.view().frame(), (Rect{{0, 0}, {89, 322}}));
    EXPECT_EQ(player.second().frame(), (Rect{{91, 0}, {89, 322}}));
    const auto picture = player.snapshot();
    EXPECT_TRUE(
        picturesMatch("side-by-side-turned", *half(*picture, 91, 89), *half(*picture, 0, 89)));
    EXPECT_DOUBLE_EQ(player.view().camera().aspect, 89.0 / 322.0);
}

TEST(DisplayMode, LetsBothHalvesFollowTheDevice) {
    Shown player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(player.view().deviceMotionIsOn());
    EXPECT_TRUE(player.second().deviceMotionIsOn());
    const auto flat = player.snapshot();
    player.embedded().setAttitude({std::sqrt(0.5), 0, 0, std::sqrt(0.5)});
    player.advance(1s);
    const auto upright = player.snapshot();
    EXPECT_FALSE(picturesAreEqual("side-by-side-upright", *upright, *flat));
    EXPECT_TRUE(
        picturesMatch("side-by-side-halves", *half(*upright, 162, 160), *half(*upright, 0, 160)));
}

TEST(DisplayMode, LetsTheHiddenHalfGoOfTheDevice) {
    Shown player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(player.second().deviceMotionIsOn());
    player.controller().setDisplayMode(DisplayMode::Plane);
    EXPECT_FALSE(player.second().deviceMotionIsOn());
    EXPECT_FALSE(platform::AttitudeSource::shared().isWanted());
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(player.second().deviceMotionIsOn());
}

TEST(DisplayMode, FollowsTheDeviceAgainWhenAHalfIsShownAgain) {
    Shown player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.view().setHidden(true);
    EXPECT_FALSE(player.view().deviceMotionIsOn());
    player.view().setHidden(false);
    EXPECT_TRUE(player.view().deviceMotionIsOn());
}

TEST(DisplayMode, GoesBackToTouchWhenTheSensorGoesAway) {
    Shown player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().turnOnDeviceMotionInterraction(true);
    player.advance(1s);
    const int frames = player.host().framesPresented();
    player.embedded().setAttitudeAvailable(false);
    player.advance(1s);
    EXPECT_FALSE(player.controller().deviceMotionIsOn());
    EXPECT_EQ(player.host().framesPresented(), frames + 1);
}

TEST(DisplayMode, KeepsTheSecondViewHiddenAndStartsAnewBetweenTheSingleModes) {
    Shown player;
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
    Shown player;
    for (const DisplayMode mode : {DisplayMode::Sphere, DisplayMode::SideBySide}) {
        player.controller().setDisplayMode(mode);
        player.embedded().resize({0, 0}, 1);
        player.advance(1s);
        player.embedded().resize(kLandscape, 1);
        player.advance(1s);
        EXPECT_NE(colourAt(*player.snapshot(), 80, 90), (std::array{0, 0, 0, 255}));
    }
}

TEST(DisplayMode, KeepsItsCameraWhileThereIsNoScreen) {
    Shown player;
    ZNTInterractor& camera = *player.view().interractor();
    camera.setPanVelocity({20, 20});
    player.embedded().touch({platform::TouchPhase::Down, 1, {160, 90}});
    player.embedded().touch({platform::TouchPhase::Move, 1, {180, 90}});
    player.embedded().touch({platform::TouchPhase::Move, 1, {220, 90}});
    player.embedded().touch({platform::TouchPhase::Up, 1, {220, 90}});
    player.embedded().resize({0, 0}, 1);
    player.advance(1s);
    player.embedded().resize(kLandscape, 1);
    player.advance(1s);
    EXPECT_FALSE(containsNaN(camera.rotationMatrix()));
    EXPECT_FALSE(containsNaN(camera.viewMatrix()));
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.embedded().resize({0, 0}, 1);
    player.advance(1s);
    player.embedded().resize(kLandscape, 1);
    player.advance(1s);
    EXPECT_FALSE(containsNaN(camera.translationMatrix()));
    EXPECT_NE(colourAt(*player.snapshot(), 80, 90), (std::array{0, 0, 0, 255}));
}

TEST(DisplayMode, DrawsNothingBeforeTheFirstSample) {
    Shown player;
    player.embedded().setAttitudeAvailable(true);
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_EQ(colourAt(*player.snapshot(), 80, 90), (std::array{0, 0, 0, 255}));
}

TEST(Switches, ReachTheMainViewOnly) {
    Shown player;
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
    Shown player;
    ZNTDisplayViewController& controller = player.controller();
    controller.turnOnDeviceMotionInterraction(true);
    EXPECT_FALSE(controller.deviceMotionIsOn()) << "there is no sensor";
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
    Shown player;
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

TEST(TransparentBackground, ReachesAllViews) {
    Shown player;
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
