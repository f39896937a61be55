#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeTrace.h"

#include <memory>

namespace platform {

/// Emulates a sensor: publishes a trace to `AttitudeSource::shared()`.
///
/// Owner:  its creator; the destructor stops it. The source keeps the last sample.
/// Thread: main.
class ZANTO_EXPORT AttitudeTracePlayer {
public:
    explicit AttitudeTracePlayer(AttitudeTrace trace);
    ~AttitudeTracePlayer();
    AttitudeTracePlayer(const AttitudeTracePlayer&) = delete;
    AttitudeTracePlayer& operator=(const AttitudeTracePlayer&) = delete;

    /// Makes the source available. From the next loop iteration of the main queue on, publishes
    /// each sample once its time has passed since this call; samples before the trace's zero are
    /// due at once. Of samples that are due together only the newest is published. Another call
    /// starts again from the beginning.
    void start();

private:
    class Run;
    std::shared_ptr<const AttitudeTrace> trace_;
    std::shared_ptr<Run> run_;
};

} // namespace platform
