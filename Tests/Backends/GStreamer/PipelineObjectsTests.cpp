#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/TestClips.h"

#include <gst/gst.h>
#include <gtest/gtest.h>

#include <atomic>
#include <utility>

using platform::fromSeconds;
using platform::MediaPacing;
using platform::URL;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

/// Counts the library's objects. The library never lets go of its hooks, so there is one counter.
class LiveObjects {
public:
    static int count() {
        static const bool once = listen();
        static_cast<void>(once);
        return alive;
    }

private:
    static bool listen() {
        gst_init(nullptr, nullptr);
        gst_tracing_register_hook(nullptr, "object-created", G_CALLBACK(created));
        gst_tracing_register_hook(nullptr, "object-destroyed", G_CALLBACK(destroyed));
        return true;
    }
    static void created(GstTracer*, GstClockTime, GstObject*) { ++alive; }
    static void destroyed(GstTracer*, GstClockTime, GstObject*) { --alive; }

    inline static std::atomic<int> alive = 0;
};

void playAndDrop(const URL& url) {
    OpenedPipeline opened(url, MediaPacing::Machine, QueueDriver::Time::Real);
    ASSERT_TRUE(opened.open());
    opened.pipeline->setVolume(0.5);
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("end") > 0; }));
}

/// Once it has stopped changing: a pipeline ends on threads of its own.
int settledObjects() {
    constexpr int kLooks = 10;
    QueueDriver queue(QueueDriver::Time::Real);
    int last = -1;
    int same = 0;
    queue.runUntil([&] {
        queue.lookAgainIn(fromSeconds(0.05));
        const int before = std::exchange(last, LiveObjects::count());
        same = before == last ? same + 1 : 0;
        return same == kLooks;
    });
    return last;
}

} // namespace

TEST(PipelineObjects, OfAVideoWithSoundGoWithIt) {
    const URL url = URL::fileURLWithPath(testClip({.frames = 6, .sound = tests::ClipSound::Tone}));
    settledObjects(); // counts from here on
    playAndDrop(url); // brings what the library keeps for the process
    const int kept = settledObjects();
    for (int i = 0; i < 3; ++i)
        playAndDrop(url);
    EXPECT_EQ(settledObjects(), kept);
}
