#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <condition_variable>
#include <memory>
#include <mutex>

namespace platform {

/// How a pipeline's source finds out of what kind its bytes are, so that it can be stopped.
///
/// `urisourcebin` of GStreamer 1.22 locks its own state once it has found out. Whoever stops it
/// just then holds that lock and waits for the search to come to an end, for ever.
///
/// Owner:  the pipeline, and whoever stops it.
/// Thread: any.
class KindSearch {
public:
    /// Before the pipeline is set going.
    [[nodiscard]] static std::shared_ptr<KindSearch> in(GstElement* pipeline);

    /// Before the pipeline is stopped: from now on nothing is made of what is found.
    void end();

    // What the pipeline tells.
    /// Whether something may be made of it; then `madeUse` follows.
    [[nodiscard]] bool found();
    void madeUse();

private:
    std::mutex mutex_; // guards the rest
    std::condition_variable changed_;
    bool hasEnded_ = false;
    int inUse_ = 0;
};

} // namespace platform
