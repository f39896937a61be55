#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

using platform::fromSeconds;
using platform::Instant;
using platform::MainQueue;
using testing::ElementsAre;
using tests::ClipOptions;
using tests::OpenedPipeline;
using tests::testClip;

namespace {

/// Its 30 frames take a second.
class HostPacing : public testing::Test {
protected:
    void open() { ASSERT_TRUE(opened.open()); }
    /// Opens it and plays from virtual time 0 on.
    void play() {
        open();
        opened.pipeline->play();
    }
    OpenedPipeline opened{testClip()};
};

} // namespace

TEST_F(HostPacing, OpensAFileAndSaysItsSizeAndDuration) {
    open();
    EXPECT_EQ(opened.notes->media->naturalSize, (platform::SizePx{128, 64}));
    EXPECT_EQ(opened.notes->media->duration, fromSeconds(1));
}

TEST_F(HostPacing, TimeStandsStillUntilTheFileIsOpen) {
    EXPECT_GT(MainQueue::main().outstandingWork(), 0);
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready"));
}

TEST_F(HostPacing, TimeStandsStillWhileTheListenerHearsThatTheFileIsOpen) {
    int outstanding = 0;
    opened.notes->onEvent = [&](const std::string&) {
        outstanding = MainQueue::main().outstandingWork();
    };
    open();
    EXPECT_GT(outstanding, 0);
    EXPECT_EQ(MainQueue::main().outstandingWork(), 0);
}

TEST_F(HostPacing, StandsAtTheFirstFrameUntilItIsToldToPlay) {
    open();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(3)), 0);
    EXPECT_EQ(opened.position(), Instant::zero());
}

TEST_F(HostPacing, ShowsTheFrameOfEveryInstant) {
    play();
    for (int frame = 0; frame < 30; ++frame) {
        const Instant due = tests::frameTime({}, frame);
        ASSERT_EQ(opened.frameAtHostTime(due + fromSeconds(0.001)), frame);
        ASSERT_EQ(opened.frameAtHostTime(due + fromSeconds(0.032)), frame);
    }
}

TEST_F(HostPacing, AFramesTimeComesAtTheVeryInstant) {
    open();
    const auto second = opened.decodedFrame(tests::frameTime({}, 1) + fromSeconds(0.001));
    ASSERT_TRUE(second);
    ASSERT_TRUE(opened.seekAndWait(Instant::zero()));
    EXPECT_EQ(opened.frameAtItemTime(second->time - Instant(1)), 0);
    EXPECT_EQ(opened.frameAtItemTime(second->time), 1);
}

TEST_F(HostPacing, AFrameStaysTheSameUntilTheNextOnesTime) {
    play();
    const auto first = opened.decodedFrame(fromSeconds(0.101));
    const auto again = opened.decodedFrame(fromSeconds(0.132));
    ASSERT_TRUE(first && again);
    EXPECT_EQ(first->pixels->identity(), again->pixels->identity());
    EXPECT_EQ(first->time, again->time);
}

TEST_F(HostPacing, FramesMayBeSkipped) {
    play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(0.71)), 21);
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(0.91)), 27);
}

TEST_F(HostPacing, ANotYetDecodedFrameHoldsVirtualTimeAndIsTold) {
    open();
    ASSERT_FALSE(opened.pipeline->isDecodedTo(fromSeconds(0.9)));
    EXPECT_GT(MainQueue::main().outstandingWork(), 0);
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "decode"));
    EXPECT_TRUE(opened.pipeline->isDecodedTo(fromSeconds(0.9)));
}

TEST_F(HostPacing, AFrameThatIsAskedForBeforeTheFileIsOpenIsToldAfterwards) {
    EXPECT_FALSE(opened.pipeline->isDecodedTo(fromSeconds(0.9)));
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "decode"));
    EXPECT_EQ(opened.frameAtItemTime(fromSeconds(0.9)), 27);
}

