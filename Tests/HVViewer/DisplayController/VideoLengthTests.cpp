#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/HttpServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;

TEST(VideoLength, OfAServerWithoutPartsPlaysAgainAfterItsEnd) {
    tests::HttpServer server;
    server.serveFile("/a.mp4", streamableClip(), {.takesRanges = false});
    PlaybackScene s;
    s.player->prepareVideoWithUrl(platform::URL::URLWithString(server.url("/a.mp4")));
    s.appear();
    s.advance(2);
    s.player->take();
    s.player->play();
    s.advance(0.5);
    EXPECT_EQ(s.shownFrame(), 15);
    s.advance(1);
    EXPECT_THAT(s.player->take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading",
                            "videoDidEndPlaying", "videoPaused"));
}

TEST(VideoLength, OfATransportStreamPlaysAgainAfterItsEnd) {
    PlaybackScene s;
    s.play(tests::testClip({.container = "ts"}));
    s.advance(3);
    s.player->take();
    s.player->play();
    s.advance(3);
    EXPECT_THAT(s.player->take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading",
                            "videoDidEndPlaying", "videoPaused"));
}

TEST(VideoLength, OfFragmentsIsKnownAtTheEndAndSeeksGoBeyondWhatTheHeaderSays) {
    PlaybackScene s;
    s.play(tests::testClip({.frames = 120, .more = {"-movflags", "frag_keyframe+empty_moov"}}));
    ASSERT_LT(s.player->videoDuration(), 4.0) << "the header does not say it";
    s.player->pause();
    s.player->seekToTime(3.91);
    EXPECT_EQ(s.shownFrame(), 117);
    s.player->play();
    s.advance(0.5);
    EXPECT_TRUE(s.player->heard("videoDidEndPlaying"));
    EXPECT_EQ(s.player->videoDuration(), 4.0);
}

TEST(VideoLength, StartsWhereItWasSoughtBeforeItWasOpen) {
    PlaybackScene s;
    s.player->prepareVideoWithUrl(urlOf(tests::testClip()));
    s.player->seekToTime(0.5);
    s.appear();
    EXPECT_EQ(s.shownFrame(), 15);
    EXPECT_EQ(s.player->ticks.front(), 0.5);
}
