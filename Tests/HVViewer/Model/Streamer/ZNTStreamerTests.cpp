#include "Platform/Foundation/Assertion.h"
#include "Platform/Media/PlayerItem.h"
#include "Platform/Media/PlayerItemVideoOutput.h"
#include "Tests/HVViewer/Model/Streamer/StreamerScene.h"
#include "Tests/Support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <numeric>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Start = StreamerScene::Start;

/// 30 frames, one second.
std::string clip() {
    return tests::testClip();
}

/// From the first to the last, and the first again, which is where the end leads to.
std::vector<int> framesToTheEnd(int first, int last) {
    std::vector<int> numbers(static_cast<std::size_t>(last - first + 1));
    std::iota(numbers.begin(), numbers.end(), first);
    numbers.push_back(0);
    return numbers;
}

} // namespace

TEST(Streamer, NeedsAnAddress) {
    const LogRecorder log;
    try {
        (void)ZNTStreamer::streamerWithUrl(std::nullopt);
        FAIL() << "nothing was thrown";
    } catch (const platform::AssertionFailure& failure) {
        EXPECT_EQ(failure.description(), "Invalid parameter not satisfying: url");
        EXPECT_EQ(failure.file(), "ZNTStreamer");
    }
}

TEST(Streamer, ObservesFromTheStartAndTellsNobodyYet) {
    StreamerScene s;
    s.streamer = ZNTStreamer::streamerWithUrl(platform::URL::fileURLWithPath(clip()));
    EXPECT_EQ(s.streamer->status(), platform::PlayerStatus::Unknown);
    EXPECT_FALSE(s.streamer->isPaused());
    EXPECT_FALSE(s.streamer->automaticallyPlayWhenReady());
    EXPECT_EQ(s.streamer->delegate(), nullptr);
    EXPECT_EQ(s.streamer->output()->attributes().pixelFormatType, 0x34323076U);
    EXPECT_EQ(s.streamer->output()->attributes().width, 0) << "no track is known yet";
    EXPECT_EQ(s.streamer->output()->attributes().height, 0);
    EXPECT_TRUE(std::isnan(s.streamer->itemDuration()));
    s.host->settle();
    EXPECT_EQ(s.streamer->status(), platform::PlayerStatus::ReadyToPlay);
    EXPECT_EQ(s.streamer->itemDuration(), 1.0);
}

TEST(Streamer, PlaysByItselfAndTellsSoInOrder) {
    StreamerScene s;
    s.open(clip());
    EXPECT_EQ(s.listener->take(), "started;loading;loaded;");
    s.advance(2);
    EXPECT_EQ(s.listener->take(), "ended;paused;");
}

TEST(Streamer, TellsOfLoadingByTheItemOnOlderSystems) {
    StreamerScene s("9.3");
    s.open(clip());
    EXPECT_EQ(s.listener->take(), "loaded;started;");
    s.advance(2);
    EXPECT_EQ(s.listener->take(), "ended;");
}

TEST(Streamer, HandsOutEveryPictureAtItsTime) {
    StreamerScene s;
    s.open(clip());
    s.advance(2);
    EXPECT_EQ(s.listener->frames, framesToTheEnd(0, 29));
    for (std::size_t i = 0; i < 30; ++i)
        EXPECT_NEAR(s.listener->seconds[i], static_cast<double>(i) / 30, 1e-6) << i;
}

TEST(Streamer, TicksSixtyTimesASecondWhileItPlays) {
    StreamerScene s;
    s.open(clip());
    const int atStart = s.listener->ticks;
    s.advance(0.5);
    EXPECT_EQ(s.listener->ticks - atStart, 30);
    s.streamer->pause();
    s.host->settle();
    const int paused = s.listener->ticks;
    s.advance(1);
    EXPECT_EQ(s.listener->ticks, paused);
}

TEST(Streamer, WaitsToBeToldWhenItIsNotToPlayByItself) {
    StreamerScene s;
    s.open(clip(), Start::WhenTold);
    s.advance(1);
    EXPECT_EQ(s.listener->take(), "");
    s.streamer->play();
    EXPECT_EQ(s.listener->take(), "started;");
}

TEST(Streamer, SaysHowLongItIsOnceThatIsKnown) {
    StreamerScene s;
    s.open(tests::testClip({.frames = 120, .more = {"-movflags", "frag_keyframe+empty_moov"}}));
    ASSERT_LT(s.streamer->itemDuration(), 4.0) << "the header does not say it";
    s.advance(5);
    EXPECT_EQ(s.streamer->itemDuration(), 4.0);
}

