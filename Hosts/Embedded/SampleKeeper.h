#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeSource.h"

#include <memory>
#include <optional>

/// Keeps attitude samples coming while somebody uses the picture.
///
/// While the device steers, only samples have the picture drawn, also when it is a finger that
/// turns it. From a source that has gone quiet this repeats the last sample once a frame: while a
/// finger is down, and for 3 s after the last touch or turn of the device, by when what a finger
/// set going has come to rest. Then it rests itself. Nothing is repeated while the source is
/// unavailable, has no sample yet or nobody listens to it.
///
/// Thread: main.
class ZANTO_EXPORT SampleKeeper {
public:
    /// Something was touched; whether any finger is down now.
    void noteTouch(bool isAnyDown);
    /// The device was turned.
    void noteTurn();

private:
    struct Beat {};

    void wake();
    void beat();
    void beatAtNextFrame();
    [[nodiscard]] static bool hasListener();

    bool isTouched_ = false;
    platform::Instant end_{0};
    std::optional<platform::Attitude> seen_; // at the frame before
    std::shared_ptr<Beat> beating_;          // while a block waits for the next frame
};
