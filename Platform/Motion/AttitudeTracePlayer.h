#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeTrace.h"

#include <memory>

namespace platform {

/// Stands in for a sensor: publishes a trace into `AttitudeSource::shared()`.
///
/// Owner:  whoever plays it; its end stops it. The source keeps the last sample.
/// Thread: main.
class ZANTO_EXPORT AttitudeTracePlayer {
public:
    explicit AttitudeTracePlayer(AttitudeTrace trace);
    ~AttitudeTracePlayer();
    AttitudeTracePlayer(const AttitudeTracePlayer&) = delete;
    AttitudeTracePlayer& operator=(const AttitudeTracePlayer&) = delete;

    /// Says that attitudes are available, and from the next turn of the main queue on publishes
    /// each sample once its own time has passed since this call: what lies before the trace's zero
    /// at once. Of samples that are due together only the newest. Starting again plays from the
    /// beginning.
    void start();

private:
    class Run;
    std::shared_ptr<const AttitudeTrace> trace_;
    std::shared_ptr<Run> run_;
};

} // namespace platform
