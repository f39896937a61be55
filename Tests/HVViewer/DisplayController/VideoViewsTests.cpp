#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"

#include <gtest/gtest.h>

#include <array>

TEST(VideoViews, ShowTheKeptFrameWhenTheyAppearLater) {
    const auto host = makeHost({256, 128});
    const auto player = platform::make<HookRecorder>();
    player->prepareVideoWithUrl(urlOf(tests::testClip()));
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
    s.play(tests::testClip());
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

TEST(VideoViews, GiveTheSecondHalfNoFrameInOtherModes) {
    PlaybackScene s;
    s.play(tests::testClip());
    s.advance(0.2);
    EXPECT_FALSE(s.player->virtualDisplayView()->glProgram()) << "which comes with the first frame";
    s.player->setDisplayMode(DisplayMode::SideBySide);
    s.advance(0.2);
    EXPECT_TRUE(s.player->virtualDisplayView()->glProgram());
}

TEST(VideoViews, ShowTheKeptFrameAfterALostContext) {
    PlaybackScene s;
    s.play(tests::testClip());
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
    s.play(tests::testClip());
    s.advance(0.5);
    s.player->pause();
    s.host->settle();
    static_cast<StreamerDelegate&>(*s.player).hasNewFrame(*s.player->streamer(), nullptr);
    EXPECT_EQ(s.shownFrame(), 15);
    s.host->embedded().disappear();
    s.appear();
    EXPECT_EQ(s.shownFrame(), 15) << "the frame before is kept";
}
