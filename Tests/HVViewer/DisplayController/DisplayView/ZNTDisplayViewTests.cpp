#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Interface/View.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <array>

namespace {

const platform::Size kLandscape{320, 180};

platform::ImagePtr grey() {
    return flatPicture(64, 32, 120, 120, 120);
}

void advanceBy(HeadlessPlayer& player, double seconds) {
    player.host().advanceTo(player.host().now() + platform::fromSeconds(seconds));
}

} // namespace

TEST(DisplayView, StartsWithoutContextDrawerOrProgram) {
    const auto host = makeHost(kLandscape);
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    EXPECT_EQ(view->displayVO(), DisplayMode::Sphere);
    EXPECT_EQ(view->newSize(), platform::Size{});
    EXPECT_EQ(view->initialRotationOffset(), 0.0F);
    EXPECT_FALSE(view->makeTransparent());
    EXPECT_FALSE(view->context());
    EXPECT_FALSE(view->glDrawer());
    EXPECT_FALSE(view->glProgram());
    ASSERT_TRUE(view->interractor());
    EXPECT_EQ(view->interractor()->interractionView(), view);
}

TEST(DisplayView, FollowsItsFrameUntilASizeIsAnnounced) {
    const auto host = makeHost(kLandscape);
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
    view->update();
    EXPECT_EQ(view->camera().aspect, 320.0 / 180.0);
    view->setFrame({{}, {200, 100}});
    view->update();
    EXPECT_EQ(view->camera().aspect, 2.0);
    view->willTransitionToSize({300, 100});
    view->update();
    EXPECT_EQ(view->camera().aspect, 3.0);
}

TEST(DisplayView, IgnoresTheAnnouncedSizeSideBySide) {
    const auto host = makeHost(kLandscape);
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, {159, 180}});
    view->willTransitionToSize({300, 100});
    view->startRenderVO(DisplayMode::SideBySide);
    view->update();
    EXPECT_EQ(view->camera().aspect, 159.0 / 180.0);
}

TEST(DisplayView, DividesTheFieldOfViewByTheZoom) {
    const auto host = makeHost(kLandscape);
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    view->update();
    const float neutral = view->modelViewProjectionMatrix().m[0];
    view->interractor()->setScale(2);
    view->update();
    EXPECT_GT(view->modelViewProjectionMatrix().m[0], neutral * 2) << "half the angle";
    EXPECT_EQ(view->viewScale(), 70.0) << "before the zoom";
}

TEST(DisplayView, StartsTheLittlePlanetWhereItsCameraStarts) {
    const auto host = makeHost({180, 320});
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, {180, 320}});
    view->startRenderVO(DisplayMode::LittlePlanet);
    EXPECT_EQ(view->displayVO(), DisplayMode::LittlePlanet);
    EXPECT_EQ(view->interractor()->currentVO(), DisplayMode::LittlePlanet);
    EXPECT_EQ(view->interractor()->scale(), 0.800000011920929);
    EXPECT_EQ(view->viewScale(), 115.0);
    view->startRenderVO(DisplayMode::Sphere);
    EXPECT_EQ(view->interractor()->scale(), 1.0);
    EXPECT_EQ(view->viewScale(), 70.0);
}

TEST(DisplayView, TurnsByItsRotationOffsetInEveryMode) {
    const auto host = makeHost(kLandscape);
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    for (const auto mode : {DisplayMode::Plane, DisplayMode::Sphere, DisplayMode::LittlePlanet,
                            DisplayMode::SideBySide}) {
        view->startRenderVO(mode);
        view->setInitialRotationOffset(0);
        view->update();
        const GLKMatrix4 straight = view->modelViewProjectionMatrix();
        view->setInitialRotationOffset(0.5F);
        view->update();
        const GLKMatrix4 expected = GLKMatrix4Rotate(straight, 0.5F, 0, 0, 1);
        for (std::size_t i = 0; i < 16; ++i)
            EXPECT_NEAR(view->modelViewProjectionMatrix().m[i], expected.m[i], 1e-6F);
    }
}

TEST(DisplayView, RedrawsForACameraChange) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    const int presented = player.host().framesPresented();
    player.view().interractor()->setNeedsUpdateMatrix();
    advanceBy(player, 0.1);
    EXPECT_EQ(player.host().framesPresented(), presented + 1);
}

TEST(DisplayView, IgnoresACameraChangeWhileHidden) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    int wakeUps = 0;
    platform::MainQueue::main().setWakeUp([&] { ++wakeUps; });
    player.view().matrixUpdated();
    EXPECT_EQ(wakeUps, 1) << "a visible view asks for a redraw";
    player.view().setHidden(true);
    wakeUps = 0;
    player.view().matrixUpdated();
    EXPECT_EQ(wakeUps, 0);
    platform::MainQueue::main().setWakeUp(nullptr);
}

TEST(DisplayView, RedrawsOnceForAChangedSetting) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    const int presented = player.host().framesPresented();
    player.view().setInitialRotationOffset(1);
    player.view().setInitialRotationOffset(1);
    advanceBy(player, 0.1);
    EXPECT_EQ(player.host().framesPresented(), presented + 1);
    player.view().setInitialRotationOffset(1);
    player.view().setMakeTransparent(false);
    advanceBy(player, 0.1);
    EXPECT_EQ(player.host().framesPresented(), presented + 1);
}

