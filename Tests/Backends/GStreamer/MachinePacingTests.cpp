#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

using platform::fromSeconds;
using platform::Instant;
using platform::MediaPacing;
using testing::ElementsAre;
using tests::ClipOptions;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

/// In real time, so what is expected is an order or a bound that only a broken pipeline misses.
class MachinePaced : public OpenedPipeline {
public:
    explicit MachinePaced(const ClipOptions& options = {})
        : OpenedPipeline(platform::URL::fileURLWithPath(testClip(options)), MediaPacing::Machine,
                         QueueDriver::Time::Real) {}

    /// The number of the frame that is on show now.
    [[nodiscard]] std::optional<int> shownFrame() {
        const auto frame = pipeline->frameAt(position());
        return frame ? tests::readFrameNumber(*frame->pixels) : std::nullopt;
    }
    bool waitFor(const std::string& event, int times = 1) {
        return queue.runUntil([&] { return notes->count(event) >= times; });
    }
    /// Asks again and again, as a display does.
    bool waitForFrame(int least) {
        return queue.runUntil([&] {
            queue.lookAgainIn(fromSeconds(0.005));
            return shownFrame().value_or(-1) >= least;
        });
    }
};

ClipOptions seconds(int count) {
    return {.frames = 30 * count};
}

} // namespace

TEST(MachinePacing, OpensAFileAndShowsItsFirstFrame) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    EXPECT_EQ(opened.notes->media->duration, fromSeconds(1));
    EXPECT_EQ(opened.position(), Instant::zero());
    EXPECT_EQ(opened.shownFrame(), 0);
}

TEST(MachinePacing, HoldsNoWork) {
    MachinePaced opened;
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
    ASSERT_TRUE(opened.open());
    opened.pipeline->seek(fromSeconds(0.5));
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
    EXPECT_TRUE(opened.pipeline->isDecodedTo(fromSeconds(0.9)));
}

TEST(MachinePacing, PlaysFromTheStartToTheEnd) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.waitFor("end"));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
    EXPECT_EQ(opened.position(), fromSeconds(1));
    EXPECT_EQ(opened.shownFrame(), 29);
}

TEST(MachinePacing, PlaysWithSound) {
    MachinePaced opened({.frames = 15, .sound = tests::ClipSound::Tone});
    ASSERT_TRUE(opened.open());
    opened.pipeline->setVolume(0.3);
    opened.pipeline->play();
    ASSERT_TRUE(opened.waitFor("end"));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
}

TEST(MachinePacing, ASecondOfMediaTakesNoLess) {
    for (const tests::ClipSound sound : {tests::ClipSound::None, tests::ClipSound::Tone}) {
        MachinePaced opened({.sound = sound});
        ASSERT_TRUE(opened.open());
        opened.pipeline->play();
        ASSERT_TRUE(opened.waitFor("start"));
        const Instant begin = opened.queue.now();
        ASSERT_TRUE(opened.waitFor("end"));
        EXPECT_GT(opened.queue.now() - begin, fromSeconds(0.9));
    }
}

TEST(MachinePacing, ThePositionNeverGoesBackwardsWhilePlaying) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    Instant last{0};
    int backwards = 0;
    ASSERT_TRUE(opened.queue.runUntil([&] {
        opened.queue.lookAgainIn(fromSeconds(0.002));
        const Instant position = opened.position();
        backwards += position < last ? 1 : 0;
        last = position;
        return opened.notes->count("end") > 0;
    }));
    EXPECT_EQ(backwards, 0);
    EXPECT_EQ(last, fromSeconds(1));
}

TEST(MachinePacing, FramesComeInOrderAndInTheirTime) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    int last = 0;
    bool isInOrder = true;
    bool isEarly = false;
    ASSERT_TRUE(opened.queue.runUntil([&] {
        opened.queue.lookAgainIn(fromSeconds(0.004));
        const Instant position = opened.position();
        const auto frame = opened.pipeline->frameAt(position);
        const int number = frame ? tests::readFrameNumber(*frame->pixels).value_or(-1) : -1;
        isInOrder &= number >= last;
        isEarly |= frame && frame->time > position;
        last = number;
        return opened.notes->count("end") > 0;
    }));
    EXPECT_TRUE(isInOrder);
    EXPECT_FALSE(isEarly);
}