TEST_F(HostPacing, AnAskedForFrameIsToldAlsoAfterASeek) {
    open();
    opened.pipeline->seek(fromSeconds(0.5));
    EXPECT_FALSE(opened.pipeline->isDecodedTo(fromSeconds(0.5)));
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "seek", "decode"));
}

TEST_F(HostPacing, NoPictureIsLostThatComesWhileASeekLands) {
    open();
    for (int i = 0; i < 200; ++i) {
        const auto target = fromSeconds(i % 2 == 0 ? 0.5 : 0.2);
        opened.pipeline->seek(target);
        EXPECT_FALSE(opened.pipeline->isDecodedTo(target));
        ASSERT_TRUE(opened.queue.settle()) << "seek " << i;
    }
    EXPECT_EQ(opened.notes->count("decode"), 200);
}

TEST_F(HostPacing, PausingHoldsTheTime) {
    play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.25)));
    opened.pipeline->pause();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(4)), 7);
    EXPECT_EQ(opened.position(), fromSeconds(0.25));
    opened.pipeline->play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(4.26)), 15);
    EXPECT_EQ(opened.notes->count("start"), 2);
}

TEST_F(HostPacing, PlayingBeforeTheFileIsOpenStartsAsSoonAsItIs) {
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.51)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start"));
    EXPECT_EQ(opened.position(), fromSeconds(0.51));
}

TEST_F(HostPacing, PlayingTwiceStartsOnce) {
    play();
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start"));
}

TEST_F(HostPacing, AStartThatWasTakenBackIsNotTold) {
    play();
    opened.pipeline->pause();
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready"));
}

TEST_F(HostPacing, EndsWhenTheLastFramesTimeIsOver) {
    play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.999)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start"));
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(1.02)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
    EXPECT_EQ(opened.position(), fromSeconds(1));
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(5)), 29);
}

TEST_F(HostPacing, StaysAtTheEndUntilItIsSoughtAwayFromIt) {
    play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(2)));
    opened.pipeline->pause();
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(3)));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "end"));
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(0.5)));
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(3.11)), 18);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(5)));
    EXPECT_EQ(opened.notes->count("end"), 2);
}

TEST_F(HostPacing, ALoopGoesOnWithoutABreak) {
    opened.notes->onEvent = [&](const std::string& event) {
        if (event == "end")
            opened.pipeline->seek(Instant::zero());
    };
    play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(1.5)), 15);
    EXPECT_EQ(opened.notes->count("end"), 1);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(4.5)));
    EXPECT_EQ(opened.notes->count("end"), 4);
    EXPECT_EQ(opened.position(), fromSeconds(0.5));
}

TEST_F(HostPacing, ASeekShowsItsFrameWhilePaused) {
    open();
    for (const int frame : {20, 3, 29, 0, 0, 29, 28}) {
        const Instant target = tests::frameTime({}, frame) + fromSeconds(0.01);
        ASSERT_TRUE(opened.seekAndWait(target));
        EXPECT_EQ(opened.position(), target);
        EXPECT_EQ(opened.frameAtItemTime(target), frame);
    }
}

TEST_F(HostPacing, ASeekWhilePlayingGoesOnFromThere) {
    play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.1)));
    opened.pipeline->seek(fromSeconds(0.7));
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_EQ(opened.position(), fromSeconds(0.7));
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "start", "seek"));
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(0.21)), 24);
}

TEST_F(HostPacing, TimeStandsStillWhileItSeeks) {
    open();
    opened.pipeline->seek(fromSeconds(0.7));
    EXPECT_GT(MainQueue::main().outstandingWork(), 0);
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "seek"));
}

TEST_F(HostPacing, OfSeveralSeeksTheLastOneCountsAndEndsOnce) {
    open();
    for (const double target : {0.9, 0.1, 0.5, 0.2, 0.8, 0.31})
        opened.pipeline->seek(fromSeconds(target));
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "seek"));
    EXPECT_EQ(opened.position(), fromSeconds(0.31));
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 9);
}

