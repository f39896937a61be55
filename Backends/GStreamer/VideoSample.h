#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"
#include "Platform/Media/MediaPipeline.h"

#include <optional>

namespace platform {

/// One frame from the sink.
struct VideoSample {
    MediaFrame frame;
    /// When the next frame is due, if the stream says so.
    std::optional<Instant> end;
    /// The display size, with square pixels.
    SizePx shownSize;
};

/// Wraps the sample's frame without copying it. Returns nullopt if the sample has no frame or no
/// time stamp.
///
/// Thread: any; thread-safe. The frame's memory may be released on any thread too.
[[nodiscard]] std::optional<VideoSample> videoSample(GStreamerPtr<GstSample> sample);

} // namespace platform
