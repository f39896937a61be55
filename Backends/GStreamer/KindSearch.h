#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <condition_variable>
#include <memory>
#include <mutex>

namespace platform {

/// Makes a pipeline safe to stop while its source detects the media type.
///
/// Workaround for GStreamer 1.22. Symptom: stopping a pipeline while it opens blocks forever.
/// Cause: a deadlock by lock inversion. When `typefind`, on its streaming thread, emits
/// `have-type`, the handler of `urisourcebin` locks that element's state. The worker that stops the
/// pipeline holds the same lock and joins that streaming thread. The workaround connects before
/// `urisourcebin`: `end`, called on the worker before the stop, waits until running handlers have
/// returned, for one second at most, and from then on `have-type` no longer reaches `urisourcebin`.
/// Remove once the minimum version is free of the deadlock.
///
/// Owner:  shared by the pipeline and the object that stops it.
/// Thread: any; thread-safe.
class KindSearch {
public:
    /// Installs the workaround. Call this before the pipeline is started.
    [[nodiscard]] static std::shared_ptr<KindSearch> in(GstElement* pipeline);

    /// Call this before the pipeline is stopped: later type detections are ignored.
    void end();

    // Called by the pipeline's signal handlers.
    /// Returns whether the detected type may be used; if so, `madeUse` must follow.
    [[nodiscard]] bool found();
    void madeUse();

private:
    std::mutex mutex_; // guards the rest
    std::condition_variable changed_;
    bool hasEnded_ = false;
    int inUse_ = 0;
};

} // namespace platform
