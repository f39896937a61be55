#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Media/AudioSession.h"
#include "Platform/Media/PlayerItem.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// 30 frames, one second.
std::string clip() {
    return tests::testClip();
}

platform::URL urlOf(const std::string& path) {
    return platform::URL::fileURLWithPath(path);
}

/// Refuses everything.
class BusyMachine final : public platform::AudioArbiter {
public:
    std::optional<platform::Error> setCategory(std::string_view /*category*/) override {
        return platform::Error{platform::ErrorCode::Unavailable, "a call is on"};
    }
    std::optional<platform::Error> setActive(bool /*active*/, bool /*notifyOthers*/) override {
        return platform::Error{platform::ErrorCode::Unavailable, "a call goes on"};
    }
};

} // namespace

TEST(VideoPlayback, DoesNothingBeforeAVideoIsPrepared) {
    PlaybackScene s;
    s.player->play();
    s.player->pause();
    s.player->seekToTime(3);
    s.player->setPlayerVolume(0.5);
    EXPECT_EQ(s.player->videoDuration(), 0.0);
    EXPECT_EQ(s.player->playerVolume(), 0.0);
    EXPECT_EQ(s.player->streamer(), nullptr);
    EXPECT_THAT(s.player->take(), IsEmpty());
}

TEST(VideoPlayback, StartsByItselfAndGivesItsHooksInOrder) {
    PlaybackScene s;
    s.play(clip());
    EXPECT_EQ(s.player->contentType(), ContentType::Video);
    EXPECT_TRUE(s.player->isReadyForDisplay());
    EXPECT_TRUE(s.player->isLocalResource());
    EXPECT_EQ(s.player->videoDuration(), 1.0);
    EXPECT_THAT(s.player->take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading"));
    s.advance(2);
    EXPECT_THAT(s.player->take(), ElementsAre("videoDidEndPlaying", "videoPaused"));
    EXPECT_GE(s.player->ticks.size(), 60U);
}

TEST(VideoPlayback, ShowsTheFrameOfEverySecond) {
    PlaybackScene s;
    s.play(clip());
    EXPECT_EQ(s.shownFrame(), 0);
    for (const double second : {0.1, 0.5, 0.51, 0.95}) {
        s.advance(second - platform::toSeconds(s.host->now()));
        EXPECT_EQ(s.shownFrame(), static_cast<int>(second * 30 + 1e-9)) << second;
    }
}

TEST(VideoPlayback, ShowsTheFrameOfAMomentBetweenTwoRefreshes) {
    // 40 frames a second and 60 refreshes.
    PlaybackScene s;
    s.play(tests::testClip({.framesPerSecond = 40, .frames = 40}));
    s.advance(0.026);
    EXPECT_EQ(s.shownFrame(), 1);
    s.advance(0.075 - 0.026);
    EXPECT_EQ(s.shownFrame(), 3);
}

TEST(VideoPlayback, PausesAtOnceAndSaysSoTwice) {
    PlaybackScene s;
    s.play(clip());
    s.advance(0.5);
    s.player->take();
    s.player->pause();
    EXPECT_THAT(s.player->take(), ElementsAre("videoPaused"));
    s.advance(1);
    EXPECT_THAT(s.player->take(), ElementsAre("videoPaused")) << "once time has stopped";
    EXPECT_EQ(s.shownFrame(), 15);
    s.player->play();
    s.advance(0.25);
    EXPECT_THAT(s.player->take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading"));
    EXPECT_EQ(s.shownFrame(), 22);
}

TEST(VideoPlayback, SeeksWhilePaused) {
    PlaybackScene s;
    s.play(clip());
    s.player->pause();
    s.player->seekToTime(0.7);
    EXPECT_EQ(s.shownFrame(), 21);
}

TEST(VideoPlayback, KeepsItsVolumeInRange) {
    PlaybackScene s;
    s.play(clip());
    EXPECT_EQ(s.player->playerVolume(), 0.0);
    s.player->setPlayerVolume(7);
    EXPECT_EQ(s.player->playerVolume(), 1.0);
}

TEST(VideoPlayback, ClaimsTheSoundAndGivesItBackAtTheEnd) {
    PlaybackScene s;
    auto& session = platform::AudioSession::sharedInstance();
    EXPECT_FALSE(session.isActive());
    s.play(clip());
    EXPECT_TRUE(session.isActive());
    EXPECT_EQ(session.category(), platform::kAudioSessionCategoryPlayback);
    s.release();
    EXPECT_FALSE(session.isActive());
}

TEST(VideoPlayback, GoesOnWhereTheSoundIsRefused) {
    platform::AudioSession::sharedInstance().setArbiter(std::make_shared<BusyMachine>());
    const LogRecorder log;
    PlaybackScene s;
    s.play(clip());
    platform::AudioSession::sharedInstance().setArbiter(nullptr);
    EXPECT_EQ(log.count("error a call is on"), 1);
    EXPECT_EQ(log.count("error a call goes on"), 1);
    EXPECT_EQ(s.shownFrame(), 0);
}

TEST(VideoContent, RefusesNoAddress) {
    const LogRecorder log;
    PlaybackScene s;
    s.player->prepareVideoWithUrl(std::nullopt);
    EXPECT_EQ(log.lines(),
              (std::vector<std::string>{"Error in class \"HookRecorder\" for selector "
                                        "\"prepareVideoWithUrl:\". Url can not be nil"}));
    EXPECT_EQ(s.player->contentType(), ContentType::Undefined);
    EXPECT_EQ(s.player->streamer(), nullptr);
}

TEST(VideoContent, ReplacesAPictureAndKeepsIt) {
    PlaybackScene s;
    const auto picture = flatPicture(64, 32, 120, 120, 120);
    s.player->prepareImage(picture);
    s.appear();
    EXPECT_EQ(s.shownFrame(), std::nullopt);
    s.player->prepareVideoWithUrl(urlOf(clip()));
    s.host->settle();
    EXPECT_EQ(s.shownFrame(), 0);
    s.advance(0.1);
    s.player->pause();
    EXPECT_EQ(s.player->srcImage(), picture);
    EXPECT_EQ(s.player->displayingContentType(), ContentType::Video);
    s.host->embedded().disappear();
    s.appear();
    EXPECT_EQ(s.shownFrame(), 3) << "the picture does not come back";
}

TEST(VideoContent, IsNotReplacedByAPicture) {
    PlaybackScene s;
    s.play(clip());
    const LogRecorder log;
    s.player->prepareImage(flatPicture(64, 32, 200, 0, 0));
    s.player->prepareImageWithUrl(urlOf("/some/picture.jpg"));
    EXPECT_EQ(log.count("Datar is already displaying. You can not change data"), 1);
    EXPECT_EQ(log.count("Data is already displaying. You can not change data"), 1);
    EXPECT_EQ(s.player->contentType(), ContentType::Video);
}

TEST(VideoContent, IsReplacedByAnotherVideoAfterOneLastPause) {
    PlaybackScene s;
    s.play(clip());
    s.advance(0.5);
    const std::weak_ptr<ZNTStreamer> first = s.player->streamer();
    s.player->take();
    s.player->onHook = [&](const std::string& hook) {
        if (hook == "videoPaused") {
            EXPECT_EQ(s.player->streamer(), first.lock()) << "it comes of the old one";
        }
    };
    s.player->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 6})));
    EXPECT_THAT(s.player->take(), ElementsAre("videoPaused"));
    EXPECT_TRUE(first.expired());
    s.player->onHook = nullptr;
    s.host->settle();
    EXPECT_EQ(s.shownFrame(), 0);
    EXPECT_THAT(s.player->take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading"));
    EXPECT_NEAR(s.player->videoDuration(), 0.2, 1e-3);
}

