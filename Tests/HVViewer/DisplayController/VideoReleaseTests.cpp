#include "Platform/Foundation/MainQueue.h"
#include "Tests/HVViewer/DisplayController/HotSpotBuffers.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/QueueDriver.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

using platform::URL;

namespace {

/// Brings a scene to where its controller is let go of.
struct Stage {
    std::string name;
    std::function<void(PlaybackScene&)> reach;
};

std::ostream& operator<<(std::ostream& out, const Stage& stage) {
    return out << stage.name;
}

std::vector<Stage> stages() {
    return {
        {"Preparing",
         [](PlaybackScene& s) { s.player->prepareVideoWithUrl(urlOf(streamableClip())); }},
        {"Ready",
         [](PlaybackScene& s) {
             s.player->prepareVideoWithUrl(urlOf(streamableClip()));
             s.player->pause();
             s.appear();
         }},
        {"Playing",
         [](PlaybackScene& s) {
             s.play(streamableClip());
             s.advance(0.3);
         }},
        {"Paused",
         [](PlaybackScene& s) {
             s.play(streamableClip());
             s.advance(0.3);
             s.player->pause();
             s.host->settle();
         }},
        {"Seeking",
         [](PlaybackScene& s) {
             s.play(streamableClip());
             s.player->seekToTime(0.7);
         }},
        {"AtTheEnd",
         [](PlaybackScene& s) {
             s.play(streamableClip());
             s.advance(2);
         }},
        {"Failed", [](PlaybackScene& s) { s.play("/nowhere/missing.mp4"); }},
        {"SideBySide",
         [](PlaybackScene& s) {
             s.play(streamableClip());
             s.player->setDisplayMode(DisplayMode::SideBySide);
             s.advance(0.3);
         }},
    };
}

class VideoRelease : public testing::TestWithParam<Stage> {};

INSTANTIATE_TEST_SUITE_P(Stages, VideoRelease, testing::ValuesIn(stages()),
                         [](const auto& test) { return test.param.name; });

/// Lets go of the controller; nothing of it may be left, and nothing may come of it any more.
void releaseAndLookForTraces(PlaybackScene& s) {
    const std::weak_ptr<HookRecorder> player = s.player;
    int heard = 0;
    s.player->onHook = [&](const std::string&) { ++heard; };
    s.player->onTick = [&] { ++heard; };
    s.release();
    EXPECT_TRUE(player.expired());
    heard = 0;
    s.host->settle();
    s.advance(2);
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0);
}

/// In real time the wait needs a limit: returns when the condition holds or the limit is reached.
template <class Condition>
bool runUntil(zanto::HeadlessHost& host, const Condition& condition) {
    const auto limit = host.now() + tests::QueueDriver::kLimit;
    while (!condition() && host.now() < limit)
        host.advanceTo(host.now() + platform::fromSeconds(0.01));
    return condition();
}

std::unique_ptr<zanto::HeadlessHost> makeRealTimeHost() {
    return std::move(zanto::HeadlessHost::create(
                         {.size = {256, 128}, .time = zanto::HeadlessHostOptions::Time::Real})
                         .value());
}

} // namespace

TEST_P(VideoRelease, EndsEverything) {
    PlaybackScene s;
    GetParam().reach(s);
    releaseAndLookForTraces(s);
}

TEST_P(VideoRelease, GivesItsGLObjectsBack) {
    PlaybackScene first;
    GetParam().reach(first);
    first.release();
    first.host->settle();
    auto objects = liveGLObjects();
    first.player = platform::make<HookRecorder>();
    first.host->embedded().setRootViewController(first.player);
    GetParam().reach(first);
    objects[kBuffers] += hotSpotDrawersOf(*first.player);
    first.release();
    first.host->settle();
    EXPECT_EQ(liveGLObjects(), objects);
}

TEST_P(VideoRelease, LeavesTheHostFreeForTheNext) {
    PlaybackScene s;
    GetParam().reach(s);
    s.release();
    s.player = platform::make<HookRecorder>();
    s.host->embedded().setRootViewController(s.player);
    s.player->setDisplayMode(DisplayMode::Plane);
    s.play(streamableClip());
    s.advance(0.1);
    EXPECT_EQ(s.shownFrame(), 3);
}

