#include "Tests/HVViewer/DisplayController/PlaybackScene.h"

#include <gtest/gtest.h>

#include <array>

TEST(VideosAtATime, GoOnWhenOneOfThemIsReleased) {
    PlaybackScene s;
    const auto unseen = platform::make<HookRecorder>();
    unseen->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 90})));
    const auto picture = platform::make<HookRecorder>();
    picture->prepareImage(flatPicture(64, 32, 0, 200, 0));
    s.play(streamableClip());
    s.advance(0.5);
    EXPECT_EQ(s.shownFrame(), 15);
    s.release();
    unseen->ticks.clear();
    s.advance(0.5);
    EXPECT_NEAR(static_cast<double>(unseen->ticks.size()), 30.0, 1.0);
    s.host->embedded().setRootViewController(unseen);
    unseen->setDisplayMode(DisplayMode::Plane);
    s.appear();
    EXPECT_EQ(s.shownFrame(), 30);
    s.host->embedded().setRootViewController(picture);
    s.appear();
    EXPECT_EQ(colourAt(*s.snapshot(), 128, 20), (std::array{0, 200, 0, 255}));
}

TEST(VideosAtATime, ShowTheirOwnFramesInTurn) {
    PlaybackScene s;
    s.play(tests::testClip({.frames = 60}));
    s.advance(0.5);
    const auto first = s.player;
    first->pause();
    const auto second = platform::make<HookRecorder>();
    s.host->embedded().setRootViewController(second);
    second->setDisplayMode(DisplayMode::Plane);
    second->prepareVideoWithUrl(urlOf(streamableClip()));
    s.appear();
    EXPECT_EQ(s.shownFrame(), 0);
    s.host->embedded().setRootViewController(first);
    s.appear();
    EXPECT_EQ(s.shownFrame(), 15);
}

TEST(VideosAtATime, PicturesAndVideosFollowEachOther) {
    PlaybackScene s;
    s.player->prepareImage(flatPicture(64, 32, 200, 0, 0));
    s.appear();
    EXPECT_EQ(colourAt(*s.snapshot(), 128, 20), (std::array{200, 0, 0, 255}));
    s.player->prepareVideoWithUrl(urlOf(streamableClip()));
    s.host->settle();
    s.advance(0.5);
    EXPECT_EQ(s.shownFrame(), 15);
    s.release();
    s.player = platform::make<HookRecorder>();
    s.player->prepareImage(flatPicture(64, 32, 0, 0, 200));
    s.host->embedded().setRootViewController(s.player);
    s.player->setDisplayMode(DisplayMode::Plane);
    s.appear();
    EXPECT_EQ(colourAt(*s.snapshot(), 128, 20), (std::array{0, 0, 200, 255}));
}
