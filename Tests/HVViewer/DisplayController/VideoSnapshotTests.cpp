#include "Tests/HVViewer/DisplayController/PlaybackScene.h"

#include <gtest/gtest.h>

namespace {

constexpr double kFramesPerSecond = 25;

/// Without a turn of the loop beforehand.
std::optional<int> snapshotFrame(PlaybackScene& scene) {
    return tests::shownFrameNumber(*scene.host->embedded().snapshot(1).value());
}

std::string clip() {
    return tests::testClip({.framesPerSecond = 25, .frames = 50});
}

} // namespace

TEST(VideoSnapshot, ShowsTheFrameOfItsTimeBetweenTwoFrameInstants) {
    PlaybackScene s;
    s.play(clip());
    for (const double seconds : {0.525, 0.645, 0.7201, 1.0805}) {
        s.host->advanceTo(platform::fromSeconds(seconds));
        EXPECT_EQ(snapshotFrame(s), static_cast<int>(seconds * kFramesPerSecond)) << seconds;
    }
}

TEST(VideoSnapshot, WaitsForASeekInVirtualTime) {
    PlaybackScene s;
    s.play(clip());
    s.player->pause();
    s.player->seekToTime(1.01);
    EXPECT_EQ(snapshotFrame(s), 25);
}

TEST(VideoSnapshot, TicksOnceForAMoment) {
    PlaybackScene s;
    s.play(clip());
    s.host->advanceTo(platform::fromSeconds(0.525));
    s.player->ticks.clear();
    EXPECT_EQ(snapshotFrame(s), 13);
    EXPECT_EQ(snapshotFrame(s), 13);
    EXPECT_EQ(s.player->ticks.size(), 1U);
    EXPECT_EQ(s.player->ticks.front(), 0.525);
}

TEST(VideoSnapshot, MayBeTakenInATick) {
    PlaybackScene s;
    std::optional<int> seen;
    s.player->onTick = [&] {
        if (s.player->ticks.back() > 0.5 && !seen)
            seen = snapshotFrame(s);
    };
    s.play(clip());
    s.advance(1);
    EXPECT_EQ(seen, 12) << "the frame of that tick comes after it";
}

TEST(VideoSnapshot, OfAVideoThatDoesNotOpenWaitsForNothing) {
    PlaybackScene s;
    s.play("/nowhere/at-all.mp4");
    EXPECT_TRUE(s.host->embedded().snapshot(1));
}
