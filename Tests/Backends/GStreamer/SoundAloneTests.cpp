#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using platform::fromSeconds;
using platform::Instant;
using platform::MediaPacing;
using platform::toSeconds;
using platform::URL;
using testing::ElementsAre;
using tests::OpenedPipeline;
using tests::QueueDriver;

namespace {

/// A second of it.
std::string sound() {
    return tests::remuxedClip({.sound = tests::ClipSound::Tone}, {"-vn", "sound.m4a"}) +
           "/sound.m4a";
}

bool isBlack(const platform::PixelBuffer& pixels) {
    return *pixels.plane(0).bytes == 16 && pixels.plane(1).bytes[0] == 128 &&
           pixels.plane(1).bytes[1] == 128;
}

} // namespace

TEST(SoundAlone, PacedByTheHostPlaysToItsEndInBlack) {
    OpenedPipeline opened(sound());
    ASSERT_TRUE(opened.open());
    const Instant end = opened.notes->media->duration.value_or(Instant(0));
    EXPECT_NEAR(toSeconds(end), 1, 0.1);
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.5)));
    EXPECT_EQ(opened.position(), fromSeconds(0.5));
    const auto frame = opened.decodedFrame(opened.position());
    ASSERT_TRUE(frame);
    EXPECT_TRUE(isBlack(*frame->pixels));
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(2)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
    EXPECT_EQ(opened.position(), end);
}

TEST(SoundAlone, PacedByTheHostIsSought) {
    OpenedPipeline opened(sound());
    ASSERT_TRUE(opened.open());
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(0.7)));
    EXPECT_EQ(opened.position(), fromSeconds(0.7));
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(60)));
    EXPECT_EQ(opened.position(), opened.notes->media->duration);
    ASSERT_TRUE(opened.seekAndWait(Instant::zero()));
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.25)));
    EXPECT_EQ(opened.position(), fromSeconds(0.25));
}

TEST(SoundAlone, PacedByTheMachineIsSoughtAndPlaysToItsEndInBlack) {
    OpenedPipeline opened(URL::fileURLWithPath(sound()), MediaPacing::Machine,
                          QueueDriver::Time::Real);
    ASSERT_TRUE(opened.open());
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(0.7)));
    EXPECT_EQ(opened.position(), fromSeconds(0.7));
    const auto frame = opened.pipeline->frameAt(opened.position());
    ASSERT_TRUE(frame);
    EXPECT_TRUE(isBlack(*frame->pixels));
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("end") > 0; }));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "seek", "start", "end"));
    EXPECT_EQ(opened.position(), opened.notes->media->duration);
}

TEST(SoundAlone, OfAServerIsPlayed) {
    tests::HttpServer server;
    server.serveFile("/sound.m4a", sound());
    OpenedPipeline opened(*URL::URLWithString(server.url("/sound.m4a")), MediaPacing::Host,
                          QueueDriver::Time::Virtual);
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(2)));
    EXPECT_EQ(opened.notes->count("end"), 1);
}