TEST(VideoContent, OfNoAddressEndsTheOneThatPlays) {
    PlaybackScene s;
    s.play(clip());
    s.advance(0.5);
    s.player->take();
    const LogRecorder log;
    s.player->prepareVideoWithUrl(std::nullopt);
    EXPECT_EQ(log.count("Url can not be nil"), 1);
    s.advance(0.3);
    EXPECT_THAT(s.player->take(), IsEmpty());
    EXPECT_EQ(s.player->contentType(), ContentType::Video);
    EXPECT_EQ(s.shownFrame(), 15) << "which stays on screen";
}

TEST(VideoContent, IsCalledLocalAsTheHostHasIt) {
    PlaybackScene s;
    s.player->prepareVideoWithUrl(urlOf(clip()), false);
    s.appear();
    EXPECT_FALSE(s.player->isLocalResource());
    EXPECT_TRUE(s.player->isReadyForDisplay());
    s.player->take();
    s.player->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 6})), true);
    EXPECT_THAT(s.player->take(), ElementsAre("videoPaused"));
    EXPECT_TRUE(s.player->isLocalResource());
    s.player->prepareVideoWithUrl(platform::URL::URLWithString("http://127.0.0.1:1/a.mp4"));
    EXPECT_FALSE(s.player->isLocalResource());
}

TEST(VideoContent, KeepsItsLastFrameUntilTheNextVideosFirst) {
    PlaybackScene s;
    s.play(clip());
    s.advance(0.5);
    s.player->prepareVideoWithUrl(urlOf("/nowhere/at-all.mp4"));
    s.host->embedded().disappear();
    s.appear();
    EXPECT_EQ(s.shownFrame(), 15);
}

TEST(VideoContent, ThatFailsLaterIsNamedAndStands) {
    PlaybackScene s;
    s.play(clip());
    s.player->take();
    const auto item = s.player->streamer()->playerItem();
    const LogRecorder log;
    static_cast<platform::MediaPipelineListener&>(*item).mediaDidFail(
        {platform::ErrorCode::Unreadable, "the connection was cut"});
    s.host->settle();
    EXPECT_THAT(s.player->take(), ElementsAre("downloadVideoFailedWithError", "videoPaused"));
    EXPECT_EQ(s.player->failure, "the connection was cut");
    EXPECT_EQ(log.count("Player failed to play"), 1);
}

