#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

namespace platform {

/// Keeps the end of a stream back until the streams beside it have begun to flow.
///
/// `decodebin3` of GStreamer 1.22 lets streams go on their way when each has brought its first
/// buffer. One that is over by then, as a short sound beside a picture may be, it forgets, but not
/// all of it: the next seek or the closing falls over what is left.
///
/// Owner:  the pipeline. Before it is set going.
void holdEarlyEnds(GstElement* pipeline);

} // namespace platform
