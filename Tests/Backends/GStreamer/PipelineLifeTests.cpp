#include "Backends/GStreamer/PipelineLimits.h"
#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/HttpServer.h"
#include "Tests/Support/TestClips.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>

using platform::fromSeconds;
using platform::MediaPacing;
using platform::URL;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

using namespace std::chrono_literals;

int entriesOf(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

/// What a pipeline may leave behind.
struct Resources {
    int threads = entriesOf("/proc/self/task");
    int files = entriesOf("/proc/self/fd");
};

/// Waits until nothing but what the library keeps for later is left of them.
testing::AssertionResult areGivenBack(QueueDriver& queue, const Resources& before) {
    constexpr int kKept = 8; // idle threads of a pool, and what wakes them
    const bool back = queue.runUntil([&] {
        queue.lookAgainIn(fromSeconds(0.05));
        const Resources now;
        return now.threads <= before.threads + kKept && now.files <= before.files + kKept;
    });
    if (back)
        return testing::AssertionSuccess();
    const Resources now;
    return testing::AssertionFailure() << now.threads - before.threads << " threads and "
                                       << now.files - before.files << " files more";
}

/// Takes it as far as `stage` says, and drops it.
void openAndDrop(const URL& url, MediaPacing pacing, int stage) {
    OpenedPipeline opened(url, pacing,
                          pacing == MediaPacing::Host ? QueueDriver::Time::Virtual
                                                      : QueueDriver::Time::Real);
    if (stage == 0)
        return;
    ASSERT_TRUE(opened.open());
    opened.pipeline->play();
    if (stage == 2)
        opened.pipeline->seek(fromSeconds(0.4));
}

/// Each a little later on its way than the one before, which has ended by then.
void expectEarlyClosingsToLeaveNothing(const URL& url, int count, std::chrono::microseconds later) {
    openAndDrop(url, MediaPacing::Machine, 1);
    const Resources before;
    for (int i = 0; i < count; ++i) {
        {
            const OpenedPipeline opened(url, i % 2 == 0 ? MediaPacing::Host : MediaPacing::Machine,
                                        QueueDriver::Time::Virtual);
            std::this_thread::sleep_for(i * later);
        }
        QueueDriver queue(QueueDriver::Time::Real);
        ASSERT_TRUE(areGivenBack(queue, before)) << i << " of " << url.absoluteString();
    }
}

template <class Call>
auto longest(const Call& call) {
    std::chrono::steady_clock::duration most{0};
    for (int i = 0; i < 20; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        call(i);
        most = std::max(most, std::chrono::steady_clock::now() - begin);
    }
    return most;
}

} // namespace

TEST(PipelineLife, ManyInARowLeaveNoThreadsAndNoFiles) {
    const URL url = URL::fileURLWithPath(testClip({.frames = 15}));
    openAndDrop(url, MediaPacing::Machine, 1);
    const Resources before;
    for (int i = 0; i < 200; ++i)
        openAndDrop(url, i % 2 == 0 ? MediaPacing::Host : MediaPacing::Machine, i % 3);
    QueueDriver queue(QueueDriver::Time::Real);
    EXPECT_TRUE(areGivenBack(queue, before));
}

/// So many that a few which never end are more than what is kept for later.
TEST(PipelineLife, ManyFilesThatAreClosedWhileTheyOpenLeaveNoThreadsAndNoFiles) {
    const URL url = URL::fileURLWithPath(testClip({.frames = 15}));
    openAndDrop(url, MediaPacing::Machine, 1);
    const Resources before;
    for (int i = 0; i < 400; ++i) {
        const OpenedPipeline opened(url, MediaPacing::Host, QueueDriver::Time::Virtual);
        std::this_thread::sleep_for(i % 40 * 100us);
    }
    QueueDriver queue(QueueDriver::Time::Real);
    EXPECT_TRUE(areGivenBack(queue, before));
}

TEST(PipelineLife, ManyFromAServerThatAreClosedWhileTheyOpenLeaveNoThreadsAndNoFiles) {
    tests::HttpServer server;
    server.serveFile("/a.mp4", testClip({.frames = 15}));
    expectEarlyClosingsToLeaveNothing(*URL::URLWithString(server.url("/a.mp4")), 40, 100us);
}

TEST(PipelineLife, ManyPlaylistsThatAreClosedWhileTheyOpenLeaveNoThreadsAndNoFiles) {
    tests::HttpServer server;
    server.serveFolder("/", tests::remuxedClip({.frames = 90, .keyFrameInterval = 30},
                                               {"-f", "hls", "-hls_time", "1", "list.m3u8"}));
    expectEarlyClosingsToLeaveNothing(*URL::URLWithString(server.url("/list.m3u8")), 40, 250us);
}

