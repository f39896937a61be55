#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

namespace platform {

/// A sink for sound: the machine's, or where it has none, one that only keeps time. It has a
/// volume, which the pipeline controls. A floating reference.
[[nodiscard]] GstElement* makeAudioOutput();

} // namespace platform
