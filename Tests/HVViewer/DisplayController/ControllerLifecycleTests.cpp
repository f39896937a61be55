#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Foundation/Log.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

using platform::LogLevel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A subclass that wants tap detection before it is initialised.
class EagerController : public ZNTDisplayViewController {
public:
    EagerController() { setEnableHotSpotTapDetection(true); }
};

/// A subclass that forgets to call its base class.
class ForgetfulController : public ZNTDisplayViewController {
public:
    void viewDidLoad() override {}
};

std::shared_ptr<ZNTHotSpot> door() {
    const auto spot = ZNTHotSpot::hotSpotWithTextureImage(flatPicture(8, 8, 255, 0, 0), 0.0F, 0.0F);
    spot->setHotSpotName("door");
    return spot;
}

std::shared_ptr<ZNTHotSpotPickingPoint> middle() {
    return ZNTHotSpotPickingPoint::pickingPointForXPosition(0.5, 0.5);
}

platform::ImagePtr grey() {
    return flatPicture(64, 32, 120, 120, 120);
}

void tapInTheMiddle(PlaybackScene& s) {
    for (const auto phase : {platform::TouchPhase::Down, platform::TouchPhase::Up})
        s.host->embedded().touch({phase, 1, {128, 64}, platform::TouchKind::Finger, s.host->now()});
    s.host->settle();
}

/// The levels of the lines that are logged while it lives.
class LevelRecorder {
public:
    LevelRecorder() {
        previous_ = platform::setLogSink([this](LogLevel level, std::string_view) {
            if (level != LogLevel::Debug)
                levels_.push_back(level);
        });
    }
    ~LevelRecorder() { platform::setLogSink(previous_); }
    LevelRecorder(const LevelRecorder&) = delete;
    LevelRecorder& operator=(const LevelRecorder&) = delete;
    [[nodiscard]] std::vector<LogLevel> take() { return std::exchange(levels_, {}); }

private:
    std::vector<LogLevel> levels_;
    platform::LogSink previous_;
};

} // namespace

TEST(ControllerLifecycle, InitialisingSwitchesTapDetectionOff) {
    EXPECT_FALSE(platform::make<EagerController>()->enableHotSpotTapDetection());
}

TEST(ControllerLifecycle, MayAppearBeforeItsViewIsLoaded) {
    PlaybackScene s;
    const auto player = platform::make<HookRecorder>();
    player->setEnableHotSpotTapDetection(true);
    player->prepareImage(grey());
    player->addHotSpots({door()}, nullptr);
    player->viewWillAppear(false);
    EXPECT_FALSE(player->isViewLoaded());
    s.player = player;
    s.host->embedded().setRootViewController(player);
    s.appear();
    tapInTheMiddle(s);
    EXPECT_THAT(player->take(), ElementsAre("picked door 0 tap")) << "it appears as ever later";
}

TEST(ControllerLifecycle, GoesOnWithoutDisplayViewsWhereASubclassMakesNone) {
    const auto host = makeHost({256, 128});
    const auto player = platform::make<ForgetfulController>();
    player->setEnableHotSpotTapDetection(true);
    player->prepareImage(grey());
    host->embedded().setRootViewController(player);
    host->embedded().appear();
    player->setDisplayMode(DisplayMode::SideBySide);
    player->setEnableTransparentBackground(true);
    player->setSphericalOffset(1);
    host->embedded().resize({128, 256}, 1);
    host->settle();
    EXPECT_EQ(player->displayView(), nullptr);
    host->embedded().disappear();
    host->embedded().setRootViewController(nullptr);
}

TEST(ControllerLifecycle, ReportsATapOnceThoughItHasAppearedTwice) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.player->setEnableHotSpotTapDetection(true);
    s.player->prepareImage(grey());
    s.player->addHotSpots({door()}, nullptr);
    s.appear();
    s.host->embedded().disappear();
    s.appear();
    tapInTheMiddle(s);
    EXPECT_THAT(s.player->take(), ElementsAre("picked door 0 tap"));
}

TEST(ControllerLifecycle, TellsASizeToComeToTheMainViewOnly) {
    PlaybackScene s;
    s.host->embedded().resize({128, 256}, 1);
    EXPECT_EQ(s.player->displayView()->newSize(), (platform::Size{128, 256}));
    EXPECT_EQ(s.player->virtualDisplayView()->newSize(), platform::Size{});
}

