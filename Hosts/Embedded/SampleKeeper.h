#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Motion/AttitudeSource.h"

#include <memory>
#include <optional>

namespace zanto {

/// Repeats attitude samples while the user interacts with the view.
///
/// While device motion is on, only attitude samples request frames, even when a finger rotates the
/// view. If the source stops sending, this class publishes the last sample again once per frame:
/// while a finger is down, and for 3 s after the last touch or rotation of the device, because a
/// coast has ended by then. Nothing is repeated if the source is unavailable, has no sample yet or
/// has no listener.
///
/// Thread: main.
class ZANTO_EXPORT SampleKeeper {
public:
    /// Records a touch event, and whether any finger is down after it.
    void noteTouch(bool isAnyDown);
    /// Records a rotation of the device.
    void noteTurn();

private:
    struct Beat {};

    void wake();
    void beat();
    void beatAtNextFrame();
    [[nodiscard]] static bool hasListener();

    bool isTouched_ = false;
    platform::Instant end_{0};
    std::optional<platform::Attitude> seen_; // in the previous frame
    std::shared_ptr<Beat> beating_;          // non-null while a block for the next frame is queued
};

} // namespace zanto
