#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using platform::fromSeconds;
using platform::Instant;
using platform::MediaPacing;
using testing::ElementsAre;
using tests::ClipOptions;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

OpenedPipeline machinePaced(const std::string& path) {
    return {platform::URL::fileURLWithPath(path), MediaPacing::Machine, QueueDriver::Time::Real};
}

/// The number of the frame that is on show now.
std::optional<int> shownFrame(OpenedPipeline& opened) {
    const auto frame = opened.pipeline->frameAt(opened.position());
    return frame ? tests::readFrameNumber(*frame->pixels) : std::nullopt;
}

TEST(MachinePacing, OpensAFileAndShowsItsFirstFrame) {
    OpenedPipeline opened = machinePaced(testClip());
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.notes->media->duration, fromSeconds(1));
    EXPECT_EQ(shownFrame(opened), 0);
}

TEST(MachinePacing, HoldsNoWork) {
    OpenedPipeline opened = machinePaced(testClip());
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
    ASSERT_TRUE(opened.open());
    opened.pipeline->seek(fromSeconds(0.5));
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
}

TEST(MachinePacing, PlaysFromTheStartToTheEnd) {
    OpenedPipeline opened = machinePaced(testClip({.sound = tests::ClipSound::Tone}));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("end") > 0; }));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
    EXPECT_EQ(opened.position(), opened.notes->media->duration);
    EXPECT_EQ(shownFrame(opened), 29);
}

TEST(MachinePacing, ASeekShowsItsFrameWhilePaused) {
    OpenedPipeline opened = machinePaced(testClip());
    ASSERT_TRUE(opened.open());
    for (const int frame : {20, 3, 29, 0}) {
        const Instant target = tests::frameTime({}, frame) + fromSeconds(0.01);
        ASSERT_TRUE(opened.seekAndWait(target));
        EXPECT_EQ(opened.position(), target);
        EXPECT_EQ(shownFrame(opened), frame);
    }
}

} // namespace
