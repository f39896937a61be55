#pragma once

#include <gst/video/video.h>

namespace platform {

/// Whether samples use the full range 0 to 255, rather than 16 to 235 (luma) and 16 to 240
/// (chroma).
[[nodiscard]] bool isFullRange(const GstCaps* caps);

/// Converts NV12 samples from full range to video range. GStreamer's converter does so only when it
/// also converts to another matrix.
///
/// Owner:  consumes the reference and returns one; a shared buffer is copied.
[[nodiscard]] GstBuffer* inVideoRange(GstBuffer* buffer, const GstVideoInfo& info);

} // namespace platform
