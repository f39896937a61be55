#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/PlayerItem.h"
#include "Tests/HVViewer/Model/Streamer/StreamerScene.h"
#include "Tests/Support/QueueDriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using ::testing::ElementsAre;

namespace {

platform::URL clipUrl() {
    return platform::URL::fileURLWithPath(tests::testClip());
}

/// Lets time pass inside the tick at 0.1 s.
class SlowListener final : public StreamerDelegate {
public:
    void hasNewFrame(ZNTStreamer& /*streamer*/, const platform::PixelBufferPtr& buffer) override {
        (isSlow ? late : early)
            .push_back(buffer ? tests::readFrameNumber(*buffer).value_or(-1) : -2);
    }
    void didPlayedToTime(ZNTStreamer& /*streamer*/, double at) override {
        isSlow = at > 0.099 && late.empty();
        if (isSlow)
            clock->advanceTo(clock->now() + platform::fromSeconds(0.05));
    }

    std::shared_ptr<platform::VirtualClock> clock = std::make_shared<platform::VirtualClock>();
    bool isSlow = false;
    std::vector<int> early;
    std::vector<int> late;
};

} // namespace

TEST(StreamerPlayer, LooksForAFrameByTheHostsTimeAndCopiesThatOfTheTick) {
    tests::QueueDriver queue(tests::QueueDriver::Time::Virtual);
    const auto listener = std::make_shared<SlowListener>();
    platform::MainQueue::main().setClock(listener->clock);
    const auto streamer = ZNTStreamer::streamerWithUrl(clipUrl());
    streamer->setDelegate(listener);
    streamer->setAutomaticallyPlayWhenReady(true);
    ASSERT_TRUE(queue.settle());
    while (listener->late.empty() && listener->clock->now() < platform::fromSeconds(0.3)) {
        listener->clock->advanceTo(listener->clock->now() + platform::fromSeconds(1.0 / 60));
        ASSERT_TRUE(queue.settle());
    }
    EXPECT_THAT(listener->late, ElementsAre(-2))
        << "there is a newer one by the host's time, and none that is new at the tick's";
    EXPECT_EQ(std::count(listener->early.begin(), listener->early.end(), -2), 0);
    streamer->cleanUp();
}

TEST(StreamerPlayer, TellsOfLoadingByAnUnknownItemOnOlderSystemsOnly) {
    for (const std::string version : {"9.3", "12.0"}) {
        StreamerScene s(version);
        s.streamer = ZNTStreamer::streamerWithUrl(clipUrl());
        s.streamer->setDelegate(s.listener);
        s.streamer->observeValueForKeyPath(platform::kPlayerItemStatusKeyPath,
                                           *s.streamer->playerItem());
        EXPECT_EQ(s.listener->take(), version == "9.3" ? "loading;" : "");
    }
}

TEST(StreamerPlayer, IsLetGoOfStepByStepWhenItIsCleanedUp) {
    StreamerScene s;
    s.open(tests::testClip());
    s.advance(0.1);
    const auto player = s.streamer->player();
    const auto item = s.streamer->playerItem();
    EXPECT_NE(s.streamer->timeObserver(), nullptr);
    s.streamer->cleanUp();
    EXPECT_EQ(s.streamer->timeObserver(), nullptr);
    const double stopped = player->currentTime().seconds();
    s.host->settle();
    s.advance(0.2);
    EXPECT_EQ(player->currentTime().seconds(), stopped) << "it was paused";
    s.listener->take();
    const int ticks = s.listener->ticks;
    player->play();
    s.advance(0.2);
    EXPECT_GT(player->currentTime().seconds(), stopped);
    EXPECT_EQ(s.listener->ticks, ticks) << "the token was given back";
    auto& center = platform::NotificationCenter::defaultCenter();
    center.post(platform::PlayerItemDidPlayToEndTimeNotification, {}, item.get());
    center.post(platform::PlayerItemFailedToPlayToEndTimeNotification, {}, item.get());
    EXPECT_EQ(s.listener->take(), "");
}

