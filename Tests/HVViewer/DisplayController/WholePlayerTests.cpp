// Everything that a host can ask for, once, through the public controller, in virtual time: the
// hooks must come in the order that hosts rely on.

#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/HttpServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Hooks = std::vector<std::string>;

/// A host application that shows one thing after the other.
class WholePlayer : public ::testing::Test {
protected:
    WholePlayer() {
        server_.serve("/panorama.png",
                      {.body = platform::encodePng(*flatPicture(64, 32, 0, 120, 0)).value()});
        server_.serve("/page.png", {.body = {'t', 'e', 'x', 't'}});
        server_.serveFile("/tour.mp4", tests::testClip({.frames = 60}));
    }

    [[nodiscard]] std::optional<platform::URL> address(const std::string& path) const {
        return platform::URL::URLWithString(server_.url(path));
    }
    HookRecorder& player() { return *scene_.player; }
    Hooks hooksWithin(double seconds) {
        scene_.advance(seconds);
        return player().take();
    }
    static std::shared_ptr<ZNTHotSpot> door() {
        const auto spot =
            ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
        spot->setHotSpotName("door");
        return spot;
    }
    void tap(platform::Point point) {
        for (const auto phase : {platform::TouchPhase::Down, platform::TouchPhase::Up})
            scene_.host->embedded().touch(
                {phase, 1, point, platform::TouchKind::Finger, scene_.host->now()});
        scene_.host->settle();
    }

    tests::HttpServer server_;
    PlaybackScene scene_;
};

} // namespace

TEST_F(WholePlayer, GivesItsHooksInOrderFromTheFirstPictureToTheLastVideo) {
    player().setEnableHotSpotTapDetection(true);
    scene_.appear();
    EXPECT_THAT(player().take(), IsEmpty());

    // A download that fails, one that is no picture, one that is.
    player().prepareImageWithUrl(address("/absent.png"));
    EXPECT_THAT(player().take(), ElementsAre("downloadImageStarted"));
    scene_.host->settle();
    EXPECT_THAT(player().take(), ElementsAre("downloadImageFinished")) << "a 404 has a body too";
    EXPECT_FALSE(player().isReadyForDisplay());
    player().prepareImageWithUrl(address("/page.png"));
    scene_.host->settle();
    EXPECT_THAT(player().take(), ElementsAre("downloadImageStarted", "downloadImageFinished"));
    player().prepareImageWithUrl(address("/panorama.png"));
    scene_.host->settle();
    EXPECT_THAT(player().take(), ElementsAre("downloadImageStarted", "downloadImageFinished"));
    ASSERT_TRUE(player().isReadyForDisplay());
    EXPECT_EQ(colourAt(*scene_.snapshot(), 128, 64)[1], 120);

    // Every mode, with a hot spot that is tapped and looked at.
    player().addHotSpots({door()}, ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5));
    player().setEnableHotSpotAutoPicking(true);
    scene_.host->embedded().disappear();
    scene_.appear();
    player().setDisplayMode(DisplayMode::Sphere);
    scene_.host->settle();
    tap({128, 64});
    EXPECT_THAT(player().take(), ElementsAre("picked door 0 tap"));
    EXPECT_THAT(hooksWithin(0.7), ElementsAre("picked door 0", "picked door 0"));
    player().setEnableHotSpotAutoPicking(false);
    player().prepareDisplayView();
    for (const auto mode : {DisplayMode::LittlePlanet, DisplayMode::SideBySide, DisplayMode::Plane,
                            DisplayMode::Sphere}) {
        player().setDisplayMode(mode);
        EXPECT_THAT(hooksWithin(0.5), IsEmpty());
        EXPECT_EQ(player().currentVO(), mode);
    }

    // A video over http in its place, replaced by a file, which plays to its end.
    player().prepareVideoWithUrl(address("/tour.mp4"));
    EXPECT_THAT(player().take(), IsEmpty());
    scene_.host->settle();
    EXPECT_THAT(player().take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading"));
    EXPECT_THAT(hooksWithin(0.5), IsEmpty());
    player().prepareVideoWithUrl(platform::URL::fileURLWithPath(tests::testClip()));
    EXPECT_THAT(player().take(), ElementsAre("videoPaused"));
    EXPECT_THAT(hooksWithin(0.5),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading"));
    player().pause();
    EXPECT_THAT(player().take(), ElementsAre("videoPaused"));
    EXPECT_THAT(hooksWithin(0.1), ElementsAre("videoPaused"));
    player().seekToTime(0.9);
    player().play();
    EXPECT_THAT(hooksWithin(0.5),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading",
                            "videoDidEndPlaying", "videoPaused"));

    // One that cannot be played, and the end.
    player().prepareVideoWithUrl(address("/absent.mp4"));
    scene_.host->settle();
    EXPECT_THAT(player().take(), ElementsAre("videoPaused", "downloadVideoFailedWithError"));
    const std::weak_ptr<HookRecorder> gone = scene_.player;
    scene_.release();
    EXPECT_TRUE(gone.expired());
    scene_.advance(1);
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
}

TEST_F(WholePlayer, MixesModesWithPicturesAndVideosThatAreOnTheirWay) {
    scene_.appear();
    player().prepareImageWithUrl(address("/panorama.png"));
    player().setDisplayMode(DisplayMode::SideBySide);
    scene_.host->settle();
    const auto both = scene_.snapshot();
    EXPECT_EQ(colourAt(*both, 63, 64)[1], 120);
    EXPECT_EQ(colourAt(*both, 192, 64)[1], 120);
    player().prepareVideoWithUrl(address("/tour.mp4"));
    player().setDisplayMode(DisplayMode::LittlePlanet);
    scene_.host->settle();
    player().setDisplayMode(DisplayMode::Plane);
    scene_.advance(0.5);
    EXPECT_EQ(scene_.shownFrame(), 15);
    player().setDisplayMode(DisplayMode::SideBySide);
    scene_.advance(0.1);
    player().setDisplayMode(DisplayMode::Plane);
    scene_.advance(0.1);
    EXPECT_EQ(scene_.shownFrame(), 21);
}

TEST_F(WholePlayer, TellsEveryPlayerOfTheProcessWhatIsPickedInOneOfThem) {
    const auto other = platform::make<HookRecorder>();
    other->prepareVideoWithUrl(platform::URL::fileURLWithPath(tests::testClip()));
    player().prepareImage(flatPicture(64, 32, 0, 120, 0));
    player().addHotSpots({door()}, nullptr);
    player().setDisplayMode(DisplayMode::Sphere);
    scene_.appear();
    other->take();
    player().displayView()->objectPickTestForPixelAtX(128, 64);
    scene_.host->settle();
    EXPECT_THAT(player().take(), ElementsAre("picked door 0 tap"));
    EXPECT_THAT(other->take(), ElementsAre("picked door 0 tap"));
}
