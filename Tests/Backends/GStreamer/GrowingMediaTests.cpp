#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/TestClips.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using platform::fromSeconds;
using platform::Instant;
using platform::MediaPacing;
using platform::URL;
using tests::ClipOptions;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

/// Twelve seconds whose header was written before their end was known.
std::vector<ClipOptions> growingMedia() {
    const ClipOptions fragments{.frames = 360, .more = {"-movflags", "frag_keyframe+empty_moov"}};
    const ClipOptions live{.frames = 360, .container = "mkv", .more = {"-live", "1"}};
    ClipOptions web = live;
    web.codec = tests::ClipCodec::VP9;
    web.container = "webm";
    return {fragments, live, web};
}

/// Checks that the library does not know the duration from the start, which is what this is about.
testing::AssertionResult opens(OpenedPipeline& opened) {
    const auto isOpen = opened.open();
    if (!isOpen)
        return isOpen;
    if (opened.notes->media->duration == fromSeconds(12))
        return testing::AssertionFailure() << "the duration is known at once";
    return testing::AssertionSuccess();
}

Instant knownDuration(const OpenedPipeline& opened) {
    return opened.notes->duration.value_or(opened.notes->media->duration.value_or(Instant(0)));
}

class GrowingMedia : public testing::TestWithParam<int> {
protected:
    [[nodiscard]] static ClipOptions clip() {
        return growingMedia().at(static_cast<std::size_t>(GetParam()));
    }
    [[nodiscard]] static URL file() { return URL::fileURLWithPath(testClip(clip())); }
    static bool waitForEnd(OpenedPipeline& opened) {
        return opened.queue.runUntil([&] { return opened.notes->count("end") > 0; });
    }
};

} // namespace

TEST_P(GrowingMedia, PacedByTheHostPlaysToItsEnd) {
    OpenedPipeline opened(file(), MediaPacing::Host, QueueDriver::Time::Virtual);
    ASSERT_TRUE(opens(opened));
    opened.pipeline->play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(11.51)), 345);
    EXPECT_GE(knownDuration(opened), fromSeconds(11.51));
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(13)));
    EXPECT_EQ(opened.notes->count("end"), 1);
    EXPECT_NEAR(platform::toSeconds(opened.position()), 12, 0.002);
    EXPECT_NEAR(platform::toSeconds(knownDuration(opened)), 12, 0.002);
}

TEST_P(GrowingMedia, PacedByTheHostIsSoughtBeyondTheDurationThatIsKnown) {
    OpenedPipeline opened(file(), MediaPacing::Host, QueueDriver::Time::Virtual);
    ASSERT_TRUE(opens(opened));
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(11.91)));
    EXPECT_EQ(opened.position(), fromSeconds(11.91));
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 357);
}

TEST_P(GrowingMedia, ASeekPastTheEndGoesToTheLastFrame) {
    OpenedPipeline opened(file(), MediaPacing::Host, QueueDriver::Time::Virtual);
    ASSERT_TRUE(opens(opened));
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(60)));
    EXPECT_NEAR(platform::toSeconds(opened.position()), 12, 0.002);
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 359);
    EXPECT_NEAR(platform::toSeconds(knownDuration(opened)), 12, 0.002);
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.1)));
    EXPECT_EQ(opened.notes->count("end"), 1);
}

TEST_P(GrowingMedia, PacedByTheMachinePlaysOverTheDurationThatIsKnown) {
    OpenedPipeline opened(file(), MediaPacing::Machine, QueueDriver::Time::Real);
    ASSERT_TRUE(opens(opened));
    const Instant known = knownDuration(opened);
    ASSERT_TRUE(opened.seekAndWait(known - fromSeconds(0.1)));
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.runUntil([&] {
        opened.queue.lookAgainIn(fromSeconds(0.005));
        static_cast<void>(opened.pipeline->frameAt(opened.position()));
        const bool isOver = opened.position() > known && knownDuration(opened) > known;
        return isOver || opened.notes->count("end") > 0;
    }));
    EXPECT_EQ(opened.notes->count("end"), 0);
}

TEST_P(GrowingMedia, PacedByTheMachineEndsAtItsEnd) {
    OpenedPipeline opened(file(), MediaPacing::Machine, QueueDriver::Time::Real);
    ASSERT_TRUE(opens(opened));
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(11.91)));
    EXPECT_EQ(opened.position(), fromSeconds(11.91));
    opened.pipeline->play();
    ASSERT_TRUE(waitForEnd(opened));
    EXPECT_NEAR(platform::toSeconds(opened.position()), 12, 0.002);
    EXPECT_NEAR(platform::toSeconds(knownDuration(opened)), 12, 0.002);
}

TEST_P(GrowingMedia, OfAServerPlaysToItsEnd) {
    tests::HttpServer server;
    const std::string path = "/clip." + clip().container;
    server.serveFile(path, testClip(clip()));
    OpenedPipeline opened(*URL::URLWithString(server.url(path)), MediaPacing::Host,
                          QueueDriver::Time::Virtual);
    ASSERT_TRUE(opens(opened));
    opened.pipeline->play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(11.51)), 345);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(13)));
    EXPECT_EQ(opened.notes->count("end"), 1);
    EXPECT_NEAR(platform::toSeconds(opened.position()), 12, 0.002);
}

INSTANTIATE_TEST_SUITE_P(Kinds, GrowingMedia, testing::Range(0, 3));
