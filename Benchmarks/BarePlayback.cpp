#include "Benchmarks/BarePlayback.h"

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <GLES2/gl2.h>
#include <gst/video/video.h>

#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace {

struct BufferRelease {
    void operator()(GstBuffer* buffer) const { gst_buffer_unref(buffer); }
};
using BufferPtr = std::unique_ptr<GstBuffer, BufferRelease>;

/// Hands frames from the streaming thread to the drawing thread; a new frame replaces one that was
/// not taken.
class Handover {
public:
    void put(GstBuffer* buffer) {
        {
            const std::scoped_lock lock(mutex_);
            newest_.reset(gst_buffer_ref(buffer));
        }
        changed_.notify_one();
    }
    void end() {
        {
            const std::scoped_lock lock(mutex_);
            hasEnded_ = true;
        }
        changed_.notify_one();
    }
    /// Blocks until there is a frame; null at the end of the stream.
    BufferPtr take() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return newest_ || hasEnded_; });
        return std::move(newest_);
    }

private:
    std::mutex mutex_; // guards the rest
    std::condition_variable changed_;
    BufferPtr newest_;
    bool hasEnded_ = false;
};

void onPicture(GstElement* /*sink*/, GstBuffer* buffer, GstPad* /*pad*/, gpointer handover) {
    static_cast<Handover*>(handover)->put(buffer);
}

GstBusSyncReply onMessage(GstBus* /*bus*/, GstMessage* message, gpointer handover) {
    const GstMessageType type = GST_MESSAGE_TYPE(message);
    if (type == GST_MESSAGE_EOS || type == GST_MESSAGE_ERROR)
        static_cast<Handover*>(handover)->end();
    gst_message_unref(message);
    return GST_BUS_DROP;
}

GstElement* makeSink(Handover& handover) {
    GError* error = nullptr;
    GstElement* const bin =
        gst_parse_bin_from_description("capsfilter caps=video/x-raw,format=NV12 ! fakesink "
                                       "name=end sync=true signal-handoffs=true",
                                       TRUE, &error);
    if (!bin)
        throw std::runtime_error("no sink for bare playback");
    const platform::GStreamerPtr<GstElement> end(gst_bin_get_by_name(GST_BIN(bin), "end"));
    g_signal_connect(end.get(), "handoff", G_CALLBACK(onPicture), &handover);
    return bin;
}

platform::GStreamerPtr<GstElement> makePlayer(const std::string& path, Handover& handover) {
    GstElement* const player = gst_element_factory_make("playbin3", nullptr);
    if (!player)
        throw std::runtime_error("no player for bare playback");
    platform::GStreamerPtr<GstElement> owned(static_cast<GstElement*>(gst_object_ref_sink(player)));
    const platform::GStreamerPtr<gchar> uri(gst_filename_to_uri(path.c_str(), nullptr));
    gst_util_set_object_arg(G_OBJECT(player), "flags", "video+audio+soft-volume+buffering");
    g_object_set(player, "uri", uri.get(), "video-sink", makeSink(handover), nullptr);
    const platform::GStreamerPtr<GstBus> bus(gst_element_get_bus(player));
    gst_bus_set_sync_handler(bus.get(), onMessage, &handover, nullptr);
    return owned;
}

/// Expects rows without padding, which frames of these sizes do not have.
void upload(const BareVideoQuad& quad, GstBuffer* buffer, platform::SizePx size) {
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_NV12, static_cast<guint>(size.width),
                              static_cast<guint>(size.height));
    GstVideoFrame frame;
    if (!gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ))
        throw std::runtime_error("a picture of bare playback cannot be read");
    const auto plane = [&](int index) {
        return platform::PixelBuffer::Plane{
            static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, index)),
            GST_VIDEO_FRAME_PLANE_STRIDE(&frame, index)};
    };
    if (plane(0).strideBytes != size.width || plane(1).strideBytes != size.width)
        throw std::runtime_error("pictures of bare playback have padded rows");
    quad.upload(*platform::PixelBuffer::wrap(size, plane(0), plane(1), nullptr));
    gst_video_frame_unmap(&frame);
}

} // namespace

int BarePlayback::play(const std::string& path, platform::SizePx size) {
    platform::startGStreamer();
    const BareVideoQuad quad(size);
    Handover handover;
    const auto player = makePlayer(path, handover);
    gst_element_set_state(player.get(), GST_STATE_PLAYING);
    int drawn = 0;
    while (const auto buffer = handover.take()) {
        upload(quad, buffer.get(), size);
        draw(quad);
        ++drawn;
    }
    gst_element_set_state(player.get(), GST_STATE_NULL);
    return drawn;
}

void BarePlayback::draw(const BareVideoQuad& quad) const {
    const platform::SizePx view = target_.size();
    glBindFramebuffer(GL_FRAMEBUFFER, target_.framebuffer());
    glViewport(0, 0, view.width, view.height);
    glDisable(GL_SCISSOR_TEST);
    // Roughly what a level view shows: 100 degrees horizontally, 70 vertically.
    quad.draw({0.36F, 0.3F, 0.64F, 0.7F});
    glFinish();
}