TEST(DisplayView, RedrawsOnceForTheLockAndForTransparency) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    int presented = player.host().framesPresented();
    for (const bool on : {true, false}) {
        player.view().setLockVerticalRotation(on);
        player.view().setLockVerticalRotation(on);
        advanceBy(player, 0.1);
        EXPECT_EQ(player.host().framesPresented(), ++presented) << "lock " << on;
        player.view().setMakeTransparent(on);
        player.view().setMakeTransparent(on);
        advanceBy(player, 0.1);
        EXPECT_EQ(player.host().framesPresented(), ++presented) << "transparent " << on;
        player.view().setLockVerticalRotation(on);
        player.view().setMakeTransparent(on);
        advanceBy(player, 0.1);
        EXPECT_EQ(player.host().framesPresented(), presented) << "nothing has changed";
    }
}

TEST(DisplayView, RedrawsForAnOrientationOnlyInsideASuperview) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    int presented = player.host().framesPresented();
    player.embedded().setOrientation(platform::InterfaceOrientation::LandscapeLeft);
    player.host().settle();
    EXPECT_EQ(player.host().framesPresented(), ++presented);

    const auto view = player.controller().displayView();
    view->removeFromSuperview();
    advanceBy(player, 0.1);
    presented = player.host().framesPresented();
    player.embedded().setOrientation(platform::InterfaceOrientation::LandscapeRight);
    advanceBy(player, 0.1);
    EXPECT_EQ(player.host().framesPresented(), presented);
}

TEST(DisplayView, IsClearAndNotOpaqueOnceMoved) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    EXPECT_FALSE(player.view().isOpaque());
    EXPECT_EQ(player.view().backgroundColor(), platform::kClearColor);
    const auto view = player.controller().displayView();
    view->setOpaque(true);
    view->setBackgroundColor(platform::kBlackColor);
    view->removeFromSuperview();
    EXPECT_FALSE(view->isOpaque());
    EXPECT_EQ(view->backgroundColor(), platform::kClearColor);
}

TEST(DisplayView, ClearsToOpaqueBlackOrToNothing) {
    // So wide that the plane leaves bars above and below.
    HeadlessPlayer player({400, 160});
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.show(grey());
    const auto border = [&] { return colourAt(*player.view().snapshot(), 0, 0); };
    EXPECT_EQ(border(), (std::array<int, 4>{0, 0, 0, 255}));
    player.view().setMakeTransparent(true);
    EXPECT_EQ(border(), (std::array<int, 4>{0, 0, 0, 0}));
    EXPECT_EQ(colourAt(*player.view().snapshot(), 200, 60)[3], 255) << "the content stays opaque";
    player.view().setMakeTransparent(false);
    EXPECT_EQ(border(), (std::array<int, 4>{0, 0, 0, 255}));
}

TEST(DisplayView, IsNotOpaqueOnceAFrameIsTransparent) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    player.view().setOpaque(true);
    (void)player.snapshot();
    EXPECT_TRUE(player.view().isOpaque());
    player.view().setMakeTransparent(true);
    (void)player.snapshot();
    EXPECT_FALSE(player.view().isOpaque());
}

TEST(DisplayView, SetsUpAnewForEveryPicture) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    const auto drawer = player.view().glDrawer();
    const auto program = player.view().glProgram();
    player.view().displayImage(grey());
    EXPECT_NE(player.view().glDrawer(), drawer);
    EXPECT_NE(player.view().glProgram(), program);
}

TEST(DisplayView, KeepsItsContextWhenAnotherViewGoes) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    other->displayImage(grey());
    EXPECT_EQ(other->context(), player.view().context());
    other.reset();
    EXPECT_TRUE(platform::GLContext::setCurrentContext(player.view().context()));
    const auto third = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    third->displayImage(grey());
    EXPECT_NE(third->context(), player.view().context());
    player.host().settle();
    EXPECT_EQ(third->glDrawer()->glTextureWatermark(),
              player.view().glDrawer()->glTextureWatermark())
        << "both are handles on one real context";
}

TEST(DisplayView, ShowsNothingWithoutAHost) {
    const LogRecorder log;
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    view->displayImage(grey());
    view->display();
    EXPECT_EQ(view->snapshot(), nullptr);
    EXPECT_EQ(log.count("no host has brought a GL context"), 1);
}

TEST(LostContext, ShowsTheSamePictureInANewOne) {
    HeadlessPlayer player({320, 180});
    player.controller().setDisplayMode(DisplayMode::LittlePlanet);
    player.show(grey());
    player.view().interractor()->setScale(1.5);
    const auto before = player.snapshot();
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(player.host().replaceContext());
        EXPECT_EQ(player.view().interractor()->scale(), 1.5) << "the camera stays";
        EXPECT_TRUE(picturesAreEqual("lost-context", *player.snapshot(), *before));
    }
}

TEST(LostContext, PresentsANewFrameByItself) {
    HeadlessPlayer player(kLandscape);
    player.show(grey());
    const int presented = player.host().framesPresented();
    ASSERT_TRUE(player.host().replaceContext());
    advanceBy(player, 0.1);
    EXPECT_GT(player.host().framesPresented(), presented);
}

TEST(LostContext, SetsNothingUpThatHasNotAppeared) {
    HeadlessPlayer player(kLandscape);
    player.controller().prepareImage(grey());
    ASSERT_TRUE(player.host().replaceContext());
    EXPECT_FALSE(player.view().glDrawer());
    player.embedded().appear();
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{120, 120, 120, 255}));
}

TEST(LostContext, DuringALoadLosesNothing) {
    HeadlessPlayer player(kLandscape);
    player.controller().prepareImage(grey());
    player.embedded().appear();
    ASSERT_TRUE(player.host().replaceContext());
    EXPECT_EQ(colourAt(*player.snapshot(), 160, 60), (std::array<int, 4>{120, 120, 120, 255}));
}
