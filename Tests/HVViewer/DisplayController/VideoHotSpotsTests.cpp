#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/PictureCompare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using ::testing::ElementsAre;

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
