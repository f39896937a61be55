#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"
#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <future>

using platform::NotificationCenter;

namespace {

const platform::Size kLandscape{320, 180};
/// A place of the start view where no watermark lies, in any mode.
constexpr int kClearX = 160;
constexpr int kClearY = 60;

using Colour = std::array<int, 4>;
const Colour kBlack{0, 0, 0, 255};
const Colour kOrange{250, 120, 10, 255};

platform::ImagePtr orange() {
    return flatPicture(64, 32, 250, 120, 10);
}

/// With the buffer of 48 bytes that each hot spot drawer leaves behind.
std::array<int, 5> withBuffersOf(int hotSpotDrawers, std::array<int, 5> counts) {
    counts[1] += hotSpotDrawers;
    return counts;
}

Colour middleOf(HeadlessPlayer& player) {
    return colourAt(*player.snapshot(), kClearX, kClearY);
}

} // namespace

TEST(Drawer, StartsWithTheSphere) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    const auto drawer = player.view().glDrawer();
    EXPECT_EQ(drawer->renderingVO(), DisplayMode::Sphere);
    EXPECT_EQ(drawer->voProvider()->model().numberOfVertices, 64800);
    EXPECT_EQ(drawer->contentType(), ContentType::Photo);
}

TEST(Drawer, TakesThePlaneForModeZeroAndAFreshSphereForEveryOther) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    const auto drawer = player.view().glDrawer();
    const auto first = drawer->voProvider();
    drawer->changeRenderingVO(DisplayMode::LittlePlanet);
    const auto second = drawer->voProvider();
    EXPECT_NE(second, first);
    drawer->changeRenderingVO(DisplayMode::SideBySide);
    EXPECT_NE(drawer->voProvider(), second);
    EXPECT_EQ(drawer->voProvider()->model().numberOfVertices, 64800);
    drawer->changeRenderingVO(DisplayMode::Plane);
    EXPECT_EQ(drawer->voProvider()->model().numberOfVertices, 6);
}

TEST(Drawer, DoesNothingForTheModeThatItDraws) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    const auto mesh = player.view().glDrawer()->voProvider();
    const int presented = player.host().framesPresented();
    player.view().glDrawer()->changeRenderingVO(DisplayMode::Sphere);
    player.host().advanceTo(platform::fromSeconds(1));
    EXPECT_EQ(player.view().glDrawer()->voProvider(), mesh);
    EXPECT_EQ(player.host().framesPresented(), presented);
}

TEST(Drawer, RedrawsAtOnceForAnotherMode) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    const int presented = player.host().framesPresented();
    player.view().glDrawer()->changeRenderingVO(DisplayMode::Plane);
    player.host().settle();
    EXPECT_EQ(player.host().framesPresented(), presented + 1);
}

TEST(Drawer, DrawsNothingBeforeThePictureHasArrived) {
    HeadlessPlayer player(kLandscape);
    player.controller().prepareImage(orange());
    player.embedded().appear();
    ASSERT_FALSE(player.view().glDrawer()->glTextureI());
    const auto before = player.embedded().snapshot(1);
    EXPECT_EQ(colourAt(*before.value(), kClearX, kClearY), kBlack);
    EXPECT_EQ(middleOf(player), kOrange);
}

TEST(Drawer, ShowsTheContentWhileTheWatermarkIsMissing) {
    for (const bool isWhole : {false, true}) {
        std::promise<void> release;
        platform::DispatchQueue::background().async(
            [held = release.get_future().share()] { held.wait(); });
        HeadlessPlayer player(kLandscape);
        platform::GLDevice::main().setQuirks({.drawsWholeMeshes = isWhole});
        player.controller().prepareImage(orange());
        player.embedded().appear();
        player.embedded().runDueWork();
        ASSERT_TRUE(player.view().glDrawer()->glTextureI());
        ASSERT_FALSE(player.view().glDrawer()->glTextureWatermark());
        const auto picture = player.embedded().snapshot(1);
        EXPECT_TRUE(picturesAreEqual("no-watermark", *picture.value(),
                                     *flatPicture(320, 180, 250, 120, 10)));
        release.set_value();
        player.host().settle();
        EXPECT_TRUE(player.view().glDrawer()->glTextureWatermark());
    }
    platform::GLDevice::main().setQuirks({});
}

