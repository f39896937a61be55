#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

namespace platform {

/// Delays the end of a stream until the streams beside it have data.
///
/// Workaround for GStreamer 1.22. Symptom: a crash (use after free) at the next seek or at closing,
/// for example for a film whose sound is much shorter than its video. Cause: `decodebin3` waits for
/// a first buffer on each of its inputs. If one input ends before the others have brought theirs,
/// it drops that input but keeps references to what it made for it. The workaround blocks the
/// streaming thread of the ending stream at its EOS event, for one second at most, until each of
/// the other streams has brought two buffers or has ended. Remove once the minimum version is free
/// of the fault.
///
/// Owner:  the pipeline. Call this before the pipeline is started.
void holdEarlyEnds(GstElement* pipeline);

} // namespace platform
