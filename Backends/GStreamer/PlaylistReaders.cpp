#include "Backends/GStreamer/PlaylistReaders.h"

#include <chrono>
#include <thread>

namespace platform {
namespace {

using Readers = std::shared_ptr<PlaylistReaders>;

/// A pause longer than this means that a download is complete: the pieces of a segment follow each
/// other faster, and so does a short segment after its header.
constexpr std::chrono::milliseconds kQuiet{40};
/// The property that says how far ahead to download; only playlist demuxers have it.
constexpr const char* kAhead = "max-buffering-time";
/// With less than the duration of one frame, the demuxers would not resume before the next seek.
constexpr guint64 kHardlyAhead = GST_SECOND;

/// The probes on a demuxer's children hold weak references, so that they do not keep the demuxer
/// alive.
using ReadersOfPart = std::weak_ptr<PlaylistReaders>;

GstPadProbeReturn onPiece(GstPad* /*pad*/, GstPadProbeInfo* /*info*/, gpointer data) {
    if (const auto readers = static_cast<ReadersOfPart*>(data)->lock())
        readers->pieceCame();
    return GST_PAD_PROBE_OK;
}

/// Downloads pass through an element inside of the demuxer.
void watchPieces(GstElement* element, const Readers& readers) {
    const GStreamerPtr<GstPad> pad(gst_element_get_static_pad(element, "sink"));
    if (pad)
        gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_BUFFER, onPiece, new ReadersOfPart(readers),
                          [](gpointer data) { delete static_cast<ReadersOfPart*>(data); });
}

void onElementAdded(GstBin* /*pipeline*/, GstBin* bin, GstElement* element, gpointer data) {
    const Readers& readers = *static_cast<Readers*>(data);
    if (isPlaylistReader(element))
        readers->add(element);
    else if (isPlaylistReader(bin))
        watchPieces(element, readers);
}

void onElementRemoved(GstBin* /*pipeline*/, GstBin* /*bin*/, GstElement* element, gpointer data) {
    if (isPlaylistReader(element))
        (*static_cast<Readers*>(data))->remove(element);
}

void connect(GstElement* pipeline, const char* signal, GCallback callback, const Readers& readers) {
    g_signal_connect_data(
        pipeline, signal, callback, new Readers(readers),
        [](gpointer data, GClosure*) { delete static_cast<Readers*>(data); },
        static_cast<GConnectFlags>(0));
}

} // namespace

bool isPlaylistReader(gpointer object) {
    return g_object_class_find_property(G_OBJECT_GET_CLASS(object), kAhead) != nullptr;
}

std::shared_ptr<PlaylistReaders> PlaylistReaders::in(GstElement* pipeline) {
    auto readers = std::make_shared<PlaylistReaders>();
    connect(pipeline, "deep-element-added", G_CALLBACK(onElementAdded), readers);
    connect(pipeline, "deep-element-removed", G_CALLBACK(onElementRemoved), readers);
    return readers;
}

void PlaylistReaders::quieten() {
    // Limits the wait: a download that is slower than this will hardly complete right afterwards.
    constexpr int kMostLooks = 12;
    if (!hold())
        return;
    unsigned before = 0;
    int looks = 0;
    do {
        before = pieces_;
        std::this_thread::sleep_for(kQuiet);
    } while (pieces_ != before && ++looks < kMostLooks);
}

bool PlaylistReaders::hold() {
    const std::scoped_lock lock(mutex_);
    for (const Reader& reader : readers_)
        g_object_set(reader.element.get(), kAhead, kHardlyAhead, nullptr);
    return !readers_.empty();
}

void PlaylistReaders::goOn() {
    const std::scoped_lock lock(mutex_);
    for (const Reader& reader : readers_)
        g_object_set(reader.element.get(), kAhead, reader.ahead, nullptr);
}

void PlaylistReaders::add(GstElement* reader) {
    guint64 ahead = 0;
    g_object_get(reader, kAhead, &ahead, nullptr);
    const std::scoped_lock lock(mutex_);
    readers_.push_back({GStreamerPtr<GstElement>(GST_ELEMENT(gst_object_ref(reader))), ahead});
}

void PlaylistReaders::remove(GstElement* reader) {
    const std::scoped_lock lock(mutex_);
    readers_.remove_if([&](const Reader& known) { return known.element.get() == reader; });
}

void PlaylistReaders::pieceCame() {
    ++pieces_;
}

} // namespace platform
