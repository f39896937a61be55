#include "Tests/HVViewer/DisplayController/HotSpotBuffers.h"
#include "Tests/HVViewer/DisplayController/PlaybackScene.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/QueueDriver.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <optional>
#include <ostream>

namespace {

int entriesOf(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<int>(std::distance(begin(entries), end(entries)));
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

} // namespace

TEST(VideoLifetime, TwoHundredVideosInARowLeaveNothingBehind) {
    const std::array urls{urlOf(streamableClip()),
                          urlOf(tests::testClip({.size = {64, 32}, .frames = 6}))};
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
            s.play(streamableClip());
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
