#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/Player.h"
#include "Platform/Media/PlayerItemVideoOutput.h"
#include "Tests/Platform/Foundation/VirtualTime.h"
#include "Tests/Platform/Media/FakePipeline.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// Notes what a player and its item tell, in order.
class Listener final : public Object, public KeyValueObserver {
public:
    void observeValueForKeyPath(std::string_view keyPath, const Object& ofObject) override {
        if (const auto* const player = dynamic_cast<const Player*>(&ofObject)) {
            static constexpr const char* kNames[] = {"paused;", "waiting;", "playing;"};
            told += kNames[static_cast<int>(player->timeControlStatus())];
        }
        if (const auto* const item = dynamic_cast<const PlayerItem*>(&ofObject))
            told += std::string(keyPath) + std::to_string(static_cast<int>(item->status())) + ";";
    }
    std::string told;
};

class PlayerScene : public ::testing::Test {
protected:
    PlayerScene() {
        player->addObserver(shared(), kPlayerTimeControlStatusKeyPath, ObservingOptions::New);
        item->addObserver(shared(), kPlayerItemStatusKeyPath, ObservingOptions::New);
        auto& center = NotificationCenter::defaultCenter();
        for (const char* const name :
             {PlayerItemDidPlayToEndTimeNotification, PlayerItemFailedToPlayToEndTimeNotification})
            center.addObserver(
                listener, name,
                [this](const Notification& notification) {
                    listener->told += notification.name == PlayerItemDidPlayToEndTimeNotification
                                          ? "end;"
                                          : "cut;";
                },
                item.get());
    }
    ~PlayerScene() override { NotificationCenter::defaultCenter().removeObserver(listener.get()); }

    std::shared_ptr<KeyValueObserver> shared() { return listener; }
    static void turn() { MainQueue::main().runDue(); }
    void makeReady(std::optional<Instant> duration = 10s) {
        script->to().mediaIsReady({{640, 320}, duration});
        turn();
    }
    void makePlaying() {
        makeReady();
        player->play();
        script->to().mediaDidStart();
        turn();
        turn();
        script->asked.clear();
        listener->told.clear();
    }
    std::string told() { return std::exchange(listener->told, ""); }

    VirtualTime time;
    std::shared_ptr<tests::PipelineScript> script = std::make_shared<tests::PipelineScript>();
    std::shared_ptr<PlayerItem> item = tests::itemOf(script);
    std::shared_ptr<Player> player = Player::playerWithPlayerItem(item);
    std::shared_ptr<Listener> listener = make<Listener>();
};

} // namespace

TEST_F(PlayerScene, OpensItsItemInTheTimeOfTheMainQueue) {
    EXPECT_EQ(script->pacing, MediaPacing::Host);
    EXPECT_EQ(item->status(), PlayerItemStatus::Unknown);
    EXPECT_EQ(player->status(), PlayerStatus::Unknown);
    EXPECT_TRUE(std::isnan(item->duration().seconds()));
    EXPECT_TRUE(item->tracks().empty());
    EXPECT_EQ(player->currentTime().seconds(), 0.0);
}

TEST_F(PlayerScene, IsReadyBeforeItsItemSaysSo) {
    class Early final : public KeyValueObserver {
    public:
        explicit Early(const Player& player) : player_(player) {}
        void observeValueForKeyPath(std::string_view /*keyPath*/,
                                    const Object& /*ofObject*/) override {
            seen = player_.status();
        }
        PlayerStatus seen = PlayerStatus::Unknown;

    private:
        const Player& player_;
    };
    const auto early = std::make_shared<Early>(*player);
    item->addObserver(early, kPlayerItemStatusKeyPath, ObservingOptions::New);
    makeReady();
    EXPECT_EQ(early->seen, PlayerStatus::ReadyToPlay);
    EXPECT_EQ(item->duration().seconds(), 10.0);
    ASSERT_EQ(item->tracks().size(), 1U);
    EXPECT_EQ(item->tracks()[0].naturalSize, (SizePx{640, 320}));
}

TEST_F(PlayerScene, GivesALiveStreamNoDuration) {
    makeReady(std::nullopt);
    EXPECT_FALSE(item->duration().isNumeric());
}

TEST_F(PlayerScene, PassesThroughWaitingOnEveryStartEachInATurnOfItsOwn) {
    makeReady();
    told();
    player->play();
    EXPECT_EQ(told(), "") << "never inside the call";
    EXPECT_EQ(player->timeControlStatus(), TimeControlStatus::Paused);
    turn();
    EXPECT_EQ(told(), "waiting;");
    script->to().mediaDidStart();
    turn();
    EXPECT_EQ(told(), "playing;");
    player->play();
    turn();
    EXPECT_EQ(told(), "") << "it plays already";
    player->pause();
    player->play();
    turn();
    EXPECT_EQ(told(), "paused;waiting;") << "with the value of each change";
    EXPECT_EQ(script->asked, "volume 1;play;pause;play;");
}

