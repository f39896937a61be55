// Which of the device's samples steer the views of a controller, and what is seen of it.

#include "Platform/Motion/AttitudeSource.h"
#include "Tests/HVViewer/DisplayController/ShownPanorama.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace std::chrono_literals;

namespace {

/// Standing up, and then turned to the side as well.
const platform::Attitude kUpright{std::sqrt(0.5), 0, 0, std::sqrt(0.5)};
const platform::Attitude kTurned{0.5, 0.5, 0.5, 0.5};

} // namespace

TEST(DeviceSteering, TurnsBothHalvesSideBySide) {
    ShownPanorama player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(player.view().deviceMotionIsOn());
    EXPECT_TRUE(player.second().deviceMotionIsOn());
    const auto flat = player.snapshot();
    player.embedded().setAttitude({std::sqrt(0.5), 0, 0, std::sqrt(0.5)});
    player.advance(1s);
    const auto upright = player.snapshot();
    EXPECT_FALSE(picturesAreEqual("side-by-side-upright", *upright, *flat));
    EXPECT_TRUE(picturesMatch("side-by-side-halves", *columnsOf(*upright, 162, 160),
                              *columnsOf(*upright, 0, 160)));
}

TEST(DeviceSteering, EndsInAHalfThatIsHidden) {
    ShownPanorama player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(player.second().deviceMotionIsOn());
    player.controller().setDisplayMode(DisplayMode::Plane);
    EXPECT_FALSE(player.second().deviceMotionIsOn());
    EXPECT_FALSE(platform::AttitudeSource::shared().isWanted());
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_TRUE(player.second().deviceMotionIsOn());
}

TEST(DeviceSteering, BeginsAgainInAHalfThatIsShownAgain) {
    ShownPanorama player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.view().setHidden(true);
    EXPECT_FALSE(player.view().deviceMotionIsOn());
    player.view().setHidden(false);
    EXPECT_TRUE(player.view().deviceMotionIsOn());
}

TEST(DeviceSteering, BeginsInAHalfThatWasHiddenBeforeTheSensorArrived) {
    ShownPanorama player;
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.view().setHidden(true);
    player.view().setHidden(false);
    player.embedded().setAttitude(kUpright);
    EXPECT_TRUE(player.view().deviceMotionIsOn());
}

TEST(DeviceSteering, EndsWhenTheSensorGoesAway) {
    ShownPanorama player;
    player.embedded().setAttitude({0, 0, 0, 1});
    player.controller().turnOnDeviceMotionInterraction(true);
    player.advance(1s);
    const int frames = player.host().framesPresented();
    player.embedded().setAttitudeAvailable(false);
    player.advance(1s);
    EXPECT_FALSE(player.controller().deviceMotionIsOn());
    EXPECT_EQ(player.host().framesPresented(), frames + 1);
}

TEST(DeviceSteering, DrawsNothingBeforeTheFirstSample) {
    ShownPanorama player;
    player.embedded().setAttitudeAvailable(true);
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    EXPECT_EQ(colourAt(*player.snapshot(), 80, 90), (std::array{0, 0, 0, 255}));
}

TEST(DeviceSteering, EndsWithAPictureWhenTheSensorGoesAwayWithoutASample) {
    for (const DisplayMode mode : {DisplayMode::Sphere, DisplayMode::SideBySide}) {
        ShownPanorama player;
        player.controller().setDisplayMode(mode);
        player.advance(1s);
        const auto before = player.snapshot();
        player.embedded().setAttitudeAvailable(true);
        player.controller().turnOnDeviceMotionInterraction(true);
        player.view().setNeedsDisplay();
        player.second().setNeedsDisplay();
        player.advance(1s);
        const int frames = player.host().framesPresented();
        player.embedded().setAttitudeAvailable(false);
        player.advance(1s);
        EXPECT_EQ(player.host().framesPresented(), frames + 1);
        EXPECT_TRUE(picturesAreEqual("sensor-gone", *player.snapshot(), *before));
    }
}