TEST(VideoRelease, EndsWhatAServerKeepsWaiting) {
    tests::HttpServer server;
    server.serve("/silent.mp4", {.isSilent = true});
    PlaybackScene s;
    s.player->prepareVideoWithUrl(URL::URLWithString(server.url("/silent.mp4")));
    s.host->embedded().appear();
    ASSERT_TRUE(server.waitUntilStalled());
    releaseAndLookForTraces(s);
    EXPECT_TRUE(server.waitForOpenConnections(0));
}

TEST(VideoRelease, EndsWhatAServerLeavesInTheMiddle) {
    tests::HttpServer server;
    const std::string file =
        tests::testClip({.size = {256, 128}, .frames = 300, .more = {"-movflags", "+faststart"}});
    server.serveFile("/a.mp4", file, {.stallAfter = std::filesystem::file_size(file) / 2});
    PlaybackScene s;
    s.player->prepareVideoWithUrl(URL::URLWithString(server.url("/a.mp4")));
    s.appear();
    ASSERT_EQ(s.shownFrame(), 0);
    s.player->seekToTime(9);
    releaseAndLookForTraces(s);
    EXPECT_TRUE(server.waitForOpenConnections(0));
}

TEST(VideoRelease, IsAllowedInsideEveryHook) {
    for (const std::string where :
         {"videoStartedPlaying", "videoIsLoading", "videoDidEndLoading", "videoPaused",
          "videoDidEndPlaying", "downloadVideoFailedWithError", "tick"}) {
        PlaybackScene s;
        const std::weak_ptr<HookRecorder> player = s.player;
        int heard = 0;
        const auto releaseIn = [&](const std::string& hook) {
            ++heard;
            if (hook != where)
                return;
            s.release();
            heard = 0;
        };
        s.player->onHook = releaseIn;
        s.player->onTick = [&] { releaseIn("tick"); };
        s.play(where.starts_with("download") ? "/nowhere/missing.mp4" : streamableClip());
        s.advance(3);
        EXPECT_TRUE(player.expired()) << where;
        EXPECT_EQ(heard, 0) << where;
        EXPECT_EQ(platform::MainQueue::main().outstandingWork(), 0) << where;
    }
}

TEST(VideoRelease, InRealTimeEndsEverything) {
    const auto host = makeRealTimeHost();
    for (const std::string where : {"preparing", "playing", "paused", "seeking", "at the end"}) {
        auto player = platform::make<HookRecorder>();
        const std::weak_ptr<HookRecorder> released = player;
        host->embedded().setRootViewController(player);
        host->embedded().appear();
        player->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 6})));
        if (where == "at the end") {
            ASSERT_TRUE(runUntil(*host, [&] { return player->heard("videoDidEndPlaying"); }));
        } else if (where != "preparing") {
            ASSERT_TRUE(runUntil(*host, [&] { return !player->ticks.empty(); })) << where;
        }
        if (where == "paused")
            player->pause();
        if (where == "seeking")
            player->seekToTime(0.1);
        host->embedded().setRootViewController(nullptr);
        player.reset();
        EXPECT_TRUE(released.expired()) << where;
        host->advanceTo(host->now() + platform::fromSeconds(0.05));
    }
}

TEST(VideoRelease, InRealTimeIsAllowedInsideEveryHook) {
    const auto host = makeRealTimeHost();
    for (const std::string where : {"videoStartedPlaying", "videoIsLoading", "videoDidEndLoading",
                                    "videoPaused", "videoDidEndPlaying", "tick"}) {
        auto player = platform::make<HookRecorder>();
        const std::weak_ptr<HookRecorder> released = player;
        host->embedded().setRootViewController(player);
        const auto releaseIn = [&](const std::string& hook) {
            if (hook != where)
                return;
            host->embedded().setRootViewController(nullptr);
            player.reset();
        };
        player->onHook = releaseIn;
        player->onTick = [&] { releaseIn("tick"); };
        player->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 6})));
        host->embedded().appear();
        EXPECT_TRUE(runUntil(*host, [&] { return released.expired(); })) << where;
    }
}
