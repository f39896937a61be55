#pragma once

#include <gst/gst.h>

namespace platform {

/// Whether any thread of the pipeline still does something. It happens that none does and that the
/// error has been lost on its way out of the pipeline's parts.
[[nodiscard]] bool isAtWork(GstElement* pipeline);

/// Whether an element of that kind is anywhere in it.
[[nodiscard]] bool hasPart(GstElement* pipeline, const char* factory);

/// Has the pipeline's decoder take data from now on. The source starts before it; what arrives too
/// early ends the stream for good, without a word.
void startDecoder(GstElement* pipeline);

} // namespace platform