TEST(DeviceSteering, BeginsWhenTheSensorArrivesSideBySide) {
    ShownPanorama player;
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.advance(1s);
    EXPECT_FALSE(player.controller().deviceMotionIsOn());
    const int frames = player.host().framesPresented();
    for (const platform::Attitude& attitude : {kUpright, kTurned}) {
        player.embedded().setAttitude(attitude);
        player.advance(1s);
    }
    EXPECT_EQ(player.host().framesPresented(), frames + 2);
    EXPECT_TRUE(player.controller().deviceMotionIsOn());
    EXPECT_TRUE(player.second().deviceMotionIsOn());
    const auto late = player.snapshot();
    EXPECT_TRUE(
        picturesMatch("late-halves", *columnsOf(*late, 162, 160), *columnsOf(*late, 0, 160)));
    player.controller().setDisplayMode(DisplayMode::Sphere);
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.advance(1s);
    EXPECT_TRUE(picturesAreEqual("late-as-early", *player.snapshot(), *late));
}

TEST(DeviceSteering, BeginsWhenTheSensorArrivesAfterItWasAskedFor) {
    ShownPanorama player;
    player.controller().turnOnDeviceMotionInterraction(true);
    EXPECT_FALSE(player.controller().deviceMotionIsOn()) << "there is no sensor";
    player.advance(1s);
    const auto touched = player.snapshot();
    player.embedded().setAttitude(kTurned);
    EXPECT_TRUE(player.controller().deviceMotionIsOn());
    player.advance(1s);
    EXPECT_FALSE(picturesAreEqual("asked-before", *player.snapshot(), *touched));
}

TEST(DeviceSteering, DoesNotBeginWhenItIsAskedForNoLonger) {
    ShownPanorama player;
    player.controller().turnOnDeviceMotionInterraction(true);
    player.controller().turnOnDeviceMotionInterraction(false);
    player.embedded().setAttitude(kTurned);
    EXPECT_FALSE(player.controller().deviceMotionIsOn());
    player.embedded().setAttitudeAvailable(false);
    player.controller().setDisplayMode(DisplayMode::SideBySide);
    player.controller().setDisplayMode(DisplayMode::LittlePlanet);
    player.controller().turnOnDeviceMotionInterraction(true);
    player.controller().setDisplayMode(DisplayMode::Sphere);
    player.embedded().setAttitude(kTurned);
    EXPECT_FALSE(player.controller().deviceMotionIsOn());
    EXPECT_FALSE(platform::AttitudeSource::shared().isWanted());
}

TEST(DeviceSteering, ReturnsWithTheSensorSideBySideOnly) {
    for (const DisplayMode mode : {DisplayMode::Sphere, DisplayMode::SideBySide}) {
        ShownPanorama player;
        player.embedded().setAttitude(kUpright);
        player.controller().turnOnDeviceMotionInterraction(true);
        player.controller().setDisplayMode(mode);
        player.advance(1s);
        player.embedded().setAttitudeAvailable(false);
        player.advance(1s);
        EXPECT_FALSE(player.controller().deviceMotionIsOn());
        player.embedded().setAttitude(kTurned);
        player.advance(1s);
        const bool isSideBySide = mode == DisplayMode::SideBySide;
        EXPECT_EQ(player.view().deviceMotionIsOn(), isSideBySide);
        EXPECT_EQ(player.second().deviceMotionIsOn(), isSideBySide);
    }
}

TEST(DeviceSteering, ShowsTheTouchedCameraAtOnceWhenItIsSwitchedOff) {
    ShownPanorama player;
    player.advance(1s);
    const auto touched = player.snapshot();
    player.embedded().setAttitude(kTurned);
    player.controller().turnOnDeviceMotionInterraction(true);
    player.advance(1s);
    const int frames = player.host().framesPresented();
    player.controller().turnOnDeviceMotionInterraction(false);
    player.advance(1s);
    EXPECT_EQ(player.host().framesPresented(), frames + 1);
    EXPECT_TRUE(picturesAreEqual("switched-off", *player.snapshot(), *touched));
    player.controller().turnOnDeviceMotionInterraction(false);
    player.advance(1s);
    EXPECT_EQ(player.host().framesPresented(), frames + 1) << "nothing changed";
}
