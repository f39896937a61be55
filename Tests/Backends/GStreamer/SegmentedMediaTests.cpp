#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using platform::fromSeconds;
using platform::Instant;
using platform::MediaPacing;
using platform::URL;
using tests::ClipOptions;
using tests::OpenedPipeline;
using tests::QueueDriver;

namespace {

/// Three seconds, a key frame and a segment each second.
class SegmentedMedia : public testing::Test {
protected:
    [[nodiscard]] std::string serve(const std::vector<std::string>& arguments) {
        server.serveFolder("/", tests::remuxedClip(clip, arguments));
        return server.url("/" + arguments.back());
    }
    [[nodiscard]] std::string serveHLS(const std::string& segments) {
        return serve({"-f", "hls", "-hls_time", "1", "-hls_list_size", "0", "-hls_segment_type",
                      segments, "list.m3u8"});
    }
    [[nodiscard]] std::string serveDASH() {
        return serve({"-f", "dash", "-seg_duration", "1", "-use_template", "1", "-use_timeline",
                      "1", "list.mpd"});
    }
    [[nodiscard]] static OpenedPipeline open(const std::string& url) {
        return {*URL::URLWithString(url), MediaPacing::Host, QueueDriver::Time::Virtual};
    }
    /// Frames, a seek and the end.
    static void expectWholeMedia(const std::string& url) {
        OpenedPipeline opened = open(url);
        ASSERT_TRUE(opened.open());
        EXPECT_NEAR(platform::toSeconds(opened.notes->media->duration.value_or(Instant(0))), 3,
                    0.1);
        ASSERT_TRUE(opened.seekAndWait(fromSeconds(2.4)));
        EXPECT_NEAR(opened.frameAtItemTime(fromSeconds(2.4)).value_or(-1), 72, 5);
        ASSERT_TRUE(opened.seekAndWait(Instant::zero()));
        EXPECT_EQ(opened.frameAtItemTime(Instant::zero()), 0);
        opened.pipeline->play();
        EXPECT_NEAR(opened.frameAtHostTime(fromSeconds(1.5)).value_or(-1), 45, 5);
        ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(5)));
        EXPECT_EQ(opened.notes->count("end"), 1);
        EXPECT_EQ(opened.frameAtItemTime(opened.position()), 89);
    }

    /// Each seek as soon as the picture of the one before is there, when most is on its way.
    static void expectToBeMovedAbout(const std::string& url) {
        for (int opening = 0; opening < 3; ++opening) {
            OpenedPipeline opened(*URL::URLWithString(url), MediaPacing::Machine,
                                  QueueDriver::Time::Real);
            ASSERT_TRUE(opened.open());
            opened.pipeline->play();
            for (const double seconds : {2.4, 0.0, 1.2, 0.3, 2.0, 0.0, 1.0, 2.1})
                ASSERT_TRUE(opened.seekAndWait(fromSeconds(seconds))) << seconds;
        }
    }

    ClipOptions clip{.frames = 90, .keyFrameInterval = 30};
    tests::HttpServer server;
};

} // namespace

TEST_F(SegmentedMedia, OfTransportStreamsIsPlayed) {
    expectWholeMedia(serveHLS("mpegts"));
}

TEST_F(SegmentedMedia, OfFragmentsIsPlayed) {
    expectWholeMedia(serveHLS("fmp4"));
}

TEST_F(SegmentedMedia, OfAManifestIsPlayed) {
    expectWholeMedia(serveDASH());
}

TEST_F(SegmentedMedia, OfTransportStreamsIsMovedAboutIn) {
    expectToBeMovedAbout(serveHLS("mpegts"));
}

TEST_F(SegmentedMedia, OfFragmentsIsMovedAboutIn) {
    expectToBeMovedAbout(serveHLS("fmp4"));
}

TEST_F(SegmentedMedia, OfFragmentsWithSoundIsMovedAboutIn) {
    clip.sound = tests::ClipSound::Tone;
    expectToBeMovedAbout(serveHLS("fmp4"));
}

TEST_F(SegmentedMedia, OfAManifestIsMovedAboutIn) {
    expectToBeMovedAbout(serveDASH());
}

TEST_F(SegmentedMedia, WithoutItsSegmentsFails) {
    const std::string url = serveHLS("mpegts");
    for (const std::string segment : {"/list0.ts", "/list1.ts", "/list2.ts"})
        server.serve(segment, {.status = 404});
    OpenedPipeline opened = open(url);
    EXPECT_FALSE(opened.open());
    ASSERT_TRUE(opened.notes->error);
    EXPECT_EQ(opened.notes->error->code, platform::ErrorCode::Missing);
}

TEST_F(SegmentedMedia, PacedByTheMachineIsPlayedToItsEnd) {
    OpenedPipeline opened(*URL::URLWithString(serveHLS("fmp4")), MediaPacing::Machine,
                          QueueDriver::Time::Real);
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("end") > 0; }));
    EXPECT_GE(opened.notes->count("start"), 1);
}
