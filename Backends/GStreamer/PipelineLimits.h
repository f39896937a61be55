#pragma once

#include <chrono>

namespace platform {

/// Timeouts of a pipeline.
struct PipelineLimits {
    /// The longest time without any activity while opening, seeking or buffering.
    std::chrono::milliseconds silence{30'000};
    /// The timeout of an HTTP request, and how often a request is repeated.
    std::chrono::seconds request{15};
    int retries = 1;
};

/// The limits of all pipelines opened from now on; `silence` applies to all waits that begin from
/// now on. Thread: main.
[[nodiscard]] PipelineLimits& pipelineLimits();

} // namespace platform
