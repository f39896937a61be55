#pragma once

#include <chrono>

namespace platform {

/// How long a pipeline waits for what may never come.
struct PipelineLimits {
    /// While it opens, seeks or waits for data: without any sign of life.
    std::chrono::milliseconds silence{30'000};
    /// Until a silent server is asked again, and how often that happens.
    std::chrono::seconds request{15};
    int retries = 1;
};

/// Those of every pipeline opened from now on, and for silence of every wait that begins from now
/// on. Thread: main.
[[nodiscard]] PipelineLimits& pipelineLimits();

} // namespace platform
