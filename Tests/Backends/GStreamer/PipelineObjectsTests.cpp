#include "Tests/Backends/GStreamer/OpenedPipeline.h"
#include "Tests/Support/TestClips.h"

#include <gmock/gmock.h>
#include <gst/gst.h>
#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

using platform::fromSeconds;
using platform::MediaPacing;
using platform::URL;
using testing::IsEmpty;
using tests::OpenedPipeline;
using tests::QueueDriver;
using tests::testClip;

namespace {

/// The elements that have been made since the first look and still exist. The library never lets go
/// of its hooks, so there is one list.
class LiveElements {
public:
    static std::vector<std::string> names() {
        static const bool once = listen();
        static_cast<void>(once);
        const std::scoped_lock lock(mutex);
        std::vector<std::string> names;
        for (const auto& [object, name] : live)
            names.push_back(name);
        return names;
    }

private:
    static bool listen() {
        gst_init(nullptr, nullptr);
        const GType type = g_type_register_static_simple(
            GST_TYPE_TRACER, "ZantoTestTracer", sizeof(GstTracerClass), nullptr, sizeof(GstTracer),
            nullptr, static_cast<GTypeFlags>(0));
        static auto* const tracer = static_cast<GstTracer*>(g_object_new(type, nullptr));
        gst_tracing_register_hook(tracer, "object-created", G_CALLBACK(created));
        gst_tracing_register_hook(tracer, "object-destroyed", G_CALLBACK(destroyed));
        return true;
    }
    static void created(GstTracer*, GstClockTime, GstObject* object) {
        if (!GST_IS_ELEMENT(object))
            return;
        const std::scoped_lock lock(mutex);
        live.emplace(object, G_OBJECT_TYPE_NAME(object));
    }
    static void destroyed(GstTracer*, GstClockTime, GstObject* object) {
        const std::scoped_lock lock(mutex);
        live.erase(object);
    }

    inline static std::mutex mutex; // guards live
    inline static std::map<const GstObject*, std::string> live;
};

void playAndDrop(const URL& url) {
    OpenedPipeline opened(url, MediaPacing::Machine, QueueDriver::Time::Real);
    ASSERT_TRUE(opened.open());
    opened.pipeline->setVolume(0.5);
    opened.pipeline->play();
    ASSERT_TRUE(opened.queue.runUntil([&] { return opened.notes->count("end") > 0; }));
}

} // namespace

TEST(PipelineObjects, ElementsOfAVideoWithSoundGoWithIt) {
    const URL url = URL::fileURLWithPath(testClip({.frames = 6, .sound = tests::ClipSound::Tone}));
    ASSERT_THAT(LiveElements::names(), IsEmpty());
    playAndDrop(url);
    QueueDriver queue(QueueDriver::Time::Real);
    queue.runUntil([&] { // a pipeline ends on a thread of its own
        queue.lookAgainIn(fromSeconds(0.05));
        return LiveElements::names().empty();
    });
    EXPECT_THAT(LiveElements::names(), IsEmpty());
}
