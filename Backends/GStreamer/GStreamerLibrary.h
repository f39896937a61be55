#pragma once

#include <gst/gst.h>

#include <memory>
#include <type_traits>

namespace platform {

/// Initialises GStreamer once per process. This takes tens of milliseconds, and seconds the first
/// time ever on a machine, so do not call it on the main thread.
void startGStreamer();

/// Releases one reference of a GStreamer or GLib object.
struct GStreamerRelease {
    void operator()(gpointer object) const { g_object_unref(object); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GstEvent* event) const { gst_event_unref(event); }
    void operator()(GstIterator* iterator) const { gst_iterator_free(iterator); }
    void operator()(GstQuery* query) const { gst_query_unref(query); }
    void operator()(GstSample* sample) const { gst_sample_unref(sample); }
    void operator()(gchar* text) const { g_free(text); }
    void operator()(GError* error) const { g_error_free(error); }
};

/// Owns one reference.
template <class T>
using GStreamerPtr = std::unique_ptr<T, GStreamerRelease>;

} // namespace platform
