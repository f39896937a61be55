#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Graphics/TextureInfo.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/HVViewer/Model/HotSpot/HotSpotScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

platform::PixelBufferPtr frame(YCbCr colour = kGrey) {
    return flatFrame(kFrameSize, colour);
}

using Spots = ZNTHotSpotDrawer::HotSpots;
using PointPtr = std::shared_ptr<ZNTHotSpotPickingPoint>;

/// A view that plays a video with hot spots.
class VideoSpots : public ::testing::Test {
protected:
    void show() { scene_.view().displayCVPixelBuffer(frame(), point_, spots_); }
    [[nodiscard]] ZNTHotSpotDrawer& drawer() {
        return *scene_.view().glDrawer()->hotSpotGLDrawer();
    }
    void advance(double seconds) {
        scene_.host().advanceTo(scene_.host().now() + platform::fromSeconds(seconds));
    }

    VideoScene scene_;
    Spots spots_{spotAt(0, 0, "ahead"), spotAt(0, 1, "left")};
    PointPtr point_ = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
};

} // namespace

TEST(VideoView, SetsEverythingUpWithItsFirstFrame) {
    const auto host = makeHost({320, 180});
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
    view->startRenderVO(DisplayMode::Plane);
    view->displayCVPixelBuffer(frame());
    ASSERT_TRUE(view->context());
    ASSERT_TRUE(view->glDrawer());
    EXPECT_EQ(view->glDrawer()->contentType(), ContentType::Video);
    EXPECT_EQ(view->glDrawer()->renderingVO(), DisplayMode::Plane);
    ASSERT_TRUE(view->glProgram());
    EXPECT_EQ(view->glProgram()->currentContentType(), ContentType::Video);
    EXPECT_FALSE(view->glDrawer()->hotSpotGLDrawer());
}

TEST(VideoView, SetsNothingUpAnewForLaterFrames) {
    VideoScene scene;
    scene.give(frame());
    const auto drawer = scene.view().glDrawer();
    const auto program = scene.view().glProgram();
    const auto mesh = drawer->voProvider();
    scene.give(frame());
    EXPECT_EQ(scene.view().glDrawer(), drawer);
    EXPECT_EQ(scene.view().glProgram(), program);
    EXPECT_EQ(drawer->voProvider(), mesh);
}

TEST(VideoView, AsksForOneRedrawAFrame) {
    VideoScene scene;
    scene.give(frame());
    (void)scene.snapshot();
    const int presented = scene.host().framesPresented();
    scene.give(frame());
    scene.give(frame());
    scene.host().advanceTo(platform::fromSeconds(1));
    EXPECT_EQ(scene.host().framesPresented(), presented + 1) << "both came before one instant";
    scene.give(frame());
    scene.host().advanceTo(platform::fromSeconds(2));
    EXPECT_EQ(scene.host().framesPresented(), presented + 2);
}

TEST(VideoView, DoesNothingWithoutAHost) {
    const LogRecorder log;
    const auto view = [] {
        const auto host = makeHost({320, 180});
        return platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
    }();
    view->displayCVPixelBuffer(frame());
    view->displayCVPixelBuffer(frame(), nullptr, {});
    EXPECT_FALSE(view->context());
    EXPECT_FALSE(view->glProgram());
}

TEST(VideoView, ShowsAVideoAfterAPicture) {
    HeadlessPlayer player({320, 180});
    player.show(flatPicture(8, 4, 0, 200, 0));
    ASSERT_EQ(middleOf(player), (std::array{0, 200, 0, 255}));
    player.view().displayCVPixelBuffer(frame(kOrange));
    EXPECT_LE(distance(middleOf(player), shownColour(kOrange)), 1);
    EXPECT_EQ(player.view().glProgram()->currentContentType(), ContentType::Video);
    EXPECT_FALSE(player.view().glDrawer()->glTextureI()) << "the picture has gone";
}

TEST(VideoView, ShowsAPictureAfterAVideoAndAVideoAfterThat) {
    VideoScene scene;
    scene.give(frame(kOrange));
    (void)scene.snapshot();
    scene.view().displayImage(flatPicture(8, 4, 0, 200, 0));
    EXPECT_EQ(middleOf(scene), (std::array{0, 200, 0, 255}));
    scene.give(frame(kBlue));
    EXPECT_LE(distance(middleOf(scene), shownColour(kBlue)), 1);
}