TEST(Streamer, NotesAPlayThatComesTooEarly) {
    StreamerScene s;
    s.streamer = ZNTStreamer::streamerWithUrl(platform::URL::fileURLWithPath(clip()));
    s.streamer->setDelegate(s.listener);
    s.streamer->pause();
    EXPECT_TRUE(s.streamer->isPaused());
    s.streamer->play();
    EXPECT_FALSE(s.streamer->isPaused());
    EXPECT_EQ(s.listener->take(), "paused;") << "there was nothing to start";
    s.streamer->setAutomaticallyPlayWhenReady(true);
    s.host->settle();
    EXPECT_EQ(s.listener->take(), "started;loading;loaded;");
}

TEST(Streamer, DoesNotStartByItselfOnceItWasPaused) {
    StreamerScene s;
    s.streamer = ZNTStreamer::streamerWithUrl(platform::URL::fileURLWithPath(clip()));
    s.streamer->setDelegate(s.listener);
    s.streamer->setAutomaticallyPlayWhenReady(true);
    s.streamer->pause();
    s.host->settle();
    EXPECT_EQ(s.listener->take(), "paused;");
}

TEST(Streamer, SaysThatItIsPausedAtEveryCallAndOnceMoreWhenTimeStops) {
    StreamerScene s;
    s.open(clip());
    s.advance(0.1);
    s.listener->take();
    s.streamer->pause();
    EXPECT_EQ(s.listener->take(), "paused;");
    s.streamer->pause();
    EXPECT_EQ(s.listener->take(), "paused;");
    s.host->settle();
    EXPECT_EQ(s.listener->take(), "paused;") << "the player's own change";
}

