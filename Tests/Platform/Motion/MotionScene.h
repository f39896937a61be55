#pragma once

#include "Platform/Foundation/MainQueue.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Tests/Platform/Foundation/VirtualTime.h"

/// Virtual time and the process's attitude source, as a host that has just started has it.
struct MotionScene {
    MotionScene() { source.reset(); }
    ~MotionScene() { source.reset(); }
    MotionScene(const MotionScene&) = delete;
    MotionScene& operator=(const MotionScene&) = delete;

    /// One turn of the main queue, at the same instant.
    void turn() const { platform::MainQueue::main().runDue(); }

    VirtualTime time;
    platform::AttitudeSource& source = platform::AttitudeSource::shared();
};

/// Samples that differ; the source does not look into them.
inline constexpr platform::Attitude kFirst{1, 0, 0, 0};
inline constexpr platform::Attitude kSecond{0, 1, 0, 0};
inline constexpr platform::Attitude kThird{0, 0, 1, 0};
