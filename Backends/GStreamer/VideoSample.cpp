#include "Backends/GStreamer/VideoSample.h"

#include <gst/video/video.h>

#include <memory>
#include <utility>

namespace platform {
namespace {

/// A buffer mapped for reading; the map holds a reference to it.
class MappedFrame {
public:
    MappedFrame(const GstVideoInfo& info, GstBuffer* buffer) {
        mapped_ = gst_video_frame_map(&frame_, &info, buffer, GST_MAP_READ) != FALSE;
    }
    ~MappedFrame() {
        if (mapped_)
            gst_video_frame_unmap(&frame_);
    }
    MappedFrame(const MappedFrame&) = delete;
    MappedFrame& operator=(const MappedFrame&) = delete;

    [[nodiscard]] bool isMapped() const { return mapped_; }
    [[nodiscard]] PixelBuffer::Plane plane(int index) const {
        return {static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame_, index)),
                GST_VIDEO_FRAME_PLANE_STRIDE(&frame_, index)};
    }

private:
    GstVideoFrame frame_{};
    bool mapped_ = false;
};

SizePx shownSize(const GstVideoInfo& info) {
    const auto width =
        gst_util_uint64_scale_int_round(static_cast<guint64>(info.width), info.par_n, info.par_d);
    return {static_cast<int>(width), info.height};
}

/// Converts a time stamp to stream time, which does not depend on where the container's time stamps
/// start.
std::optional<Instant> streamTime(const GstSegment* segment, GstClockTime time) {
    if (!GST_CLOCK_TIME_IS_VALID(time))
        return std::nullopt;
    guint64 magnitude = 0;
    const int sign = gst_segment_to_stream_time_full(segment, GST_FORMAT_TIME, time, &magnitude);
    if (sign == 0)
        return std::nullopt;
    return Instant(static_cast<Instant::rep>(magnitude)) * sign;
}

std::optional<Instant> duration(const GstBuffer* buffer, const GstVideoInfo& info) {
    if (GST_BUFFER_DURATION_IS_VALID(buffer))
        return Instant(static_cast<Instant::rep>(GST_BUFFER_DURATION(buffer)));
    if (info.fps_n <= 0)
        return std::nullopt;
    return Instant(
        static_cast<Instant::rep>(gst_util_uint64_scale_int(GST_SECOND, info.fps_d, info.fps_n)));
}

} // namespace

std::optional<VideoSample> videoSample(GStreamerPtr<GstSample> sample) {
    GstBuffer* const buffer = gst_sample_get_buffer(sample.get());
    GstCaps* const caps = gst_sample_get_caps(sample.get());
    GstVideoInfo info;
    if (!buffer || !caps || !gst_video_info_from_caps(&info, caps))
        return std::nullopt;
    const auto time = streamTime(gst_sample_get_segment(sample.get()), GST_BUFFER_PTS(buffer));
    const auto memory = std::make_shared<const MappedFrame>(info, buffer);
    if (!time || !memory->isMapped())
        return std::nullopt;
    VideoSample result{{*time, PixelBuffer::wrap({info.width, info.height}, memory->plane(0),
                                                 memory->plane(1), memory)},
                       std::nullopt,
                       shownSize(info)};
    if (const auto length = duration(buffer, info))
        result.end = *time + *length;
    return result;
}

} // namespace platform
