#pragma once

#include <gst/video/video.h>

namespace platform {

/// Whether the samples use all of their bits, rather than 16 to 235 and 240 of 8.
[[nodiscard]] bool isFullRange(const GstCaps* caps);

/// Squeezes NV12 samples of full range into video range. The library's converter does so only on
/// its way to another matrix.
///
/// Owner: takes the reference and gives one back; a buffer that others hold too is copied.
[[nodiscard]] GstBuffer* inVideoRange(GstBuffer* buffer, const GstVideoInfo& info);

} // namespace platform