TEST(ControllerLifecycle, EndsItsStreamerThoughSomebodyElseKeepsIt) {
    PlaybackScene s;
    s.play(tests::testClip());
    const auto streamer = s.player->streamer();
    s.release();
    EXPECT_EQ(streamer->player(), nullptr);
    EXPECT_EQ(streamer->timeObserver(), nullptr);
}

TEST(ControllerLifecycle, CountsEachKindOfContentAsData) {
    const auto prepareImage = [](HookRecorder& player) { player.prepareImage(grey()); };
    const auto prepareFile = [](HookRecorder& player) {
        player.prepareImageWithUrl(urlOf("/nowhere/picture.jpg"));
    };
    const auto prepareVideo = [](HookRecorder& player) {
        player.prepareVideoWithUrl(urlOf("/nowhere/video.mp4"));
    };
    const std::vector<std::function<void(HookRecorder&)>> kinds{prepareImage, prepareFile,
                                                                prepareVideo};
    for (const auto& prepare : kinds) {
        PlaybackScene s;
        prepare(*s.player);
        const LogRecorder log;
        s.host->embedded().appear();
        EXPECT_EQ(log.count("No data to display"), 0);
    }
}

TEST(ControllerLifecycle, LogsAMissingPictureAsAnErrorAndAMissingAddressAsAWarning) {
    LevelRecorder log;
    const auto player = platform::make<ZNTDisplayViewController>();
    player->prepareImage(nullptr);
    EXPECT_THAT(log.take(), ElementsAre(LogLevel::Error));
    player->prepareImageWithUrl(std::nullopt);
    player->prepareVideoWithUrl(std::nullopt);
    EXPECT_THAT(log.take(), ElementsAre(LogLevel::Warning, LogLevel::Warning));
    player->prepareImage(grey());
    player->prepareImage(grey());
    EXPECT_THAT(log.take(), ElementsAre(LogLevel::Error));
    player->prepareImageWithUrl(urlOf("/nowhere/picture.jpg"));
    EXPECT_THAT(log.take(), ElementsAre(LogLevel::Warning));
}

TEST(ControllerLifecycle, TellsThePickingPointTheModeWithEveryPictureThatIsHandedOver) {
    PlaybackScene s;
    s.player->prepareImage(grey());
    s.appear();
    s.player->setDisplayMode(DisplayMode::SideBySide);
    const auto point = middle();
    s.player->addHotSpots({door()}, point);
    EXPECT_FALSE(point->sbsModeActive());
    s.player->prepareDisplayView();
    EXPECT_TRUE(point->sbsModeActive());
    s.player->setDisplayMode(DisplayMode::Sphere);
    const auto other = middle();
    other->markSBSModeActive(true);
    s.player->addHotSpots({door()}, other);
    s.player->prepareDisplayView();
    EXPECT_FALSE(other->sbsModeActive());
}

TEST(Gaze, PicksNothingOverAPictureThatHasDisappeared) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.player->setEnableHotSpotAutoPicking(true);
    s.player->prepareImage(grey());
    s.player->addHotSpots({door()}, middle());
    s.appear();
    s.advance(1);
    EXPECT_FALSE(s.player->take().empty());
    s.host->embedded().disappear();
    s.advance(2);
    EXPECT_THAT(s.player->take(), IsEmpty());
    s.appear();
    s.advance(1);
    EXPECT_FALSE(s.player->take().empty()) << "it looks again";
}

TEST(Gaze, PicksNothingOverAVideoThatHasDisappeared) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.player->setEnableHotSpotAutoPicking(true);
    s.player->addHotSpots({door()}, middle());
    s.play(tests::testClip({.frames = 90}));
    s.player->pause();
    s.advance(1);
    s.player->take();
    s.host->embedded().disappear();
    s.advance(1);
    EXPECT_THAT(s.player->take(), IsEmpty());
    s.player->addHotSpots({door(), door()}, middle());
    s.advance(1);
    EXPECT_THAT(s.player->take(), IsEmpty()) << "another list does not bring the gaze back";
    s.appear();
    s.advance(1);
    EXPECT_FALSE(s.player->take().empty()) << "it looks again";
}

TEST(Gaze, StaysOffAtAnAppearanceWhereItIsSwitchedOff) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.player->addHotSpots({door()}, middle());
    s.play(tests::testClip());
    s.player->pause();
    s.host->embedded().disappear();
    s.appear();
    s.player->take();
    s.advance(1);
    EXPECT_THAT(s.player->take(), IsEmpty());
}
