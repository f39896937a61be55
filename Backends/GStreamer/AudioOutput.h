#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

namespace platform {

/// Makes an audio sink: the system's, or, if there is none, a silent one that only synchronises to
/// the clock. It has a volume, which the pipeline controls. Returns a floating reference.
[[nodiscard]] GstElement* makeAudioOutput();

} // namespace platform
