#pragma once

#include <gst/gst.h>

namespace platform {

/// Whether any streaming thread of the pipeline is running. It can happen that none is, and that
/// GStreamer has lost the error message on its way out of nested elements.
[[nodiscard]] bool isAtWork(GstElement* pipeline);

/// Whether the pipeline contains an element made by this factory.
[[nodiscard]] bool hasPart(GstElement* pipeline, const char* factory);

/// Sets the pipeline's `decodebin3` to PAUSED, so that it accepts data.
///
/// Workaround for GStreamer 1.22. Symptom: now and then, a video never opens and no error is
/// posted. Cause: a race. `playbin3` may start its source before its decoder; data that arrives at
/// an inactive pad makes the source stop without a message. Call this when the source is set up.
/// Remove once the minimum version starts the decoder first.
void startDecoder(GstElement* pipeline);

} // namespace platform