TEST(VideoContent, IsReplacedWhileItLoads) {
    PlaybackScene s;
    s.player->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 6})));
    s.player->prepareVideoWithUrl(urlOf(clip()));
    s.appear();
    EXPECT_EQ(s.player->videoDuration(), 1.0);
    s.advance(0.9);
    EXPECT_EQ(s.shownFrame(), 27);
}

TEST(VideoContent, MayBeReplacedFromInsideAnyHook) {
    for (const std::string where : {"videoStartedPlaying", "videoIsLoading", "videoDidEndLoading",
                                    "videoPaused", "videoDidEndPlaying", "tick"}) {
        PlaybackScene s;
        int replaced = 0;
        const auto replace = [&] {
            if (++replaced == 1)
                s.player->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 12})));
        };
        s.player->onHook = [&](const std::string& hook) {
            if (hook == where)
                replace();
        };
        if (where == "tick")
            s.player->onTick = replace;
        s.play(clip());
        s.advance(3);
        EXPECT_GE(replaced, 1) << where;
        EXPECT_NEAR(s.player->videoDuration(), 0.4, 1e-3) << where;
        EXPECT_EQ(s.player->failure, "") << where;
    }
}

TEST(VideoContent, LoadsAgainFromItsAddress) {
    PlaybackScene s;
    s.player->reloadContent();
    EXPECT_EQ(s.player->streamer(), nullptr) << "there is nothing to reload";
    s.play(clip());
    s.advance(0.5);
    const auto first = s.player->streamer();
    s.player->reloadContent();
    EXPECT_NE(s.player->streamer(), first);
    s.host->settle();
    EXPECT_EQ(s.shownFrame(), 0);
}

TEST(VideoContent, ThatCannotBePlayedIsNamedByOneHook) {
    tests::TemporaryFolder folder;
    const std::string text = "this is no video\n";
    const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    const LogRecorder log;
    for (const std::string& path : {folder.pathOf("missing.mp4"), folder.add("text.mp4", bytes)}) {
        PlaybackScene s;
        s.play(path);
        EXPECT_THAT(s.player->take(), ElementsAre("downloadVideoFailedWithError")) << path;
        EXPECT_NE(s.player->failure, "") << path;
        s.player->prepareVideoWithUrl(urlOf(clip()));
        s.host->settle();
        s.advance(0.1);
        EXPECT_EQ(s.shownFrame(), 3) << "another one can follow";
    }
    EXPECT_EQ(log.count("Player failed to play"), 2);
}

TEST(VideoViews, ShowTheKeptFrameWhenTheyAppearLater) {
    const auto host = makeHost({256, 128});
    const auto player = platform::make<HookRecorder>();
    player->prepareVideoWithUrl(urlOf(clip()));
    host->settle();
    host->advanceTo(host->now() + platform::fromSeconds(0.1));
    player->pause();
    host->settle();
    host->embedded().setRootViewController(player);
    player->setDisplayMode(DisplayMode::Plane);
    host->embedded().appear();
    host->settle();
    EXPECT_EQ(tests::shownFrameNumber(*host->embedded().snapshot(1).value()), 3);
    host->embedded().setRootViewController(nullptr);
}

TEST(VideoViews, ShowTheSameFrameSideBySideAlsoWhenEnteredWhilePaused) {
    PlaybackScene s;
    s.play(clip());
    s.advance(0.5);
    s.player->pause();
    s.host->settle();
    s.player->setDisplayMode(DisplayMode::SideBySide);
    s.host->settle();
    const auto picture = s.snapshot();
    for (int x = 0; x < 127; ++x) {
        ASSERT_EQ(colourAt(*picture, x, 64), colourAt(*picture, 129 + x, 64)) << x;
        ASSERT_GT(colourAt(*picture, x, 64)[3], 0);
    }
    EXPECT_NE(colourAt(*picture, 20, 64), (std::array{0, 0, 0, 0}));
    s.player->setDisplayMode(DisplayMode::Plane);
    s.host->settle();
    EXPECT_EQ(s.shownFrame(), 15);
}

TEST(VideoViews, ShowTheKeptFrameAfterALostContext) {
    PlaybackScene s;
    s.play(clip());
    s.advance(0.5);
    s.player->pause();
    s.host->settle();
    ASSERT_TRUE(s.host->replaceContext());
    s.host->settle();
    EXPECT_EQ(s.shownFrame(), 15);
    s.player->play();
    s.advance(0.1);
    EXPECT_EQ(s.shownFrame(), 18);
}

TEST(VideoViews, IgnoreAFrameThatIsNone) {
    PlaybackScene s;
    s.play(clip());
    s.advance(0.5);
    s.player->pause();
    s.host->settle();
    static_cast<StreamerDelegate&>(*s.player).hasNewFrame(*s.player->streamer(), nullptr);
    EXPECT_EQ(s.shownFrame(), 15);
    s.host->embedded().disappear();
    s.appear();
    EXPECT_EQ(s.shownFrame(), 15) << "the frame before is kept";
}

TEST(VideoHotSpots, AreShownAtOnceOverAFrameThatStands) {
    PlaybackScene s;
    s.player->setDisplayMode(DisplayMode::Sphere);
    s.play(clip());
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
    s.play(clip());
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
    s.play(clip());
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
