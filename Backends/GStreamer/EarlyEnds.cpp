#include "Backends/GStreamer/EarlyEnds.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <string_view>

namespace platform {
namespace {

using namespace std::chrono_literals;

/// The longest time that a stream without any data delays the others.
constexpr auto kLongest = 1s;
/// How often a waiting thread checks for a flush, which does not notify the condition variable.
constexpr auto kOften = 5ms;

/// The input streams of one decoder.
class Streams {
public:
    struct Stream {
        int buffers = 0;
        bool isOver = false;
    };

    Stream& add() {
        const std::scoped_lock lock(mutex_);
        return streams_.emplace_back();
    }

    void bufferCame(Stream& stream) {
        const std::scoped_lock lock(mutex_);
        if (++stream.buffers <= kFlowing)
            changed_.notify_all();
    }

    void isOver(Stream& stream) {
        const std::scoped_lock lock(mutex_);
        stream.isOver = true;
        changed_.notify_all();
    }

    /// Blocks until all streams have data, the pad is flushed, or `kLongest` has passed.
    void wait(GstPad* pad) {
        std::unique_lock lock(mutex_);
        const auto end = std::chrono::steady_clock::now() + kLongest;
        while (!allFlow() && GST_PAD_IS_FLUSHING(pad) == FALSE &&
               std::chrono::steady_clock::now() < end)
            changed_.wait_for(lock, kOften);
    }

private:
    /// The first buffer has passed through the decoder once the second one arrives.
    static constexpr int kFlowing = 2;

    [[nodiscard]] bool allFlow() const {
        return std::all_of(streams_.begin(), streams_.end(), [](const Stream& stream) {
            return stream.isOver || stream.buffers >= kFlowing;
        });
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::list<Stream> streams_;
};

/// The data of a pad's probe, freed together with the pad.
struct Watched {
    std::shared_ptr<Streams> streams;
    Streams::Stream& stream;

    ~Watched() { streams->isOver(stream); }
};

GstPadProbeReturn onData(GstPad* pad, GstPadProbeInfo* info, gpointer data) {
    auto& [streams, stream] = *static_cast<Watched*>(data);
    if ((GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) == 0) {
        streams->bufferCame(stream);
    } else if (GST_EVENT_TYPE(gst_pad_probe_info_get_event(info)) == GST_EVENT_EOS) {
        streams->isOver(stream);
        streams->wait(pad);
    }
    return GST_PAD_PROBE_OK;
}

void watch(GstPad* pad, const std::shared_ptr<Streams>& streams) {
    constexpr auto kKinds =
        static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM |
                                     GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_BUFFER_LIST);
    gst_pad_add_probe(pad, kKinds, onData, new Watched{streams, streams->add()},
                      [](gpointer data) { delete static_cast<Watched*>(data); });
}

void onPadAdded(GstElement* /*decoder*/, GstPad* pad, gpointer streams) {
    if (GST_PAD_IS_SINK(pad))
        watch(pad, *static_cast<std::shared_ptr<Streams>*>(streams));
}

void watchDecoder(GstElement* decoder) {
    auto streams = std::make_unique<std::shared_ptr<Streams>>(std::make_shared<Streams>());
    const GStreamerPtr<GstPad> first(gst_element_get_static_pad(decoder, "sink"));
    if (first)
        watch(first.get(), *streams);
    g_signal_connect_data(
        decoder, "pad-added", G_CALLBACK(onPadAdded), streams.release(),
        [](gpointer data, GClosure*) { delete static_cast<std::shared_ptr<Streams>*>(data); },
        static_cast<GConnectFlags>(0));
}

bool isDecoder(GstElement* element) {
    const GstElementFactory* const factory = gst_element_get_factory(element);
    return factory != nullptr && std::string_view(GST_OBJECT_NAME(factory)) == "decodebin3";
}

void onElementAdded(GstBin* /*pipeline*/, GstBin* /*bin*/, GstElement* element,
                    gpointer /*unused*/) {
    if (isDecoder(element))
        watchDecoder(element);
}

void watchIfDecoder(const GValue* element, gpointer /*unused*/) {
    watchDecoder(GST_ELEMENT(g_value_get_object(element)));
}

} // namespace

void holdEarlyEnds(GstElement* pipeline) {
    const GStreamerPtr<GstIterator> decoders(
        gst_bin_iterate_all_by_element_factory_name(GST_BIN(pipeline), "decodebin3"));
    gst_iterator_foreach(decoders.get(), watchIfDecoder, nullptr);
    g_signal_connect(pipeline, "deep-element-added", G_CALLBACK(onElementAdded), nullptr);
}

} // namespace platform
