#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using platform::fromSeconds;
using platform::Instant;
using testing::ElementsAre;
using tests::ClipOptions;
using tests::OpenedPipeline;
using tests::testClip;

namespace {

TEST(HostPacing, OpensAFileAndSaysItsSizeAndDuration) {
    OpenedPipeline opened(testClip());
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.notes->media->naturalSize, (platform::SizePx{128, 64}));
    EXPECT_EQ(opened.notes->media->duration, fromSeconds(1));
}

TEST(HostPacing, TimeStandsStillUntilTheFileIsOpen) {
    OpenedPipeline opened(testClip());
    EXPECT_GT(platform::MainQueue::main().outstandingWork(), 0);
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready"));
}

TEST(HostPacing, StandsAtTheFirstFrameUntilItIsToldToPlay) {
    OpenedPipeline opened(testClip());
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(3)), 0);
    EXPECT_EQ(opened.position(), Instant::zero());
}

TEST(HostPacing, ShowsTheFrameOfEveryInstant) {
    OpenedPipeline opened(testClip());
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    for (int frame = 0; frame < 30; ++frame) {
        const Instant due = tests::frameTime({}, frame);
        ASSERT_EQ(opened.frameAtHostTime(due + fromSeconds(0.001)), frame);
        ASSERT_EQ(opened.frameAtHostTime(due + fromSeconds(0.032)), frame);
    }
}

TEST(HostPacing, EndsWhenTheLastFramesTimeIsOver) {
    OpenedPipeline opened(testClip());
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.999)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start"));
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(1.02)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
    EXPECT_EQ(opened.position(), fromSeconds(1));
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(5)), 29);
}

TEST(HostPacing, ASeekShowsItsFrameWhilePaused) {
    OpenedPipeline opened(testClip());
    ASSERT_TRUE(opened.open());
    for (const int frame : {20, 3, 29, 0}) {
        const Instant target = tests::frameTime({}, frame) + fromSeconds(0.01);
        ASSERT_TRUE(opened.seekAndWait(target));
        EXPECT_EQ(opened.position(), target);
        EXPECT_EQ(opened.frameAtItemTime(target), frame);
    }
}

} // namespace
