#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Media/AudioSession.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Refuses everything.
class BusyMachine final : public platform::AudioArbiter {
public:
    std::optional<platform::Error> setCategory(std::string_view /*category*/) override {
        return platform::Error{platform::ErrorCode::Unavailable, "a call is on"};
    }
    std::optional<platform::Error> setActive(bool /*active*/, bool /*notifyOthers*/) override {
        return platform::Error{platform::ErrorCode::Unavailable, "a call goes on"};
    }
};

/// Notes what it is asked for, and whether the controller has a streamer by then.
class AttentiveMachine final : public platform::AudioArbiter {
public:
    explicit AttentiveMachine(const ZNTDisplayViewController& player) : player_(player) {}
    std::optional<platform::Error> setCategory(std::string_view category) override {
        return note(std::string(category));
    }
    std::optional<platform::Error> setActive(bool active, bool notifyOthers) override {
        return note(std::string(active ? "active" : "inactive") +
                    (notifyOthers ? ", tells others" : ""));
    }
    std::string asked;

private:
    std::optional<platform::Error> note(const std::string& what) {
        asked += what + (player_.streamer() ? "; a streamer;" : "; no streamer;");
        return std::nullopt;
    }
    const ZNTDisplayViewController& player_;
};

} // namespace

TEST(VideoPlayback, DoesNothingBeforeAVideoIsPrepared) {
    PlaybackScene s;
    s.player->play();
    s.player->pause();
    s.player->seekToTime(3);
    s.player->setPlayerVolume(0.5);
    EXPECT_EQ(s.player->videoDuration(), 0.0);
    EXPECT_EQ(s.player->playerVolume(), 0.0);
    EXPECT_EQ(s.player->streamer(), nullptr);
    EXPECT_THAT(s.player->take(), IsEmpty());
}

TEST(VideoPlayback, StartsByItselfAndGivesItsHooksInOrder) {
    PlaybackScene s;
    s.play(tests::testClip());
    EXPECT_EQ(s.player->contentType(), ContentType::Video);
    EXPECT_TRUE(s.player->isReadyForDisplay());
    EXPECT_TRUE(s.player->isLocalResource());
    EXPECT_EQ(s.player->videoDuration(), 1.0);
    EXPECT_THAT(s.player->take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading"));
    s.advance(2);
    EXPECT_THAT(s.player->take(), ElementsAre("videoDidEndPlaying", "videoPaused"));
    EXPECT_GE(s.player->ticks.size(), 60U);
}

TEST(VideoPlayback, ShowsTheFrameOfEverySecond) {
    PlaybackScene s;
    s.play(tests::testClip());
    EXPECT_EQ(s.shownFrame(), 0);
    for (const double second : {0.1, 0.5, 0.51, 0.95}) {
        s.advance(second - platform::toSeconds(s.host->now()));
        EXPECT_EQ(s.shownFrame(), static_cast<int>(second * 30 + 1e-9)) << second;
    }
}

TEST(VideoPlayback, ShowsTheFrameOfAMomentBetweenTwoRefreshes) {
    // 40 frames a second and 60 refreshes.
    PlaybackScene s;
    s.play(tests::testClip({.framesPerSecond = 40, .frames = 40}));
    s.advance(0.026);
    EXPECT_EQ(s.shownFrame(), 1);
    s.advance(0.075 - 0.026);
    EXPECT_EQ(s.shownFrame(), 3);
}

TEST(VideoPlayback, PausesAtOnceAndSaysSoTwice) {
    PlaybackScene s;
    s.play(tests::testClip());
    s.advance(0.5);
    s.player->take();
    s.player->pause();
    EXPECT_THAT(s.player->take(), ElementsAre("videoPaused"));
    s.advance(1);
    EXPECT_THAT(s.player->take(), ElementsAre("videoPaused")) << "once time has stopped";
    EXPECT_EQ(s.shownFrame(), 15);
    s.player->play();
    s.advance(0.25);
    EXPECT_THAT(s.player->take(),
                ElementsAre("videoStartedPlaying", "videoIsLoading", "videoDidEndLoading"));
    EXPECT_EQ(s.shownFrame(), 22);
}

TEST(VideoPlayback, SeeksWhilePaused) {
    PlaybackScene s;
    s.play(tests::testClip());
    s.player->pause();
    s.player->seekToTime(0.7);
    EXPECT_EQ(s.shownFrame(), 21);
}

TEST(VideoPlayback, KeepsItsVolumeInRange) {
    PlaybackScene s;
    s.play(tests::testClip());
    EXPECT_EQ(s.player->playerVolume(), 0.0);
    s.player->setPlayerVolume(7);
    EXPECT_EQ(s.player->playerVolume(), 1.0);
}

TEST(VideoPlayback, ClaimsTheSoundAndGivesItBackAtTheEnd) {
    PlaybackScene s;
    auto& session = platform::AudioSession::sharedInstance();
    EXPECT_FALSE(session.isActive());
    s.play(tests::testClip());
    EXPECT_TRUE(session.isActive());
    EXPECT_EQ(session.category(), platform::kAudioSessionCategoryPlayback);
    s.release();
    EXPECT_FALSE(session.isActive());
}

TEST(VideoPlayback, GoesOnWhereTheSoundIsRefused) {
    platform::AudioSession::sharedInstance().setArbiter(std::make_shared<BusyMachine>());
    const LogRecorder log;
    PlaybackScene s;
    s.play(tests::testClip());
    platform::AudioSession::sharedInstance().setArbiter(nullptr);
    EXPECT_EQ(log.count("error a call is on"), 1);
    EXPECT_EQ(log.count("error a call goes on"), 1);
    s.advance(0.5);
    EXPECT_EQ(s.shownFrame(), 15);
}

TEST(VideoPlayback, ClaimsTheSoundByItsCategoryFirstAndBeforeThereIsAStreamer) {
    PlaybackScene s;
    const auto arbiter = std::make_shared<AttentiveMachine>(*s.player);
    platform::AudioSession::sharedInstance().setArbiter(arbiter);
    s.play(tests::testClip());
    platform::AudioSession::sharedInstance().setArbiter(nullptr);
    EXPECT_EQ(arbiter->asked, std::string(platform::kAudioSessionCategoryPlayback) +
                                  "; no streamer;active, tells others; no streamer;");
    using Options = platform::AudioSession::ActiveOptions;
    EXPECT_EQ(static_cast<unsigned>(Options::NotifyOthersOnDeactivation), 1U);
}