TEST_F(PlayerScene, WaitsWhileTheDataRunOut) {
    makePlaying();
    script->to().mediaDidStall();
    turn();
    EXPECT_EQ(told(), "waiting;");
    script->to().mediaDidStart();
    turn();
    EXPECT_EQ(told(), "playing;");
    player->pause();
    turn();
    told();
    script->to().mediaDidStall();
    script->to().mediaDidStart();
    turn();
    EXPECT_EQ(told(), "") << "play() was not called";
}

TEST_F(PlayerScene, TicksOnceAFrameWhileTimeRuns) {
    makeReady();
    std::vector<double> ticks;
    const auto token = player->addPeriodicTimeObserverForInterval(
        MediaTime::makeWithSeconds(1.0 / 60, 1'000'000'000),
        [&](MediaTime at) { ticks.push_back(at.seconds()); });
    time.runTo(1s);
    EXPECT_TRUE(ticks.empty()) << "it stands";
    player->play();
    script->to().mediaDidStart();
    script->position = 3s;
    turn();
    EXPECT_EQ(ticks, (std::vector<double>{3})) << "where it starts";
    time.runTo(1s + 1s);
    EXPECT_EQ(ticks.size(), 61U);
    player->pause();
    turn();
    EXPECT_EQ(ticks.size(), 62U) << "where it stops";
    time.runTo(3s);
    EXPECT_EQ(ticks.size(), 62U);
    EXPECT_FALSE(MainQueue::main().nextDeadline()) << "and the machine rests";
}

TEST_F(PlayerScene, TicksAboutOnceAnIntervalOnAFasterDisplay) {
    MainQueue::main().setFrameGrid(FrameGrid(120));
    makePlaying();
    int ticks = 0;
    const auto token = player->addPeriodicTimeObserverForInterval(
        MediaTime::makeWithSeconds(1.0 / 60, 1'000'000'000), [&](MediaTime) { ++ticks; });
    time.runTo(1s);
    EXPECT_NEAR(ticks, 60, 1);
}

TEST_F(PlayerScene, TicksNoMoreForATokenThatIsGivenBack) {
    makePlaying();
    int ticks = 0;
    const auto token =
        player->addPeriodicTimeObserverForInterval(kMediaTimeZero, [&](MediaTime) { ++ticks; });
    time.runTo(100ms);
    const int before = ticks;
    EXPECT_GT(before, 0);
    player->removeTimeObserver(token);
    time.runTo(200ms);
    EXPECT_EQ(ticks, before);
}

TEST_F(PlayerScene, HoldsATickUntilItsPictureIsSettled) {
    makePlaying();
    int ticks = 0;
    const auto token =
        player->addPeriodicTimeObserverForInterval(kMediaTimeZero, [&](MediaTime) { ++ticks; });
    script->isDecoded = false;
    time.runTo(17ms);
    EXPECT_EQ(ticks, 0);
    script->isDecoded = true;
    script->to().mediaDidDecode();
    EXPECT_EQ(ticks, 1);
}

TEST_F(PlayerScene, TicksForASnapshotBetweenTwoFrames) {
    makePlaying();
    std::vector<MediaTime> ticks;
    const auto token = player->addPeriodicTimeObserverForInterval(
        kMediaTimeZero, [&](MediaTime at) { ticks.push_back(at); });
    time.runTo(20ms);
    ticks.clear();
    script->position = 20ms;
    Player::catchUp();
    Player::catchUp();
    EXPECT_EQ(ticks, (std::vector<MediaTime>{MediaTime::make(20ms)})) << "once for a moment";
}

TEST_F(PlayerScene, IsAtTheTargetOfASeekFromTheCallOn) {
    makePlaying();
    std::vector<double> ticks;
    const auto token = player->addPeriodicTimeObserverForInterval(
        kMediaTimeZero, [&](MediaTime at) { ticks.push_back(at.seconds()); });
    player->seekToTime({5, 1});
    EXPECT_EQ(player->currentTime().seconds(), 5.0);
    time.runTo(100ms);
    EXPECT_TRUE(ticks.empty()) << "there is no picture of it yet";
    script->position = 5s;
    script->to().mediaDidSeek();
    turn();
    EXPECT_EQ(ticks, (std::vector<double>{5}));
    EXPECT_EQ(script->asked, "seek 5;");
}

TEST_F(PlayerScene, HoldsTargetsBehindTheStartAndLeavesTheEndToThePipeline) {
    makePlaying();
    player->seekToTime({-3, 1});
    player->seekToTime({30, 1});
    EXPECT_EQ(script->asked, "seek 0;seek 30;");
}

TEST_F(PlayerScene, FollowsADurationThatGrows) {
    makePlaying();
    script->to().mediaDurationDidChange(12s);
    EXPECT_EQ(item->duration().seconds(), 12.0);
}

TEST_F(PlayerScene, RefusesASeekToNoTimeAndBeforeItIsReady) {
    LogRecorder log;
    player->seekToTime({5, 1});
    makeReady();
    player->seekToTime({});
    EXPECT_EQ(script->asked, "volume 1;");
    EXPECT_EQ(log.count("player: seek refused, nothing is open to be played"), 1);
    EXPECT_EQ(log.count("player: seek refused, the target is no time"), 1);
}

TEST_F(PlayerScene, SaysThatItHasPlayedToTheEndAndPauses) {
    makePlaying();
    script->to().mediaDidEnd();
    turn();
    EXPECT_EQ(told(), "end;paused;");
    EXPECT_EQ(script->asked, "pause;");
}

TEST_F(PlayerScene, PlaysOnWhenToldSoAtTheEnd) {
    makePlaying();
    NotificationCenter::defaultCenter().addObserver(
        listener, PlayerItemDidPlayToEndTimeNotification, [this](const auto&) {
            player->pause();
            item->seekToTime(kMediaTimeZero);
            player->play();
        });
    script->to().mediaDidEnd();
    turn();
    EXPECT_EQ(script->asked, "pause;seek 0;play;");
    EXPECT_EQ(told(), "end;paused;waiting;");
}

TEST_F(PlayerScene, FailsBeforeItIsReadyByItsItemsStatus) {
    script->to().mediaDidFail({ErrorCode::Missing, "no such file"});
    turn();
    EXPECT_EQ(told(), "status2;");
    EXPECT_EQ(item->error()->detail, "no such file");
    player->play();
    player->pause();
    turn();
    EXPECT_EQ(told(), "") << "there is nothing to play";
    EXPECT_EQ(script->asked, "gone;");
}

TEST_F(PlayerScene, FailsLaterByANotificationAndStands) {
    makePlaying();
    script->to().mediaDidFail({ErrorCode::Unreadable, "the connection was cut"});
    turn();
    EXPECT_EQ(told(), "cut;paused;");
    EXPECT_EQ(item->error()->detail, "the connection was cut");
    EXPECT_EQ(item->status(), PlayerItemStatus::ReadyToPlay);
}

TEST_F(PlayerScene, HasItsVolumeFromTheStart) {
    player->setVolume(0.25F);
    makeReady();
    EXPECT_EQ(script->asked, "volume 0.25;volume 0.25;");
    EXPECT_EQ(player->volume(), 0.25F);
}

TEST_F(PlayerScene, EndsItsItemWithItself) {
    makePlaying();
    player.reset();
    EXPECT_EQ(script->asked, "pause;");
    item.reset();
    EXPECT_EQ(script->asked, "pause;gone;");
    turn();
    EXPECT_EQ(told(), "");
}

TEST_F(PlayerScene, HandsOutEachPictureOnceItsTimeHasCome) {
    makeReady();
    const auto output = make<PlayerItemVideoOutput>(PixelBufferAttributes{});
    EXPECT_FALSE(output->itemTimeForHostTime(0).isNumeric()) << "it belongs to no item yet";
    item->addOutput(output);
    const auto first = tests::anyPixels();
    const auto second = tests::anyPixels();
    script->frames = {{0ms, first}, {40ms, second}};
    const auto at = [](Instant instant) { return MediaTime::make(instant); };
    EXPECT_TRUE(output->hasNewPixelBufferForItemTime(at(39ms)));
    EXPECT_TRUE(output->hasNewPixelBufferForItemTime(at(39ms))) << "asking takes nothing";
    EXPECT_EQ(output->copyPixelBufferForItemTime(at(39ms)), first);
    EXPECT_FALSE(output->hasNewPixelBufferForItemTime(at(39ms)));
    EXPECT_EQ(output->copyPixelBufferForItemTime(at(39ms)), nullptr) << "it has been handed out";
    EXPECT_EQ(output->copyPixelBufferForItemTime(at(40ms)), second);
    script->position = 1s;
    EXPECT_EQ(output->itemTimeForHostTime(currentMediaTime() + 0.5).seconds(), 1.5);
}
