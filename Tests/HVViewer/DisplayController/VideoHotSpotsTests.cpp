#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/PictureCompare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

/// Fills the middle of the view, and is the first of its list: each look reports it.
HotSpots door() {
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
    spot->setHotSpotName("door");
    return {spot};
}

/// A video of three seconds on the sphere.
struct Watching : PlaybackScene {
    explicit Watching(bool looking) {
        player->setDisplayMode(DisplayMode::Sphere);
        player->setEnableHotSpotAutoPicking(looking);
        play(tests::testClip({.frames = 90}));
        player->take();
    }
    std::vector<std::string> picksDuring(double seconds) {
        player->take();
        advance(seconds);
        return player->take();
    }
    std::shared_ptr<ZNTHotSpotPickingPoint> point =
        ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
};

} // namespace

TEST(VideoHotSpots, AreShownAtOnceOverAFrameThatStands) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.play(tests::testClip());
    s.player->pause();
    const auto before = s.snapshot();
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    s.player->addHotSpots({spot}, point);
    const auto after = s.snapshot();
    EXPECT_EQ(colourAt(*after, 128, 64), (std::array{255, 0, 0, 255}));
    s.player->addHotSpots({}, point);
    EXPECT_TRUE(picturesAreEqual("video-without-hot-spots", *s.snapshot(), *before));
    s.player->setDisplayMode(DisplayMode::SideBySide);
    s.player->addHotSpots({spot}, point);
    const auto both = s.snapshot();
    EXPECT_EQ(colourAt(*both, 63, 64), (std::array{255, 0, 0, 255}));
    EXPECT_EQ(colourAt(*both, 192, 64), (std::array{255, 0, 0, 255}));
}

TEST(VideoHotSpots, ThatComeBeforeTheFirstFrameWaitForIt) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
    s.player->addHotSpots({spot}, nullptr);
    s.appear();
    EXPECT_EQ(spot->textureName(), 0U);
    s.play(tests::testClip());
    EXPECT_EQ(colourAt(*s.snapshot(), 128, 64), (std::array{255, 0, 0, 255}));
}

TEST(VideoHotSpots, ArePickedByTapAndByLook) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.player->setEnableHotSpotAutoPicking(true);
    s.play(tests::testClip({.frames = 90}));
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
    spot->setHotSpotName("door");
    s.player->addHotSpots({spot}, ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    s.player->take();
    s.player->displayView()->objectPickTestForPixelAtX(128, 64);
    s.host->settle();
    EXPECT_THAT(s.player->take(), ElementsAre("picked door 0 tap"));
    s.advance(0.7);
    EXPECT_THAT(s.player->take(), ElementsAre("picked door 0", "picked door 0"));
}

TEST(VideoHotSpots, LookIntoTheLeftHalfSideBySideWithEveryFrame) {
    PlaybackScene s;
    s.play(tests::testClip());
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    s.player->setDisplayMode(DisplayMode::SideBySide);
    s.player->addHotSpots({}, point);
    EXPECT_FALSE(point->sbsModeActive()) << "not by that alone";
    s.advance(0.1);
    EXPECT_TRUE(point->sbsModeActive());
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.advance(0.1);
    EXPECT_FALSE(point->sbsModeActive());
}

TEST(VideoHotSpots, AreLookedAtByTheSwitchThatIsSetWhenTheListIsShown) {
    Watching s(false);
    s.player->addHotSpots(door(), s.point);
    EXPECT_THAT(s.picksDuring(0.4), IsEmpty());
    s.player->setEnableHotSpotAutoPicking(true);
    EXPECT_TRUE(s.player->enableHotSpotAutoPicking());
    EXPECT_THAT(s.picksDuring(0.4), IsEmpty()) << "not by the switch alone";
    s.player->addHotSpots(door(), s.point);
    EXPECT_THAT(s.picksDuring(0.4), ElementsAre("picked door 0"));
    s.player->setEnableHotSpotAutoPicking(false);
    s.player->addHotSpots(door(), s.point);
    EXPECT_THAT(s.picksDuring(0.4), IsEmpty());
}

TEST(VideoHotSpots, AreNotLookedAtOnceAListComesWithoutAPoint) {
    Watching s(true);
    const auto spots = door();
    s.player->addHotSpots(spots, s.point);
    EXPECT_THAT(s.picksDuring(0.4), ElementsAre("picked door 0"));
    s.player->addHotSpots(spots, nullptr);
    EXPECT_EQ(s.player->hotSpotPickingPoint(), nullptr);
    EXPECT_EQ(s.player->displayView()->shownPickingPoint(), nullptr);
    EXPECT_THAT(s.picksDuring(0.4), IsEmpty());
    s.player->addHotSpots(spots, s.point);
    EXPECT_THAT(s.picksDuring(0.4), ElementsAre("picked door 0"));
}

TEST(VideoHotSpots, ReplaceTheListAndAreNotAddedToIt) {
    Watching s(false);
    s.player->addHotSpots(door(), s.point);
    const auto later = door();
    s.player->addHotSpots(later, s.point);
    EXPECT_EQ(s.player->hotSpots(), later);
    EXPECT_EQ(s.player->displayView()->glDrawer()->givenHotSpots(), later);
}

TEST(VideoHotSpots, ReachTheSecondViewOnlySideBySide) {
    Watching s(false);
    s.player->setDisplayMode(DisplayMode::SideBySide);
    const auto first = door();
    s.player->addHotSpots(first, nullptr);
    EXPECT_EQ(s.player->virtualDisplayView()->glDrawer()->givenHotSpots(), first);
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.player->addHotSpots(door(), nullptr);
    s.advance(0.1);
    EXPECT_EQ(s.player->virtualDisplayView()->glDrawer()->givenHotSpots(), first);
}

TEST(VideoHotSpots, AreKeptWithoutBeingShownBeforeTheFirstFrame) {
    PlaybackScene s;
    s.appear();
    const auto spots = door();
    const auto point = ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
    s.player->addHotSpots(spots, point);
    EXPECT_EQ(s.player->hotSpots(), spots);
    EXPECT_EQ(s.player->hotSpotPickingPoint(), point);
    EXPECT_EQ(s.player->displayView()->glDrawer(), nullptr);
}