TEST(Drawer, BlendsTheWatermarkOverTheContent) {
    HeadlessPlayer player({180, 320});
    player.show(flatPicture(64, 32, 0, 0, 0));
    const auto picture = player.snapshot();
    int brightest = 0;
    for (int y = 0; y < 320; ++y) {
        for (int x = 0; x < 180; ++x)
            brightest = std::max(brightest, colourAt(*picture, x, y)[0]);
    }
    // White at alpha 0.40 over black.
    EXPECT_GT(brightest, 80);
    EXPECT_LE(brightest, 102);
    EXPECT_EQ(middleOf(player), kBlack);
}

TEST(Drawer, BlendsTheWatermarkTwiceOnThePlane) {
    HeadlessPlayer player({1280, 720});
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.show(flatPicture(64, 32, 0, 0, 0));
    const auto picture = player.snapshot();
    int brightest = 0;
    for (int y = 0; y < 720; ++y) {
        for (int x = 0; x < 1280; ++x)
            brightest = std::max(brightest, colourAt(*picture, x, y)[0]);
    }
    // 0.4 + 0.6 * 0.4 of white: each half of the plane is covered twice.
    EXPECT_GT(brightest, 120);
    EXPECT_LE(brightest, 163);
}

TEST(Drawer, DrawsBlackWhileMarkersArePicked) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    NotificationCenter::defaultCenter().post(ZNTHotSpotDrawerDisableDrawing);
    EXPECT_EQ(player.view().glDrawer()->enableColoring(), 1);
    EXPECT_TRUE(picturesAreEqual("picking", *player.snapshot(), *flatPicture(320, 180, 0, 0, 0)));
    NotificationCenter::defaultCenter().post(ZNTHotSpotDrawerEnableDrawing);
    EXPECT_EQ(player.view().glDrawer()->enableColoring(), 0);
    EXPECT_EQ(middleOf(player), kOrange);
}

TEST(Drawer, HearsNothingOnceItsObserversAreRemoved) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    player.view().glDrawer()->removeObservers();
    NotificationCenter::defaultCenter().post(ZNTHotSpotDrawerDisableDrawing);
    EXPECT_EQ(player.view().glDrawer()->enableColoring(), 0);
}

TEST(Drawer, ReplacesItsPictureWhenTheNewTextureArrives) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    player.view().glDrawer()->drawImage(flatPicture(8, 4, 0, 200, 0));
    const auto earlier = player.embedded().snapshot(1);
    EXPECT_EQ(colourAt(*earlier.value(), kClearX, kClearY), kOrange);
    EXPECT_EQ(middleOf(player), (Colour{0, 200, 0, 255}));
}

TEST(Drawer, IgnoresANullPicture) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    player.view().glDrawer()->drawImage(nullptr);
    EXPECT_EQ(middleOf(player), kOrange);
}

TEST(Drawer, UploadsAPictureOnceForTwoViews) {
    HeadlessPlayer player(kLandscape);
    const auto picture = orange();
    player.show(picture);
    const auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    other->displayImage(picture);
    player.host().settle();
    EXPECT_EQ(other->glDrawer()->glTextureI(), player.view().glDrawer()->glTextureI());
    EXPECT_EQ(other->glDrawer()->glTextureWatermark(),
              player.view().glDrawer()->glTextureWatermark());
}

TEST(Drawer, BindsItsOwnMeshAfterAnotherKindWasBound) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    const auto expected = player.snapshot();
    const auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    other->startRenderVO(DisplayMode::Plane);
    other->displayImage(orange());
    EXPECT_TRUE(picturesAreEqual("after-a-plane", *player.snapshot(), *expected));
}

TEST(Drawer, UploadsNothingWhileDifferentMeshesTakeTurns) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    const auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    other->startRenderVO(DisplayMode::Plane);
    other->displayImage(orange());
    player.host().settle();
    (void)other->snapshot();
    (void)player.snapshot();
    const auto before = liveGLObjects();
    for (int i = 0; i < 5; ++i) {
        (void)other->snapshot();
        (void)player.snapshot();
    }
    EXPECT_EQ(liveGLObjects(), before);
}

