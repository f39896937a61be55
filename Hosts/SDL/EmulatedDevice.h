#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Motion/EmulatedAttitude.h"

#include <SDL.h>

/// A device that the right mouse button turns, as the process's source of attitudes: dragging to
/// the right looks to the right, by 90 degrees every 640 points, dragging up looks up.
///
/// Thread: main.
class EmulatedDevice {
public:
    ~EmulatedDevice() { setOn(false); }

    /// On, there is a source, and its first sample is out at once. Off, it is gone again unless it
    /// was there before. The device stays turned as it is.
    void setOn(bool on);
    [[nodiscard]] bool isOn() const { return isOn_; }

    /// Whether the device has turned.
    bool take(const SDL_MouseMotionEvent& event);
    void take(const SDL_MouseButtonEvent& event);
    /// The button is no longer held, as far as anybody knows.
    void letGo() { isHeld_ = false; }
    /// The interface may be held another way; does nothing while off.
    void publish() const;

private:
    platform::EmulatedAttitude attitude_;
    bool isOn_ = false;
    bool wasAvailable_ = false;
    bool isHeld_ = false;
    platform::Point place_; // of the pointer, while held
};
