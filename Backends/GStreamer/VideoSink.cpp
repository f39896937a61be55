#include "Backends/GStreamer/VideoSink.h"

#include "Backends/GStreamer/VideoRange.h"

#include <gst/base/gstbasesink.h>
#include <gst/video/video.h>

#include <utility>

namespace platform {
namespace {

GStreamerPtr<GstElement> makeElement(const char* kind) {
    GstElement* const element = gst_element_factory_make(kind, nullptr);
    return GStreamerPtr<GstElement>(element ? static_cast<GstElement*>(gst_object_ref_sink(element))
                                            : nullptr);
}

Instant fromClockTime(GstClockTime time) {
    return Instant(static_cast<Instant::rep>(time));
}

} // namespace

VideoSink::VideoSink(MediaPacing pacing, std::function<void()> onPicture)
    : pacing_(pacing), onPicture_(std::move(onPicture)) {
    build();
    watchPads();
}

VideoSink::~VideoSink() {
    GstAppSinkCallbacks none{};
    gst_app_sink_set_callbacks(sink_.get(), &none, nullptr, nullptr);
}

void VideoSink::build() {
    converter_ = makeElement("videoconvert");
    auto sink = makeElement("appsink");
    const gboolean paced = pacing_ == MediaPacing::Machine ? TRUE : FALSE;
    // In machine-paced playback, a frame that was not taken is replaced by the next one, and QoS
    // events make a slow decoder skip frames; otherwise video would fall further and further behind
    // the sound. In host-paced playback, a full sink blocks the decoder.
    const GStreamerPtr<GstCaps> caps(
        gst_caps_new_simple("video/x-raw", "format", G_TYPE_STRING, "NV12", nullptr));
    g_object_set(sink.get(), "caps", caps.get(), "sync", paced, "drop", paced, "qos", paced,
                 "max-buffers", 3U, "wait-on-eos", FALSE, "enable-last-sample", FALSE, nullptr);
    bin_ = gst_bin_new(nullptr);
    gst_bin_add_many(GST_BIN(bin_), converter_.get(), sink.get(), nullptr);
    gst_element_link(converter_.get(), sink.get());
    sink_.reset(GST_APP_SINK(sink.release()));
    GstAppSinkCallbacks callbacks{};
    callbacks.eos = onEnd;
    callbacks.new_sample = onSample;
    gst_app_sink_set_callbacks(sink_.get(), &callbacks, this, nullptr);
}

void VideoSink::watchPads() {
    const GStreamerPtr<GstPad> in(gst_element_get_static_pad(converter_.get(), "sink"));
    gst_element_add_pad(bin_, gst_ghost_pad_new("sink", in.get()));
    gst_pad_add_probe(in.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, onCaps, this, nullptr);
    const GStreamerPtr<GstPad> end(gst_element_get_static_pad(GST_ELEMENT(sink_.get()), "sink"));
    gst_pad_add_probe(end.get(), GST_PAD_PROBE_TYPE_BUFFER, onBuffer, this, nullptr);
    gst_pad_add_probe(end.get(), GST_PAD_PROBE_TYPE_EVENT_FLUSH, onFlush, this, nullptr);
    gst_pad_add_probe(end.get(), GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, onAllocation, this, nullptr);
}

GStreamerPtr<GstAppSink> VideoSink::newSinkReference() const {
    return GStreamerPtr<GstAppSink>(GST_APP_SINK(gst_object_ref(sink_.get())));
}

GstPadProbeReturn VideoSink::onCaps(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer self) {
    GstEvent* const event = gst_pad_probe_info_get_event(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_CAPS)
        return GST_PAD_PROBE_OK;
    GstCaps* caps = nullptr;
    gst_event_parse_caps(event, &caps);
    GstVideoInfo video;
    const bool isKnown = gst_video_info_from_caps(&video, caps) != FALSE;
    static_cast<VideoSink*>(self)->isFullRange_ =
        isKnown && GST_VIDEO_INFO_IS_YUV(&video) && isFullRange(caps);
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn VideoSink::onBuffer(GstPad* pad, GstPadProbeInfo* info, gpointer self) {
    if (!static_cast<VideoSink*>(self)->isFullRange_)
        return GST_PAD_PROBE_OK;
    const GStreamerPtr<GstCaps> caps(gst_pad_get_current_caps(pad));
    GstVideoInfo video;
    if (caps && gst_video_info_from_caps(&video, caps.get()))
        GST_PAD_PROBE_INFO_DATA(info) = inVideoRange(gst_pad_probe_info_get_buffer(info), video);
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn VideoSink::onFlush(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer self) {
    if (GST_EVENT_TYPE(gst_pad_probe_info_get_event(info)) == GST_EVENT_FLUSH_STOP)
        ++static_cast<VideoSink*>(self)->flushes_;
    return GST_PAD_PROBE_OK;
}

/// Declares support for padded rows; otherwise a decoder that pads its rows copies each frame
/// first.
GstPadProbeReturn VideoSink::onAllocation(GstPad* /*pad*/, GstPadProbeInfo* info,
                                          gpointer /*self*/) {
    GstQuery* const query = gst_pad_probe_info_get_query(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION)
        return GST_PAD_PROBE_OK;
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return GST_PAD_PROBE_HANDLED;
}

GstFlowReturn VideoSink::onSample(GstAppSink* /*sink*/, gpointer self) {
    auto* const video = static_cast<VideoSink*>(self);
    if (video->pacing_ == MediaPacing::Machine)
        video->readClock();
    video->onPicture_();
    return GST_FLOW_OK;
}

void VideoSink::onEnd(GstAppSink* /*sink*/, gpointer self) {
    static_cast<VideoSink*>(self)->onPicture_();
}

/// Reads the pipeline's clock. A synchronised sink delivers a frame when it is due, so the clock is
/// read here, on the streaming thread, where no lock of the pipeline can block the caller.
void VideoSink::readClock() {
    GstElement* const element = GST_ELEMENT(sink_.get());
    const GStreamerPtr<GstClock> clock(gst_element_get_clock(element));
    if (!clock)
        return;
    const GstClockTime time = gst_clock_get_time(clock.get());
    const auto at = std::chrono::steady_clock::now();
    const GstClockTime base = gst_element_get_base_time(element);
    const GstSegment* const segment = &GST_BASE_SINK(element)->segment;
    if (time < base || segment->format != GST_FORMAT_TIME)
        return;
    const guint64 position =
        gst_segment_position_from_running_time(segment, GST_FORMAT_TIME, time - base);
    const guint64 shown = gst_segment_to_stream_time(segment, GST_FORMAT_TIME, position);
    if (!GST_CLOCK_TIME_IS_VALID(position) || !GST_CLOCK_TIME_IS_VALID(shown))
        return;
    const std::scoped_lock lock(mutex_);
    reading_ = ClockReading{at, fromClockTime(shown)};
}

std::optional<ClockReading> VideoSink::reading() const {
    const std::scoped_lock lock(mutex_);
    return reading_;
}

} // namespace platform