TEST(Streamer, HoldsItsVolumeWithinItsRange) {
    StreamerScene s;
    s.open(clip());
    EXPECT_EQ(s.streamer->volume(), 0.0);
    EXPECT_EQ(s.streamer->player()->volume(), 0.6F) << "which is where it starts all the same";
    s.streamer->setVolume(1.7);
    EXPECT_EQ(s.streamer->volume(), 1.0);
    EXPECT_EQ(s.streamer->player()->volume(), 1.0F);
    s.streamer->setVolume(-0.3);
    EXPECT_EQ(s.streamer->volume(), 0.0);
    s.streamer->setVolume(0.25);
    s.streamer->setVolume(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(s.streamer->volume(), 0.0);
    EXPECT_EQ(s.streamer->player()->volume(), 0.0F);
}

TEST(Streamer, StaysPausedOverASeekAndShowsThePictureThere) {
    StreamerScene s;
    s.open(clip());
    s.advance(0.1);
    s.streamer->pause();
    s.host->settle();
    s.listener->frames.clear();
    s.listener->take();
    s.streamer->seekToTime(0.5);
    s.host->settle();
    EXPECT_EQ(s.listener->take(), "") << "a seek is not reported";
    EXPECT_THAT(s.listener->frames, ElementsAre(15));
    EXPECT_EQ(s.listener->lastTick, 0.5);
    s.advance(1);
    EXPECT_THAT(s.listener->frames, ElementsAre(15));
    EXPECT_TRUE(s.streamer->isPaused());
}

TEST(Streamer, GoesOnPlayingAfterASeek) {
    StreamerScene s;
    s.open(clip());
    s.advance(0.1);
    s.listener->frames.clear();
    s.streamer->seekToTime(0.8);
    s.advance(1);
    EXPECT_EQ(s.listener->frames, framesToTheEnd(24, 29));
    EXPECT_FALSE(s.streamer->isPaused());
}

TEST(Streamer, SeeksBackAsWellAsOn) {
    StreamerScene s;
    s.open(clip(), Start::WhenTold);
    s.listener->frames.clear();
    for (const double target : {0.9, 0.1, 0.6, 0.0}) {
        s.streamer->seekToTime(target);
        s.host->settle();
    }
    EXPECT_EQ(s.listener->frames.back(), 0);
    s.streamer->seekToTime(0.9);
    s.streamer->seekToTime(0.1);
    s.streamer->seekToTime(0.6);
    s.host->settle();
    EXPECT_EQ(s.listener->frames.back(), 18) << "the last of many in a row counts";
}

TEST(Streamer, StartsWhereItWasSoughtBeforeItWasReady) {
    for (const std::string version : {"12.0", "9.3"}) {
        const LogRecorder log;
        StreamerScene s(version);
        s.streamer = ZNTStreamer::streamerWithUrl(platform::URL::fileURLWithPath(clip()));
        s.streamer->setDelegate(s.listener);
        s.streamer->setAutomaticallyPlayWhenReady(true);
        s.streamer->seekToTime(0.2);
        s.streamer->seekToTime(0.8);
        EXPECT_EQ(s.listener->take(), "");
        s.host->settle();
        EXPECT_EQ(s.listener->take(),
                  version == "9.3" ? "loaded;started;" : "started;loading;loaded;");
        s.advance(1);
        EXPECT_EQ(s.listener->frames, framesToTheEnd(24, 29)) << version;
        EXPECT_EQ(s.listener->seconds.front(), 0.8);
        EXPECT_EQ(log.count("refused"), 0);
    }
}

TEST(Streamer, StaysPausedWhereItWasSoughtBeforeItWasReady) {
    StreamerScene s;
    s.streamer = ZNTStreamer::streamerWithUrl(platform::URL::fileURLWithPath(clip()));
    s.streamer->setDelegate(s.listener);
    s.streamer->seekToTime(0.5);
    s.advance(1);
    EXPECT_EQ(s.listener->take(), "") << "play() was not called";
    EXPECT_THAT(s.listener->frames, ElementsAre(15));
    EXPECT_EQ(s.listener->lastTick, 0.5);
}

TEST(Streamer, IsAtItsStartAfterTheEndAndPlaysFromThereAgain) {
    StreamerScene s;
    s.open(clip());
    s.advance(2);
    EXPECT_FALSE(s.streamer->isPaused());
    EXPECT_EQ(s.streamer->player()->currentTime().seconds(), 0.0);
    s.listener->frames.clear();
    s.listener->take();
    s.streamer->play();
    s.advance(2);
    EXPECT_EQ(s.listener->take(), "started;loading;loaded;ended;paused;");
    EXPECT_EQ(s.listener->frames, framesToTheEnd(1, 29)) << "the first is on screen already";
}

TEST(Streamer, TellsNothingOfThePlayerOnceItIsCleanedUp) {
    StreamerScene s;
    s.open(clip());
    s.advance(0.1);
    s.listener->take();
    const int ticks = s.listener->ticks;
    s.streamer->cleanUp();
    s.streamer->cleanUp();
    EXPECT_EQ(s.streamer->player(), nullptr);
    EXPECT_EQ(s.streamer->playerItem(), nullptr);
    EXPECT_NE(s.streamer->output(), nullptr) << "which stays";
    s.advance(2);
    EXPECT_EQ(s.listener->take(), "");
    EXPECT_EQ(s.listener->ticks, ticks);
    s.streamer->play();
    s.streamer->seekToTime(0.5);
    s.streamer->setVolume(0.5);
    EXPECT_EQ(s.listener->take(), "");
    EXPECT_EQ(s.streamer->volume(), 0.5);
    EXPECT_EQ(s.streamer->status(), platform::PlayerStatus::Unknown);
    EXPECT_TRUE(std::isnan(s.streamer->itemDuration()));
    s.streamer->pause();
    EXPECT_EQ(s.listener->take(), "paused;") << "the delegate is kept";
}

TEST(Streamer, NamesWhatCannotBePlayed) {
    const LogRecorder log;
    StreamerScene s;
    s.open("/nowhere/at-all.mp4");
    EXPECT_EQ(s.listener->take(), "failed;");
    EXPECT_NE(s.listener->failure, "");
    EXPECT_EQ(log.count("Player failed to play"), 1);
    EXPECT_EQ(s.streamer->status(), platform::PlayerStatus::Unknown);
    s.streamer->play();
    s.advance(1);
    EXPECT_EQ(s.listener->take(), "");
}

TEST(Streamer, NamesWhatCannotBePlayedOnOlderSystemsToo) {
    const LogRecorder log;
    StreamerScene s("9.3");
    s.open("/nowhere/at-all.mp4");
    EXPECT_EQ(s.listener->take(), "failed;");
}

TEST(Streamer, SaysThatItStartedAtEveryPlay) {
    StreamerScene s;
    s.open(clip());
    s.advance(0.1);
    s.listener->take();
    s.streamer->play();
    s.host->settle();
    EXPECT_EQ(s.listener->take(), "started;") << "it plays already";
}

TEST(Streamer, IsHeardToPauseAndStartOverASeek) {
    StreamerScene s;
    s.open(clip());
    s.advance(0.1);
    s.listener->take();
    s.streamer->seekToTime(0.5);
    s.host->settle();
    EXPECT_EQ(s.listener->take(), "paused;loading;loaded;");
}

TEST(Streamer, NeedsNoDelegate) {
    StreamerScene s;
    s.open(clip());
    s.listener.reset();
    s.advance(2);
    EXPECT_EQ(s.streamer->delegate(), nullptr);
}
