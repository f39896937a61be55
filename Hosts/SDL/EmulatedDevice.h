#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Motion/EmulatedAttitude.h"

#include <SDL.h>

namespace zanto {

/// An emulated device that is rotated by dragging with the right mouse button. It publishes to the
/// environment's attitude source. Dragging to the right looks to the right, dragging up looks up,
/// 90 degrees per 640 points.
///
/// Thread: main.
class EmulatedDevice {
public:
    ~EmulatedDevice() { setOn(false); }

    /// Switching it on makes the source available and publishes the first sample at once. Switching
    /// it off makes the source unavailable again, unless it was available before. The rotation of
    /// the device is kept.
    void setOn(bool on);
    [[nodiscard]] bool isOn() const { return isOn_; }

    /// Returns whether the device was rotated.
    bool take(const SDL_MouseMotionEvent& event);
    void take(const SDL_MouseButtonEvent& event);
    /// Ends a drag, because the state of the button is no longer known.
    void letGo() { isHeld_ = false; }
    /// Publishes the attitude again, because the interface orientation may have changed. A no-op
    /// while off.
    void publish() const;

private:
    platform::EmulatedAttitude attitude_;
    bool isOn_ = false;
    bool wasAvailable_ = false;
    bool isHeld_ = false;
    platform::Point place_; // of the pointer, during a drag
};

} // namespace zanto
