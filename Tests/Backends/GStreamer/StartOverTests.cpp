#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using platform::fromSeconds;
using platform::Instant;
using platform::MediaPacing;
using platform::URL;
using testing::ElementsAre;
using tests::OpenedPipeline;
using tests::QueueDriver;

namespace {

/// Half a second from a server that hands out no parts, so that no seek is possible.
class StartOver : public testing::Test {
protected:
    StartOver() {
        server.serveFile("/clip.mp4",
                         tests::testClip({.frames = 15, .more = {"-movflags", "+faststart"}}),
                         {.takesRanges = false});
    }
    [[nodiscard]] URL url() const { return *URL::URLWithString(server.url("/clip.mp4")); }

    tests::HttpServer server;
};

} // namespace

TEST_F(StartOver, PacedByTheHostItGoesToTheStartAfterTheEndAndPlaysAgain) {
    const LogRecorder log;
    OpenedPipeline opened(url(), MediaPacing::Host, QueueDriver::Time::Virtual);
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(1)));
    opened.pipeline->pause();
    ASSERT_TRUE(opened.seekAndWait(Instant::zero()));
    EXPECT_EQ(opened.position(), Instant::zero());
    EXPECT_EQ(opened.frameAtItemTime(Instant::zero()), 0);
    opened.pipeline->play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(1.21)), 6);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(3)));
    EXPECT_EQ(opened.notes->count("seek"), 1);
    EXPECT_EQ(opened.notes->count("start"), 2);
    EXPECT_EQ(opened.notes->count("end"), 2);
    EXPECT_EQ(log.count("refused"), 0);
}

TEST_F(StartOver, PacedByTheMachineItGoesToTheStartAfterTheEndAndPlaysAgain) {
    OpenedPipeline opened(url(), MediaPacing::Machine, QueueDriver::Time::Real);
    const auto waitFor = [&](int ends) {
        return opened.queue.runUntil([&] { return opened.notes->count("end") == ends; });
    };
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    for (int time = 1; time <= 3; ++time) {
        ASSERT_TRUE(waitFor(time));
        opened.pipeline->pause();
        ASSERT_TRUE(opened.seekAndWait(Instant::zero()));
        EXPECT_EQ(opened.position(), Instant::zero());
        const auto frame = opened.pipeline->frameAt(Instant::zero());
        ASSERT_TRUE(frame);
        EXPECT_EQ(tests::readFrameNumber(*frame->pixels), 0);
        opened.pipeline->play();
    }
    ASSERT_TRUE(waitFor(4));
}

TEST_F(StartOver, WhilePlayingItGoesOnFromTheStart) {
    for (const MediaPacing pacing : {MediaPacing::Host, MediaPacing::Machine}) {
        OpenedPipeline opened(url(), pacing, QueueDriver::Time::Real);
        ASSERT_TRUE(opened.open());
        opened.pipeline->play();
        ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("start") > 0; }));
        opened.pipeline->seek(Instant::zero());
        ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("end") > 0; }));
        EXPECT_EQ(opened.notes->count("seek"), 1);
        EXPECT_EQ(opened.notes->count("fail"), 0);
    }
}

TEST_F(StartOver, OfSeveralSeeksTheLastOneCountsAndEndsOnce) {
    const LogRecorder log;
    OpenedPipeline opened(url(), MediaPacing::Host, QueueDriver::Time::Virtual);
    ASSERT_TRUE(opened.open());
    for (const double target : {0.4, 0.0, 0.2, 0.0})
        opened.pipeline->seek(fromSeconds(target));
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "seek"));
    EXPECT_EQ(opened.frameAtItemTime(Instant::zero()), 0);
}

TEST_F(StartOver, FailsWhereTheServerHasLostTheFile) {
    OpenedPipeline opened(url(), MediaPacing::Host, QueueDriver::Time::Virtual);
    ASSERT_TRUE(opened.open());
    server.serve("/clip.mp4", {.status = 404});
    opened.pipeline->seek(Instant::zero());
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "fail"));
    EXPECT_EQ(opened.notes->error->code, platform::ErrorCode::Missing);
}

TEST_F(StartOver, NothingIsToldAfterThePipelinesEnd) {
    OpenedPipeline opened(url(), MediaPacing::Host, QueueDriver::Time::Virtual);
    ASSERT_TRUE(opened.open());
    opened.pipeline->seek(Instant::zero());
    opened.pipeline.reset();
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready"));
    EXPECT_TRUE(server.waitForOpenConnections(0));
}
