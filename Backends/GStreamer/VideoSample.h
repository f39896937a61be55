#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"
#include "Platform/Media/MediaPipeline.h"

#include <optional>

namespace platform {

/// One picture as the sink gives it.
struct VideoSample {
    MediaFrame frame;
    /// When the next one is due, if the stream says so.
    std::optional<Instant> end;
    /// With square pixels, as the picture is to be shown.
    SizePx shownSize;
};

/// Takes the sample's picture without copying it. None where it holds none, or no time.
///
/// Thread: any; so is the end of the picture's memory.
[[nodiscard]] std::optional<VideoSample> videoSample(GStreamerPtr<GstSample> sample);

} // namespace platform
