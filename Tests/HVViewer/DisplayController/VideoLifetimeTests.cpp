#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/QueueDriver.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <chrono>
#include <filesystem>
#include <iterator>

using platform::URL;

namespace {

/// 30 frames, one second, its description at the front.
std::string clip() {
    return tests::testClip({.more = {"-movflags", "+faststart"}});
}

URL urlOf(const std::string& path) {
    return URL::fileURLWithPath(path);
}

int entriesOf(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

constexpr std::size_t kBuffers = 1; // in `liveGLObjects()`

/// How many of the views have one, each of which leaves a buffer of 48 bytes.
int hotSpotDrawersOf(const ZNTDisplayViewController& player) {
    int drawers = 0;
    for (const auto& view : {player.displayView(), player.virtualDisplayView()}) {
        if (view && view->glDrawer() && view->glDrawer()->hotSpotGLDrawer())
            ++drawers;
    }
    return drawers;
}

/// In use of what the C library hands out; 0 under the sanitizers, who look for leaks themselves.
std::size_t heapInUse() {
    const auto information = mallinfo2();
    return information.uordblks + information.hblkhd;
}

/// What videos may leave behind in the process.
struct Resources {
    int threads = entriesOf("/proc/self/task");
    int files = entriesOf("/proc/self/fd");
    std::size_t heap = heapInUse();

    /// Whether there is no more of anything than before, but for what libraries keep for later.
    [[nodiscard]] bool areAsBefore(const Resources& before) const {
        constexpr int kKept = 8;
        constexpr std::size_t kKeptBytes = std::size_t{8} << 20U;
        return threads <= before.threads + kKept && files <= before.files + kKept &&
               heap <= before.heap + kKeptBytes;
    }
};

void PrintTo(const Resources& resources, std::ostream* out) {
    *out << resources.threads << " threads, " << resources.files << " files, " << resources.heap
         << " bytes";
}

/// Waits for what ends behind the caller's back, after the scene.
Resources resourcesOnceAsBefore(const Resources& before) {
    tests::QueueDriver queue(tests::QueueDriver::Time::Real);
    static_cast<void>(queue.runUntil([&] {
        queue.lookAgainIn(platform::fromSeconds(0.05));
        return Resources().areAsBefore(before);
    }));
    return {};
}

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
        {"Preparing", [](PlaybackScene& s) { s.player->prepareVideoWithUrl(urlOf(clip())); }},
        {"Ready",
         [](PlaybackScene& s) {
             s.player->prepareVideoWithUrl(urlOf(clip()));
             s.player->pause();
             s.appear();
         }},
        {"Playing",
         [](PlaybackScene& s) {
             s.play(clip());
             s.advance(0.3);
         }},
        {"Paused",
         [](PlaybackScene& s) {
             s.play(clip());
             s.advance(0.3);
             s.player->pause();
             s.host->settle();
         }},
        {"Seeking",
         [](PlaybackScene& s) {
             s.play(clip());
             s.player->seekToTime(0.7);
         }},
        {"AtTheEnd",
         [](PlaybackScene& s) {
             s.play(clip());
             s.advance(2);
         }},
        {"Failed", [](PlaybackScene& s) { s.play("/nowhere/missing.mp4"); }},
        {"SideBySide",
         [](PlaybackScene& s) {
             s.play(clip());
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

/// Real time needs its own end: until that holds, but not for ever.
template <class Condition>
bool runUntil(HeadlessHost& host, const Condition& condition) {
    const auto limit = host.now() + tests::QueueDriver::kLimit;
    while (!condition() && host.now() < limit)
        host.advanceTo(host.now() + platform::fromSeconds(0.01));
    return condition();
}

std::unique_ptr<HeadlessHost> makeRealTimeHost() {
    return std::move(
        HeadlessHost::create({.size = {256, 128}, .time = HeadlessHostOptions::Time::Real})
            .value());
}

} // namespace

TEST(VideoLifetime, TwoHundredVideosInARowLeaveNothingBehind) {
    const std::array urls{urlOf(clip()), urlOf(tests::testClip({.size = {64, 32}, .frames = 6}))};
    std::optional<Resources> before;
    {
        PlaybackScene s;
        s.appear();
        std::array<int, 5> objects{};
        for (int i = 0; i < 201; ++i) {
            s.player->prepareVideoWithUrl(urls.at(static_cast<std::size_t>(i) % 2));
            if (i % 3 == 0)
                s.host->settle(); // else it is replaced while it opens
            if (i % 6 == 0)
                s.advance(0.1);
            if (i == 12) {
                objects = liveGLObjects();
                before.emplace();
            }
        }
        s.host->settle();
        EXPECT_EQ(liveGLObjects(), objects);
        EXPECT_EQ(s.shownFrame(), 0);
    }
    const Resources after = resourcesOnceAsBefore(*before);
    EXPECT_TRUE(after.areAsBefore(*before))
        << testing::PrintToString(after) << " after " << testing::PrintToString(*before);
}

TEST(VideoLifetime, TwentyControllersInARowLeaveNothingBehind) {
    std::optional<Resources> before;
    std::array<int, 5> objects{};
    {
        PlaybackScene s;
        int left = 0; // buffers of hot-spot drawers, which are left on purpose
        for (int i = 0; i < 21; ++i) {
            s.player = platform::make<HookRecorder>();
            s.host->embedded().setRootViewController(s.player);
            s.play(clip());
            s.advance(0.1);
            left += i > 3 ? hotSpotDrawersOf(*s.player) : 0;
            s.release();
            s.host->settle();
            if (i == 3) {
                objects = liveGLObjects();
                before.emplace();
            }
        }
        objects[kBuffers] += left;
        EXPECT_EQ(liveGLObjects(), objects);
    }
    const Resources after = resourcesOnceAsBefore(*before);
    EXPECT_TRUE(after.areAsBefore(*before))
        << testing::PrintToString(after) << " after " << testing::PrintToString(*before);
}

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
    s.play(clip());
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
        s.play(where.starts_with("download") ? "/nowhere/missing.mp4" : clip());
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

TEST(VideosAtATime, GoOnWhenOneOfThemIsReleased) {
    PlaybackScene s;
    const auto unseen = platform::make<HookRecorder>();
    unseen->prepareVideoWithUrl(urlOf(tests::testClip({.frames = 90})));
    const auto picture = platform::make<HookRecorder>();
    picture->prepareImage(flatPicture(64, 32, 0, 200, 0));
    s.play(clip());
    s.advance(0.5);
    EXPECT_EQ(s.shownFrame(), 15);
    s.release();
    unseen->ticks.clear();
    s.advance(0.5);
    EXPECT_NEAR(static_cast<double>(unseen->ticks.size()), 30.0, 1.0);
    s.host->embedded().setRootViewController(unseen);
    unseen->setDisplayMode(DisplayMode::Plane);
    s.appear();
    EXPECT_EQ(s.shownFrame(), 30);
    s.host->embedded().setRootViewController(picture);
    s.appear();
    EXPECT_EQ(colourAt(*s.snapshot(), 128, 20), (std::array{0, 200, 0, 255}));
}

TEST(VideosAtATime, ShowTheirOwnFramesInTurn) {
    PlaybackScene s;
    s.play(tests::testClip({.frames = 60}));
    s.advance(0.5);
    const auto first = s.player;
    first->pause();
    const auto second = platform::make<HookRecorder>();
    s.host->embedded().setRootViewController(second);
    second->setDisplayMode(DisplayMode::Plane);
    second->prepareVideoWithUrl(urlOf(clip()));
    s.appear();
    EXPECT_EQ(s.shownFrame(), 0);
    s.host->embedded().setRootViewController(first);
    s.appear();
    EXPECT_EQ(s.shownFrame(), 15);
}

TEST(VideosAtATime, PicturesAndVideosFollowEachOther) {
    PlaybackScene s;
    s.player->prepareImage(flatPicture(64, 32, 200, 0, 0));
    s.appear();
    EXPECT_EQ(colourAt(*s.snapshot(), 128, 20), (std::array{200, 0, 0, 255}));
    s.player->prepareVideoWithUrl(urlOf(clip()));
    s.host->settle();
    s.advance(0.5);
    EXPECT_EQ(s.shownFrame(), 15);
    s.release();
    s.player = platform::make<HookRecorder>();
    s.player->prepareImage(flatPicture(64, 32, 0, 0, 200));
    s.host->embedded().setRootViewController(s.player);
    s.player->setDisplayMode(DisplayMode::Plane);
    s.appear();
    EXPECT_EQ(colourAt(*s.snapshot(), 128, 20), (std::array{0, 0, 200, 255}));
}
