#include "Backends/GStreamer/BusMessages.h"

#include "Backends/GStreamer/PlaylistReaders.h"

#include <gst/pbutils/missing-plugins.h>

#include <string_view>

namespace platform {
namespace {

/// Whether the playlist demuxer reports missing segments although none is missing. The error
/// carries the HTTP status of the last segment, so a 2xx status gives the fault away; see
/// `BusListener::overtookItself`.
bool missesNothing(GstMessage* message, const GError& error) {
    const GstStructure* details = nullptr;
    gst_message_parse_error_details(message, &details);
    guint status = 0;
    return g_error_matches(&error, GST_RESOURCE_ERROR, GST_RESOURCE_ERROR_NOT_FOUND) != FALSE &&
           isPlaylistReader(GST_MESSAGE_SRC(message)) && details != nullptr &&
           gst_structure_get_uint(details, "http-status-code", &status) != FALSE &&
           status / 100 == 2;
}

void passError(GstMessage* message, BusListener& listener) {
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    const GStreamerPtr<GError> owned(error);
    if (missesNothing(message, *owned))
        listener.overtookItself(*owned);
    else
        listener.failed(*owned);
}

/// The media type, such as "video/x-h264"; empty if the caps are empty.
std::string_view kindOf(const GstCaps* caps) {
    if (gst_caps_get_size(caps) == 0)
        return {};
    return gst_structure_get_name(gst_caps_get_structure(caps, 0));
}

void passStreams(GstMessage* message, BusListener& listener) {
    GstStreamCollection* found = nullptr;
    gst_message_parse_stream_collection(message, &found);
    const GStreamerPtr<GstStreamCollection> owned(found);
    if (!owned)
        return;
    bool hasSound = false;
    bool hasVideo = false;
    bool isStill = false;
    for (guint i = 0; i < gst_stream_collection_get_size(found); ++i) {
        GstStream* const stream = gst_stream_collection_get_stream(found, i);
        const GstStreamType type = gst_stream_get_stream_type(stream);
        hasSound |= (type & GST_STREAM_TYPE_AUDIO) != 0;
        hasVideo |= (type & GST_STREAM_TYPE_VIDEO) != 0;
        const GStreamerPtr<GstCaps> caps(gst_stream_get_caps(stream));
        isStill |= caps && kindOf(caps.get()).starts_with("image/");
    }
    if (hasSound || hasVideo)
        listener.foundStreams(hasSound, hasVideo, isStill);
}

gboolean isPartsHeader(GQuark field, const GValue* value, gpointer found) {
    const bool named = g_ascii_strcasecmp(g_quark_to_string(field), "accept-ranges") == 0;
    if (named && G_VALUE_HOLDS_STRING(value) &&
        g_ascii_strcasecmp(g_value_get_string(value), "bytes") == 0)
        *static_cast<bool*>(found) = true;
    return TRUE;
}

void passAnswer(const GstStructure* headers, BusListener& listener) {
    constexpr guint kPartialContent = 206;
    guint status = 0;
    gst_structure_get_uint(headers, "http-status-code", &status);
    bool handsOutParts = status == kPartialContent;
    const GValue* const answer = gst_structure_get_value(headers, "response-headers");
    if (answer && GST_VALUE_HOLDS_STRUCTURE(answer))
        gst_structure_foreach(gst_value_get_structure(answer), isPartsHeader, &handsOutParts);
    listener.answered(static_cast<int>(status), handsOutParts);
}

/// Whether the missing decoder is one for video. GStreamer also recognises texts and web pages and
/// looks for decoders for them, and a film may lack a decoder for its sound only.
bool isOfPictures(const GstStructure* missing) {
    const GValue* const detail = gst_structure_get_value(missing, "detail");
    if (!detail || !GST_VALUE_HOLDS_CAPS(detail))
        return true;
    const std::string_view kind = kindOf(gst_value_get_caps(detail));
    return !kind.starts_with("text/") && !kind.starts_with("audio/");
}

void passElementMessage(GstMessage* message, BusListener& listener) {
    if (gst_is_missing_plugin_message(message)) {
        if (!isOfPictures(gst_message_get_structure(message)))
            return;
        const GStreamerPtr<gchar> text(gst_missing_plugin_message_get_description(message));
        listener.missesDecoder(text ? text.get() : "");
    } else if (gst_message_has_name(message, "http-headers")) {
        passAnswer(gst_message_get_structure(message), listener);
    }
}

void passStateChange(GstMessage* message, GstElement* pipeline, BusListener& listener) {
    GstState now = GST_STATE_VOID_PENDING;
    gst_message_parse_state_changed(message, nullptr, &now, nullptr);
    if (GST_MESSAGE_SRC(message) == GST_OBJECT(pipeline) && now == GST_STATE_PLAYING)
        listener.isPlaying();
}

void passBuffering(GstMessage* message, BusListener& listener) {
    gint percent = 0;
    gst_message_parse_buffering(message, &percent);
    listener.buffered(percent);
}

void pass(GstMessage* message, GstElement* pipeline, BusListener& listener) {
    listener.sawLife();
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ERROR:
        return passError(message, listener);
    case GST_MESSAGE_ASYNC_DONE:
        return listener.didPreroll();
    case GST_MESSAGE_STATE_CHANGED:
        return passStateChange(message, pipeline, listener);
    case GST_MESSAGE_EOS:
        return listener.streamsEnded();
    case GST_MESSAGE_BUFFERING:
        return passBuffering(message, listener);
    case GST_MESSAGE_DURATION_CHANGED:
        return listener.durationChanged();
    case GST_MESSAGE_STREAM_COLLECTION:
        return passStreams(message, listener);
    case GST_MESSAGE_ELEMENT:
        return passElementMessage(message, listener);
    default:
        return;
    }
}

struct Listening {
    GstElement* pipeline;
    BusListener* listener;
};

GstBusSyncReply onMessage(GstBus* /*bus*/, GstMessage* message, gpointer data) {
    const auto* const listening = static_cast<const Listening*>(data);
    pass(message, listening->pipeline, *listening->listener);
    gst_message_unref(message);
    return GST_BUS_DROP;
}

} // namespace

void listenToBus(GstElement* pipeline, BusListener& listener) {
    const GStreamerPtr<GstBus> bus(gst_element_get_bus(pipeline));
    gst_bus_set_sync_handler(bus.get(), onMessage, new Listening{pipeline, &listener},
                             [](gpointer data) { delete static_cast<Listening*>(data); });
}

void stopListening(GstElement* pipeline) {
    const GStreamerPtr<GstBus> bus(gst_element_get_bus(pipeline));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
}

} // namespace platform
