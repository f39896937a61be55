#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

namespace platform {

/// A sink for sound: the machine's, or where it has none, one that only keeps time. A floating
/// reference.
[[nodiscard]] GstElement* makeAudioOutput();

} // namespace platform
