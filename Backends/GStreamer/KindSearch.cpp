#include "Backends/GStreamer/KindSearch.h"

#include <chrono>
#include <string_view>

namespace platform {
namespace {

using Search = std::shared_ptr<KindSearch>;

constexpr const char* kFound = "have-type";

bool isMadeBy(gpointer element, std::string_view factory) {
    const GstElementFactory* const maker = gst_element_get_factory(GST_ELEMENT(element));
    return maker != nullptr && GST_OBJECT_NAME(maker) == factory;
}

void onFound(GstElement* finder, guint /*probability*/, GstCaps* /*kind*/, gpointer search) {
    if (!(*static_cast<Search*>(search))->found())
        g_signal_stop_emission_by_name(finder, kFound);
}

void onMadeUse(GstElement* /*finder*/, guint /*probability*/, GstCaps* /*kind*/, gpointer search) {
    (*static_cast<Search*>(search))->madeUse();
}

void connect(gpointer object, const char* signal, GCallback callback, const Search& search,
             GConnectFlags flags = static_cast<GConnectFlags>(0)) {
    g_signal_connect_data(
        object, signal, callback, new Search(search),
        [](gpointer data, GClosure*) { delete static_cast<Search*>(data); }, flags);
}

/// `typefind` is added to the bin before `urisourcebin` connects to its signal, so our handler runs
/// first and can stop the emission.
void onElementAdded(GstBin* /*pipeline*/, GstBin* bin, GstElement* element, gpointer data) {
    if (!isMadeBy(element, "typefind") || !isMadeBy(bin, "urisourcebin"))
        return;
    const Search& search = *static_cast<Search*>(data);
    connect(element, kFound, G_CALLBACK(onFound), search);
    connect(element, kFound, G_CALLBACK(onMadeUse), search, G_CONNECT_AFTER);
}

} // namespace

std::shared_ptr<KindSearch> KindSearch::in(GstElement* pipeline) {
    auto search = std::make_shared<KindSearch>();
    connect(pipeline, "deep-element-added", G_CALLBACK(onElementAdded), search);
    return search;
}

void KindSearch::end() {
    // Limits the wait, because the handler may itself be waiting for the pipeline.
    constexpr std::chrono::seconds kLongest{1};
    std::unique_lock lock(mutex_);
    hasEnded_ = true;
    changed_.wait_for(lock, kLongest, [this] { return inUse_ == 0; });
}

bool KindSearch::found() {
    const std::scoped_lock lock(mutex_);
    inUse_ += hasEnded_ ? 0 : 1;
    return !hasEnded_;
}

void KindSearch::madeUse() {
    const std::scoped_lock lock(mutex_);
    --inUse_;
    changed_.notify_all();
}

} // namespace platform