TEST(StreamerPlayer, PausesWithoutAPlayerToo) {
    StreamerScene s;
    s.open(tests::testClip());
    s.streamer->cleanUp();
    s.listener->take();
    EXPECT_FALSE(s.streamer->isPaused());
    s.streamer->pause();
    EXPECT_TRUE(s.streamer->isPaused());
    s.streamer->pause();
    EXPECT_EQ(s.listener->take(), "paused;paused;");
}

TEST(StreamerPlayer, SeeksInTheTimescaleOfTheItemsDuration) {
    StreamerScene s;
    s.open(tests::testClip(), StreamerScene::Start::WhenTold);
    s.streamer->seekToTime(0.123456789);
    s.host->settle();
    EXPECT_EQ(s.listener->lastTick, 0.123456789);
}

TEST(StreamerPlayer, IgnoresTheEndAndTheFailureOfAnotherItem) {
    StreamerScene s;
    s.open(tests::testClip());
    s.advance(0.1);
    s.listener->take();
    const auto other = platform::PlayerItem::playerItemWithURL(clipUrl());
    auto& center = platform::NotificationCenter::defaultCenter();
    center.post(platform::PlayerItemDidPlayToEndTimeNotification, {}, other.get());
    center.post(platform::PlayerItemFailedToPlayToEndTimeNotification, {}, other.get());
    s.host->settle();
    EXPECT_EQ(s.listener->take(), "");
    s.advance(0.1);
    EXPECT_GT(s.listener->lastTick, 0.15) << "it plays on";
}

TEST(StreamerPlayer, PlaysSoundAloneInBlackWithTheHooksOfAVideo) {
    StreamerScene s;
    s.open(tests::remuxedClip({.sound = tests::ClipSound::Tone}, {"-vn", "sound.m4a"}) +
           "/sound.m4a");
    EXPECT_EQ(s.listener->take(), "started;loading;loaded;");
    s.advance(0.5);
    EXPECT_NEAR(s.listener->lastTick, 0.5, 1e-6);
    s.advance(1);
    EXPECT_EQ(s.listener->take(), "ended;paused;");
    EXPECT_EQ(s.listener->frames.front(), 0) << "which black reads as";
}

TEST(StreamerPlayer, GivesADelegateThatHasGoneInTheTickNoFrameOfThatTick) {
    class Leaving final : public StreamerDelegate {
    public:
        Leaving(std::shared_ptr<StreamerDelegate>& owner, int& frames)
            : owner_(owner), frames_(frames) {}
        void hasNewFrame(ZNTStreamer& /*streamer*/,
                         const platform::PixelBufferPtr& /*buffer*/) override {
            ++frames_;
        }
        void didPlayedToTime(ZNTStreamer& /*streamer*/, double /*seconds*/) override {
            owner_.reset();
        }

    private:
        std::shared_ptr<StreamerDelegate>& owner_;
        int& frames_;
    };
    StreamerScene s;
    int frames = 0;
    std::shared_ptr<StreamerDelegate> owner;
    owner = std::make_shared<Leaving>(owner, frames);
    s.streamer = ZNTStreamer::streamerWithUrl(clipUrl());
    s.streamer->setDelegate(owner);
    s.streamer->setAutomaticallyPlayWhenReady(true);
    s.advance(1);
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(frames, 0);
}

TEST(StreamerPlayer, MayBeLetGoOfByWhoeverItTells) {
    class Careless final : public StreamerDelegate {
    public:
        explicit Careless(std::shared_ptr<ZNTStreamer>& streamer) : streamer_(streamer) {}
        void hasNewFrame(ZNTStreamer& /*streamer*/,
                         const platform::PixelBufferPtr& /*buffer*/) override {}
        void didPlayedToTime(ZNTStreamer& /*streamer*/, double /*seconds*/) override {
            streamer_.reset();
        }

    private:
        std::shared_ptr<ZNTStreamer>& streamer_;
    };
    StreamerScene s;
    const auto careless = std::make_shared<Careless>(s.streamer);
    s.streamer = ZNTStreamer::streamerWithUrl(clipUrl());
    s.streamer->setDelegate(careless);
    s.streamer->setAutomaticallyPlayWhenReady(true);
    s.advance(1);
    EXPECT_EQ(s.streamer, nullptr);
}