TEST(VideoView, FollowsTheModeWhileAVideoIsPaused) {
    VideoScene scene;
    scene.give(frame(kOrange));
    for (const DisplayMode mode :
         {DisplayMode::Plane, DisplayMode::LittlePlanet, DisplayMode::Sphere}) {
        scene.controller().setDisplayMode(mode);
        scene.host().advanceTo(scene.host().now() + platform::fromSeconds(1));
        EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1)
            << "mode " << static_cast<int>(mode);
    }
}

TEST(VideoView, KeepsItsCameraOverAPictureAndALostContext) {
    VideoScene scene;
    scene.give(frame());
    scene.view().interractor()->setScale(2);
    scene.view().displayImage(flatPicture(8, 4, 0, 200, 0));
    scene.give(frame());
    ASSERT_TRUE(scene.host().replaceContext());
    scene.give(frame());
    EXPECT_EQ(scene.view().interractor()->scale(), 2.0);
}

TEST(VideoView, ShowsTheLastFrameAgainInANewContext) {
    VideoScene scene;
    const auto last = videoFrame(kFrameSize, [](int x, int y) {
        return YCbCr{static_cast<std::uint8_t>(20 + 3 * x + 2 * y), 100, 140};
    });
    scene.give(last);
    const auto expected = scene.snapshot();
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(scene.host().replaceContext());
        scene.give(last);
        EXPECT_TRUE(picturesAreEqual("video-after-loss", *scene.snapshot(), *expected));
    }
}

TEST(VideoView, ShowsTheLastFrameAgainInBothViewsOfANewContext) {
    VideoScene scene;
    scene.controller().setDisplayMode(DisplayMode::SideBySide);
    const auto last = frame(kOrange);
    scene.give(last);
    scene.host().advanceTo(platform::fromSeconds(1));
    const auto expected = scene.snapshot();
    ASSERT_TRUE(scene.host().replaceContext());
    scene.give(last);
    EXPECT_TRUE(picturesAreEqual("video-halves-after-loss", *scene.snapshot(), *expected));
}

TEST(VideoView, TakesAFrameInANewContextThatNobodyToldItOf) {
    VideoScene scene;
    scene.give(frame(kBlue));
    (void)scene.snapshot();
    ASSERT_TRUE(scene.host().replaceContext());
    scene.give(frame(kOrange));
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
}

TEST(VideoView, DrawsBesideOneInAnotherMode) {
    VideoScene scene;
    const auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
    other->startRenderVO(DisplayMode::Plane);
    scene.give(frame(kOrange));
    other->displayCVPixelBuffer(frame(kBlue));
    scene.host().settle();
    const auto plane = other->snapshot();
    const auto sphere = scene.view().snapshot();
    for (int i = 0; i < 3; ++i) {
        scene.give(frame(kOrange));
        other->displayCVPixelBuffer(frame(kBlue));
        EXPECT_TRUE(picturesAreEqual("plane-beside-sphere", *other->snapshot(), *plane));
        EXPECT_TRUE(picturesAreEqual("sphere-beside-plane", *scene.view().snapshot(), *sphere));
    }
    EXPECT_LE(distance(colourAt(*plane, kClearX, kClearY), shownColour(kBlue)), 1);
    EXPECT_LE(distance(colourAt(*sphere, kClearX, kClearY), shownColour(kOrange)), 1);
}

TEST(VideoView, DrawsBesideOneWithAPicture) {
    VideoScene scene;
    const auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
    other->displayImage(flatPicture(8, 4, 0, 200, 0));
    scene.give(frame(kOrange));
    scene.host().settle();
    EXPECT_EQ(colourAt(*other->snapshot(), kClearX, kClearY), (std::array{0, 200, 0, 255}));
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
    EXPECT_EQ(colourAt(*other->snapshot(), kClearX, kClearY), (std::array{0, 200, 0, 255}));
}

TEST(VideoView, ShowsOnWhileAnotherViewIsTornDown) {
    VideoScene scene;
    const auto shared = frame(kOrange);
    auto other = platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
    other->displayCVPixelBuffer(shared);
    scene.give(shared);
    scene.host().settle();
    other.reset();
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
    scene.give(frame(kBlue));
    EXPECT_LE(distance(middleOf(scene), shownColour(kBlue)), 1);
}

// Hot spots