/// What has arrived as a whole goes on its way all at once, and a sound may be over first.
TEST(PipelineLife, ManyWithAShortSoundFromAServerMayBeClosed) {
    tests::HttpServer server;
    server.serveFile("/a.mkv",
                     testClip({.frames = 45, .container = "mkv", .sound = tests::ClipSound::Tone}));
    const URL url = *URL::URLWithString(server.url("/a.mkv"));
    for (int i = 0; i < 100; ++i)
        openAndDrop(url, MediaPacing::Machine, 1 + i % 2);
}

TEST(PipelineLife, ManyFromAStalledServerLeaveNoThreadsAndNoFiles) {
    tests::HttpServer server;
    server.serve("/a.mp4", {.isSilent = true});
    const URL url = *URL::URLWithString(server.url("/a.mp4"));
    const Resources before;
    for (int i = 0; i < 20; ++i) {
        {
            const OpenedPipeline opened(url, MediaPacing::Host, QueueDriver::Time::Virtual);
            ASSERT_TRUE(server.waitUntilStalled());
        }
        ASSERT_TRUE(server.waitForOpenConnections(0));
    }
    QueueDriver queue(QueueDriver::Time::Real);
    EXPECT_TRUE(areGivenBack(queue, before));
}

TEST(PipelineLife, ManyAtATimePlay) {
    const URL url = URL::fileURLWithPath(testClip({.frames = 15}));
    QueueDriver queue(QueueDriver::Time::Virtual);
    std::vector<std::shared_ptr<tests::PipelineNotes>> notes;
    std::vector<std::unique_ptr<platform::MediaPipeline>> pipelines;
    for (int i = 0; i < 8; ++i) {
        notes.push_back(std::make_shared<tests::PipelineNotes>());
        pipelines.push_back(openMediaPipeline(url, MediaPacing::Host, notes.back()));
        pipelines.back()->play();
    }
    ASSERT_TRUE(queue.advanceTo(fromSeconds(1)));
    for (const auto& one : notes)
        EXPECT_EQ(one->count("end"), 1);
}

TEST(PipelineLife, MayEndWithTheProcess) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const URL url = URL::fileURLWithPath(testClip());
    const auto playAndLeave = [&] {
        OpenedPipeline opened(url, MediaPacing::Machine, QueueDriver::Time::Real);
        const bool isOpen = static_cast<bool>(opened.open());
        opened.pipeline->play();
        opened.pipeline.reset();
        std::exit(isOpen ? 0 : 1);
    };
    EXPECT_EXIT(playAndLeave(), testing::ExitedWithCode(0), "");
}

TEST(PipelineLife, NeedNotEndBeforeTheProcess) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const URL url = URL::fileURLWithPath(testClip());
    const auto playAndLeave = [&] {
        OpenedPipeline opened(url, MediaPacing::Machine, QueueDriver::Time::Real);
        const bool isOpen = static_cast<bool>(opened.open());
        opened.pipeline->play();
        std::exit(isOpen ? 0 : 1);
    };
    EXPECT_EXIT(playAndLeave(), testing::ExitedWithCode(0), "");
}

/// The bound is generous for a machine under load; what it finds is a wait for the network, which
/// here would take longer than any test.
TEST(PipelineLife, NoCallWaitsForAStalledServer) {
    platform::pipelineLimits() = {.silence = 600s, .request = 600s, .retries = 0};
    tests::HttpServer server;
    const std::string clip = testClip({.frames = 90, .more = {"-movflags", "+faststart"}});
    server.serveFile("/a.mp4", clip, {.stallAfter = std::filesystem::file_size(clip) / 2});
    for (const MediaPacing pacing : {MediaPacing::Host, MediaPacing::Machine}) {
        OpenedPipeline opened(*URL::URLWithString(server.url("/a.mp4")), pacing,
                              QueueDriver::Time::Real);
        ASSERT_TRUE(opened.open());
        auto& pipeline = *opened.pipeline;
        const auto time = [](int i) { return fromSeconds(0.14 * i); };
        EXPECT_LT(longest([&](int i) { i % 2 == 0 ? pipeline.play() : pipeline.pause(); }), 20s);
        EXPECT_LT(longest([&](int i) { pipeline.seek(time(i)); }), 20s);
        EXPECT_LT(longest([&](int i) { pipeline.setVolume(0.01 * i); }), 20s);
        EXPECT_LT(longest([&](int i) { static_cast<void>(pipeline.isDecodedTo(time(i))); }), 20s);
        EXPECT_LT(longest([&](int i) { static_cast<void>(pipeline.frameAt(time(i))); }), 20s);
        EXPECT_LT(longest([&](int i) { static_cast<void>(pipeline.positionAt(time(i))); }), 20s);
        EXPECT_LT(longest([&](int) { opened.pipeline.reset(); }), 20s);
    }
    platform::pipelineLimits() = {};
}
