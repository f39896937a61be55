#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Media/PlayerItem.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
    s.player->prepareVideoWithUrl(urlOf(tests::testClip()));
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
    s.play(tests::testClip());
    const LogRecorder log;
    s.player->prepareImage(flatPicture(64, 32, 200, 0, 0));
    s.player->prepareImageWithUrl(urlOf("/some/picture.jpg"));
    EXPECT_EQ(log.count("Datar is already displaying. You can not change data"), 1);
    EXPECT_EQ(log.count("Data is already displaying. You can not change data"), 1);
    EXPECT_EQ(s.player->contentType(), ContentType::Video);
}

TEST(VideoContent, IsReplacedByAnotherVideoAfterOneLastPause) {
    PlaybackScene s;
    s.play(tests::testClip());
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
    s.play(tests::testClip());
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
    s.player->prepareVideoWithUrl(urlOf(tests::testClip()), false);
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
    s.play(tests::testClip());
    s.advance(0.5);
    s.player->prepareVideoWithUrl(urlOf("/nowhere/at-all.mp4"));
    s.host->embedded().disappear();
    s.appear();
    EXPECT_EQ(s.shownFrame(), 15);
    ASSERT_TRUE(s.host->replaceContext());
    s.host->settle();
    EXPECT_EQ(s.shownFrame(), 15) << "also where it has to be uploaded again";
}

TEST(VideoContent, CleansUpTheStreamerThatItReplacesAlsoWhereTheHostSaysWhatIsLocal) {
    PlaybackScene s;
    s.play(tests::testClip());
    s.advance(0.2);
    const auto first = s.player->streamer();
    s.player->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 6})), true);
    EXPECT_TRUE(first->isPaused());
    EXPECT_EQ(first->player(), nullptr);
    EXPECT_EQ(first->timeObserver(), nullptr);
}

TEST(VideoContent, CleansUpItsStreamerWhenItGoes) {
    PlaybackScene s;
    s.play(tests::testClip());
    s.advance(0.2);
    const auto streamer = s.player->streamer();
    s.release();
    EXPECT_EQ(streamer->player(), nullptr);
    EXPECT_EQ(streamer->timeObserver(), nullptr);
}

TEST(VideoContent, ThatFailsLaterIsNamedAndStands) {
    PlaybackScene s;
    s.play(tests::testClip());
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
    s.player->prepareVideoWithUrl(urlOf(tests::testClip()));
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
        s.play(tests::testClip());
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
    s.play(tests::testClip());
    s.advance(0.5);
    const auto first = s.player->streamer();
    s.player->reloadContent();
    EXPECT_NE(s.player->streamer(), first);
    s.host->settle();
    EXPECT_EQ(s.shownFrame(), 0);
}

TEST(VideoContent, ThatCannotBePlayedIsNamedByOneHook) {
    tests::TemporaryFolder folder;
    const std::string text = folder.addText("text.mp4", "this is no video\n");
    const LogRecorder log;
    for (const std::string& path : {folder.pathOf("missing.mp4"), text}) {
        PlaybackScene s;
        s.play(path);
        EXPECT_THAT(s.player->take(), ElementsAre("downloadVideoFailedWithError")) << path;
        EXPECT_NE(s.player->failure, "") << path;
        s.player->prepareVideoWithUrl(urlOf(tests::testClip()));
        s.host->settle();
        s.advance(0.1);
        EXPECT_EQ(s.shownFrame(), 3) << "another one can follow";
    }
    EXPECT_EQ(log.count("Player failed to play"), 2);
}
