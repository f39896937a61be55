#include "Backends/GStreamer/PipelineParts.h"

#include "Backends/GStreamer/GStreamerLibrary.h"

namespace platform {
namespace {

gboolean noteRunningTask(GstElement* /*element*/, GstPad* pad, gpointer found) {
    GST_OBJECT_LOCK(pad);
    GstTask* const task = GST_PAD_TASK(pad);
    const bool runs = task != nullptr && GST_TASK_STATE(task) == GST_TASK_STARTED;
    GST_OBJECT_UNLOCK(pad);
    *static_cast<bool*>(found) |= runs;
    return TRUE;
}

void noteRunningTasks(const GValue* element, gpointer found) {
    gst_element_foreach_pad(GST_ELEMENT(g_value_get_object(element)), noteRunningTask, found);
}

void startElement(const GValue* element, gpointer /*unused*/) {
    gst_element_set_state(GST_ELEMENT(g_value_get_object(element)), GST_STATE_PAUSED);
}

} // namespace

bool isAtWork(GstElement* pipeline) {
    bool found = false;
    const GStreamerPtr<GstIterator> parts(gst_bin_iterate_recurse(GST_BIN(pipeline)));
    // A pipeline whose elements change during the iteration is active.
    const GstIteratorResult end = gst_iterator_foreach(parts.get(), noteRunningTasks, &found);
    return found || end == GST_ITERATOR_RESYNC;
}

bool hasPart(GstElement* pipeline, const char* factory) {
    const GStreamerPtr<GstIterator> parts(
        gst_bin_iterate_all_by_element_factory_name(GST_BIN(pipeline), factory));
    GValue found = G_VALUE_INIT;
    const bool isThere = gst_iterator_next(parts.get(), &found) == GST_ITERATOR_OK;
    if (isThere)
        g_value_unset(&found);
    return isThere;
}

void startDecoder(GstElement* pipeline) {
    const GStreamerPtr<GstIterator> decoders(
        gst_bin_iterate_all_by_element_factory_name(GST_BIN(pipeline), "decodebin3"));
    gst_iterator_foreach(decoders.get(), startElement, nullptr);
}

} // namespace platform