TEST_F(VideoSpots, AreAttachedWithTheFirstFrame) {
    scene_.view().setEnableAutoPicking(true);
    show();
    EXPECT_EQ(drawer().hotSpots(), spots_);
    EXPECT_EQ(drawer().pickingPoint(), point_);
    EXPECT_EQ(scene_.view().shownPickingPoint(), point_);
    EXPECT_TRUE(drawer().enableAutoPickingTest());
    scene_.host().settle();
    EXPECT_TRUE(drawer().isPickingAutomatically());
}

TEST_F(VideoSpots, AreDrawnOverTheVideo) {
    show();
    const auto picture = scene_.snapshot();
    EXPECT_EQ(colourAt(*picture, 160, 90), (std::array{255, 0, 0, 255}));
    EXPECT_LE(distance(colourAt(*picture, 60, 60), shownColour(kGrey)), 1);
}

TEST_F(VideoSpots, AreLeftAloneWhileTheListIsTheSame) {
    show();
    const auto first = std::vector{spots_[0]->texture(), spots_[1]->texture()};
    const auto* attached = &drawer();
    show();
    spots_ = Spots(spots_); // another list of the same hot spots
    show();
    EXPECT_EQ((std::vector{spots_[0]->texture(), spots_[1]->texture()}), first);
    EXPECT_EQ(&drawer(), attached);
}

TEST_F(VideoSpots, AreReplacedByAnotherList) {
    show();
    const auto* attached = &drawer();
    for (const Spots& spots : {Spots{spots_[0]}, Spots{spots_[1], spots_[0]},
                               Spots{spots_[1], spotAt(0, 2, "new")}, Spots{}}) {
        spots_ = spots;
        show();
        EXPECT_EQ(drawer().hotSpots(), spots);
        EXPECT_EQ(&drawer(), attached) << "their drawer stays";
    }
}

TEST_F(VideoSpots, AreComparedWithTheListGivenAlsoWhereAnIconFailed) {
    const LogRecorder log;
    spots_.push_back(ZNTHotSpot::hotSpotWithTextureNamed("there-is-none.png", 0, 0));
    show();
    ASSERT_EQ(drawer().hotSpots().size(), 2U);
    const auto texture = spots_[0]->texture();
    const auto failures = log.lines().size();
    show();
    EXPECT_EQ(spots_[0]->texture(), texture);
    EXPECT_EQ(log.lines().size(), failures);
}

TEST_F(VideoSpots, ArePickedAtAPointThatComesLater) {
    const PointPtr later = std::exchange(point_, nullptr);
    scene_.view().setEnableAutoPicking(true);
    show();
    scene_.host().settle();
    EXPECT_FALSE(drawer().isPickingAutomatically());
    point_ = later;
    show();
    EXPECT_EQ(drawer().pickingPoint(), later);
    EXPECT_EQ(drawer().hotSpots(), spots_);
    scene_.host().settle();
    EXPECT_TRUE(drawer().isPickingAutomatically());
    SelectionListener listener;
    advance(2);
    EXPECT_FALSE(listener.take().empty());
}

TEST_F(VideoSpots, ArePickedWhereTheyAre) {
    show();
    scene_.host().settle();
    SelectionListener listener;
    scene_.view().objectPickTestForPixelAtX(160, 90);
    EXPECT_EQ(listener.take(), (std::vector<Selection>{{"ahead", 0, true}}));
    scene_.view().objectPickTestForPixelAtX(60, 60);
    EXPECT_TRUE(listener.take().empty()) << "a video in picking colours is black";
    show();
    EXPECT_LE(distance(colourAt(*scene_.snapshot(), 60, 60), shownColour(kGrey)), 1);
}

TEST_F(VideoSpots, ComeToAVideoThatStartedWithout) {
    scene_.give(frame());
    show();
    EXPECT_EQ(drawer().hotSpots(), spots_);
    EXPECT_EQ(colourAt(*scene_.snapshot(), 160, 90), (std::array{255, 0, 0, 255}));
}

TEST_F(VideoSpots, TakeTheSwitchOfAutomaticPickingWithAnotherList) {
    show();
    scene_.view().setEnableAutoPicking(true);
    show();
    EXPECT_FALSE(drawer().enableAutoPickingTest()) << "nothing has changed but the switch";
    spots_.pop_back();
    show();
    EXPECT_TRUE(drawer().enableAutoPickingTest());
}

TEST_F(VideoSpots, AreThereAgainInANewContext) {
    show();
    const auto expected = scene_.snapshot();
    ASSERT_TRUE(scene_.host().replaceContext());
    show();
    EXPECT_TRUE(picturesAreEqual("spots-after-loss", *scene_.snapshot(), *expected));
}
