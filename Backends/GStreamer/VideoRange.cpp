#include "Backends/GStreamer/VideoRange.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>

namespace platform {
namespace {

using Table = std::array<std::uint8_t, 256>;

/// A table that scales samples around `middle`, so that 255 steps become `steps`, and adds `shift`.
Table squeezed(double steps, double middle, double shift) {
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<std::uint8_t>(
            std::lround(middle + shift + (static_cast<double>(i) - middle) * steps / 255.0));
    return table;
}

void apply(const Table& table, GstVideoFrame& frame, int plane) {
    const auto rowBytes = static_cast<std::size_t>(GST_VIDEO_FRAME_COMP_WIDTH(&frame, plane) *
                                                   GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, plane));
    auto* row = static_cast<std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane));
    for (int y = 0; y < GST_VIDEO_FRAME_COMP_HEIGHT(&frame, plane); ++y) {
        const std::span samples(row, rowBytes);
        std::transform(samples.begin(), samples.end(), samples.begin(),
                       [&table](std::uint8_t sample) { return table[sample]; });
        row += GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
    }
}

} // namespace

bool isFullRange(const GstCaps* caps) {
    // `gst_video_info_from_caps` ignores full range if no matrix is given, so the string is parsed
    // here.
    const gchar* const text =
        gst_structure_get_string(gst_caps_get_structure(caps, 0), "colorimetry");
    GstVideoColorimetry colours{};
    if (!text || !gst_video_colorimetry_from_string(&colours, text))
        return false;
    return colours.range == GST_VIDEO_COLOR_RANGE_0_255;
}

GstBuffer* inVideoRange(GstBuffer* buffer, const GstVideoInfo& info) {
    static const Table luma = squeezed(219, 0, 16);
    static const Table chroma = squeezed(224, 128, 0);
    GstBuffer* const own = gst_buffer_make_writable(buffer);
    GstVideoFrame frame;
    constexpr auto kReadWrite = static_cast<GstMapFlags>(GST_MAP_READ | GST_MAP_WRITE);
    if (!gst_video_frame_map(&frame, &info, own, kReadWrite))
        return own;
    apply(luma, frame, 0);
    apply(chroma, frame, 1);
    gst_video_frame_unmap(&frame);
    return own;
}

} // namespace platform