TEST(MachinePacing, PausingHoldsThePosition) {
    MachinePaced opened(seconds(3));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.waitForFrame(5));
    opened.pipeline->pause();
    const Instant held = opened.position();
    const Instant until = opened.queue.now() + fromSeconds(0.2);
    ASSERT_TRUE(opened.queue.runUntil([&] {
        opened.queue.lookAgainIn(fromSeconds(0.02));
        return opened.queue.now() >= until;
    }));
    EXPECT_EQ(opened.position(), held);
    EXPECT_LE(opened.shownFrame().value_or(99), 10);
    opened.pipeline->play();
    ASSERT_TRUE(opened.waitFor("start", 2));
    EXPECT_GE(opened.position(), held);
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "start"));
}

TEST(MachinePacing, ASeekShowsItsFrameWhilePaused) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    for (const int frame : {20, 3, 29, 0, 0, 29, 28}) {
        const Instant target = tests::frameTime({}, frame) + fromSeconds(0.01);
        ASSERT_TRUE(opened.seekAndWait(target));
        EXPECT_EQ(opened.position(), target);
        EXPECT_EQ(opened.shownFrame(), frame);
    }
}

TEST(MachinePacing, ASeekWhilePlayingGoesOnFromThere) {
    MachinePaced opened(seconds(4));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.waitForFrame(3));
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(3)));
    EXPECT_GE(opened.position(), fromSeconds(3));
    ASSERT_TRUE(opened.waitForFrame(95));
    EXPECT_LT(opened.position(), fromSeconds(4));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "seek"));
}

TEST(MachinePacing, OfSeveralSeeksTheLastOneCountsAndEndsOnce) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    for (const double target : {0.9, 0.1, 0.5, 0.2, 0.8, 0.31})
        opened.pipeline->seek(fromSeconds(target));
    ASSERT_TRUE(opened.waitFor("seek"));
    EXPECT_EQ(opened.position(), fromSeconds(0.31));
    EXPECT_EQ(opened.shownFrame(), 9);
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "seek"));
}

TEST(MachinePacing, ASeekRightAfterPausingShowsItsFrame) {
    MachinePaced opened(seconds(3));
    ASSERT_TRUE(opened.open());
    for (int round = 0; round < 5; ++round) {
        opened.pipeline->play();
        ASSERT_TRUE(opened.waitFor("start", round + 1));
        opened.pipeline->pause();
        ASSERT_TRUE(opened.seekAndWait(fromSeconds(2.01)));
        EXPECT_EQ(opened.shownFrame(), 60);
        ASSERT_TRUE(opened.seekAndWait(fromSeconds(0.01)));
        EXPECT_EQ(opened.shownFrame(), 0);
    }
}

TEST(MachinePacing, ASeekLeadsAwayFromTheEnd) {
    MachinePaced opened({.frames = 10});
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    ASSERT_TRUE(opened.waitFor("end"));
    ASSERT_TRUE(opened.seekAndWait(Instant::zero()));
    ASSERT_TRUE(opened.waitFor("end", 2));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end", "seek", "end"));
}

TEST(MachinePacing, ASeekPastTheEndShowsTheLastFrameAndEndsWhenPlayed) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(60)));
    EXPECT_EQ(opened.position(), fromSeconds(1));
    EXPECT_EQ(opened.shownFrame(), 29);
    opened.pipeline->play();
    ASSERT_TRUE(opened.waitFor("end"));
    EXPECT_EQ(opened.position(), fromSeconds(1));
}

TEST(MachinePacing, NothingIsToldAfterThePipelinesEnd) {
    MachinePaced opened;
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    opened.pipeline->seek(fromSeconds(0.8));
    ASSERT_TRUE(opened.waitFor("start"));
    const auto before = opened.notes->events;
    opened.pipeline.reset();
    const Instant until = opened.queue.now() + fromSeconds(0.3);
    ASSERT_TRUE(opened.queue.runUntil([&] {
        opened.queue.lookAgainIn(fromSeconds(0.02));
        return opened.queue.now() >= until;
    }));
    EXPECT_EQ(opened.notes->events, before);
}

TEST(MachinePacing, TheListenerMayEndThePipelineInEveryCall) {
    for (const std::string last : {"ready", "start", "seek", "end"}) {
        MachinePaced opened({.frames = 10});
        opened.notes->onEvent = [&](const std::string& event) {
            if (event == last)
                opened.pipeline.reset();
        };
        opened.pipeline->play();
        opened.pipeline->seek(fromSeconds(0.1));
        ASSERT_TRUE(opened.waitFor(last));
        EXPECT_FALSE(opened.pipeline);
    }
}