TEST(Drawer, DrawsOnAfterAnotherDrawerIsTornDown) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    const auto expected = player.snapshot();
    auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, kLandscape});
    other->displayImage(orange());
    player.host().settle();
    other.reset();
    EXPECT_TRUE(picturesAreEqual("after-a-teardown", *player.snapshot(), *expected));
}

TEST(Drawer, RebuildsThePlaneForAnotherShapeButNotForATurn) {
    HeadlessPlayer player(kLandscape);
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.show(orange());
    const auto mesh = player.view().glDrawer()->voProvider();
    player.embedded().resize({180, 320}, 1);
    EXPECT_EQ(player.view().glDrawer()->voProvider(), mesh);
    player.embedded().resize({200, 320}, 1);
    EXPECT_NE(player.view().glDrawer()->voProvider(), mesh);
    EXPECT_EQ(player.view().glDrawer()->voProvider()->model().vertices[1], 200.0F / 320.0F / 2);
}

TEST(Drawer, SetsTheStateThatItsMeshNeeds) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glDepthMask(GL_TRUE);
    player.view().glDrawer()->bindBuffers();
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));
    GLboolean depthMask = GL_TRUE;
    glGetBooleanv(GL_DEPTH_WRITEMASK, &depthMask);
    EXPECT_FALSE(depthMask);
}

TEST(Drawer, LeavesNoGLObjectBehind) {
    HeadlessPlayer player(kLandscape);
    // The host's own framebuffer, which stays.
    player.embedded().appear();
    player.host().settle();
    const auto before = liveGLObjects();
    player.embedded().disappear();
    player.show(orange());
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.controller().setDisplayMode(DisplayMode::LittlePlanet);
    (void)player.snapshot();
    EXPECT_GT(liveGLObjects(), before);
    player.releaseController();
    player.host().settle();
    EXPECT_EQ(liveGLObjects(), withBuffersOf(1, before));
}

TEST(Drawer, KeepsNothingOfEarlierAppearances) {
    HeadlessPlayer player(kLandscape);
    player.show(orange());
    (void)player.snapshot();
    const auto before = liveGLObjects();
    for (int i = 0; i < 5; ++i) {
        player.embedded().disappear();
        player.embedded().appear();
        (void)player.snapshot();
    }
    EXPECT_EQ(liveGLObjects(), withBuffersOf(5, before));
}

TEST(Watermark, IsWhatTheBuiltInTextDecodesTo) {
    const auto picture = builtInWatermark()->picture;
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->widthPx(), 4096);
    EXPECT_EQ(picture->heightPx(), 2048);
    EXPECT_EQ(builtInWatermark()->picture, picture) << "it is decoded once";
}

TEST(Watermark, IsNullForTextThatIsNoPicture) {
    const LogRecorder log;
    EXPECT_FALSE(decodeWatermark(""));
    EXPECT_FALSE(decodeWatermark("not base64!"));
    EXPECT_FALSE(decodeWatermark("bm8gcGljdHVyZQ=="));
    EXPECT_TRUE(log.lines().empty());
}

TEST(Watermark, StandsAtEveryHeadingAndNeverInTheMiddle) {
    const auto picture = builtInWatermark()->picture;
    const auto alphaAt = [&](int x, int y) { return colourAt(*picture, x % 4096, y)[3]; };
    // A portrait view is 36 degrees wide: every such window holds some of it, below the horizon.
    constexpr int window = 4096 * 36 / 360;
    for (int left = 0; left < 4096; left += 16) {
        int covered = 0;
        for (int x = left; x < left + window; ++x) {
            for (int y = 1024; y < 2048; y += 4)
                covered += alphaAt(x, y) > 80 ? 1 : 0;
        }
        EXPECT_GT(covered, 200) << "from column " << left;
    }
    for (int x = 0; x < 4096; ++x) {
        for (int y = 0; y < 1024 + 2048 * 10 / 180; ++y)
            ASSERT_EQ(alphaAt(x, y), 0) << x << ", " << y;
    }
}