TEST_F(HostPacing, ASeekBeforeTheFileIsOpenIsMadeThen) {
    opened.pipeline->seek(fromSeconds(0.2));
    opened.pipeline->seek(fromSeconds(0.6));
    ASSERT_TRUE(opened.queue.settle());
    EXPECT_THAT(opened.notes->events, ElementsAre("ready", "seek"));
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 18);
}

TEST_F(HostPacing, ASeekBeforeTheStartGoesToTheStart) {
    open();
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(0.5)));
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(-3)));
    EXPECT_EQ(opened.position(), Instant::zero());
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 0);
}

TEST_F(HostPacing, ASeekPastTheEndShowsTheLastFrameAndEndsAtOnceWhenPlayed) {
    open();
    ASSERT_TRUE(opened.seekAndWait(fromSeconds(60)));
    EXPECT_EQ(opened.position(), fromSeconds(1));
    EXPECT_EQ(opened.frameAtItemTime(opened.position()), 29);
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(0.1)));
    EXPECT_EQ(opened.notes->count("end"), 1);
    EXPECT_EQ(opened.position(), fromSeconds(1));
}

TEST_F(HostPacing, VolumeIsOfNoConsequence) {
    play();
    opened.pipeline->setVolume(0.5);
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(0.5)), 15);
}

TEST_F(HostPacing, FramesOutliveThePipeline) {
    open();
    const auto frame = opened.decodedFrame(fromSeconds(0.3));
    opened.pipeline.reset();
    ASSERT_TRUE(frame);
    EXPECT_EQ(tests::readFrameNumber(*frame->pixels), 9);
}

TEST_F(HostPacing, NothingIsToldAfterThePipelinesEnd) {
    play();
    opened.pipeline->seek(fromSeconds(0.5));
    const auto before = opened.notes->events;
    opened.pipeline.reset();
    EXPECT_EQ(MainQueue::main().outstandingWork(), 0);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(3)));
    EXPECT_EQ(opened.notes->events, before);
}

TEST(HostPacingListener, MayEndThePipelineInEveryCall) {
    for (const std::string last : {"ready", "start", "seek", "decode", "end"}) {
        OpenedPipeline one(testClip());
        one.notes->onEvent = [&](const std::string& event) {
            if (event == last)
                one.pipeline.reset();
        };
        one.pipeline->play();
        one.pipeline->seek(fromSeconds(0.5));
        static_cast<void>(one.pipeline->isDecodedTo(fromSeconds(0.9)));
        ASSERT_TRUE(one.queue.advanceTo(fromSeconds(3)));
        EXPECT_EQ(one.notes->events.back(), last);
        EXPECT_FALSE(one.pipeline);
    }
}

TEST(HostPacingSound, IsLeftOut) {
    OpenedPipeline opened(testClip({.sound = tests::ClipSound::Tone}));
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    EXPECT_EQ(opened.frameAtHostTime(fromSeconds(0.5)), 15);
    ASSERT_TRUE(opened.queue.advanceTo(fromSeconds(2)));
    EXPECT_THAT(opened.notes->events, testing::Contains("end"));
}

TEST(HostPacingTwice, GivesTheSameFramesAtTheSameTimes) {
    const auto run = [] {
        OpenedPipeline opened(testClip({.frames = 60, .times = tests::ClipTimes::Uneven}));
        EXPECT_TRUE(opened.open());
        opened.pipeline->play();
        std::vector<std::optional<int>> numbers;
        for (int tick = 0; tick < 130; ++tick) {
            if (tick == 70)
                opened.pipeline->seek(fromSeconds(0.123));
            numbers.push_back(opened.frameAtHostTime(fromSeconds(tick / 60.0)));
        }
        return numbers;
    };
    EXPECT_EQ(run(), run());
}
