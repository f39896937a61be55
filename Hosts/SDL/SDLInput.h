#pragma once

#include "Hosts/Embedded/SampleKeeper.h"
#include "Hosts/Embedded/WheelPinch.h"
#include "Hosts/SDL/EmulatedDevice.h"
#include "Hosts/SDL/EventTimes.h"
#include "Hosts/SDL/SDLTouches.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <SDL.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <set>

namespace zanto {

class EmbeddedHost;

/// SDL functions that input depends on, replaceable in tests.
struct SDLFacts {
    std::function<std::uint32_t()> ticks = SDL_GetTicks;
    std::function<SDL_TouchDeviceType(SDL_TouchID)> touchDeviceType = SDL_GetTouchDeviceType;
};

/// Converts mouse, wheel, track pad and touch screen events of one window to touches and to
/// rotations of the emulated device.
///
/// Thread: main.
class SDLInput {
public:
    using TouchListener = std::function<void(const platform::TouchEvent&)>;
    using TouchFilter = std::function<bool(const platform::TouchEvent&)>;
    using PointerListener = std::function<void(std::optional<platform::Point>)>;

    /// Owner:  the host, which must outlive this object.
    SDLInput(EmbeddedHost& host, std::uint32_t windowId, SDLFacts facts = {});

    /// Sets the size of the window in points, initially and after the host has been resized.
    void setWindowSize(platform::Size size);
    /// Called for every touch just before the host receives it.
    void setTouchListener(TouchListener listener) { listener_ = std::move(listener); }
    /// See `SDLHost`.
    void setTouchFilter(TouchFilter filter) { filter_ = std::move(filter); }
    void setPointerListener(PointerListener listener) { pointerListener_ = std::move(listener); }
    [[nodiscard]] EmulatedDevice& emulatedDevice() { return device_; }
    void setEmulatesDevice(bool on);

    /// Handles input events of this window. All other events are ignored.
    void dispatch(const SDL_Event& event);
    /// All events that SDL had collected have been dispatched.
    void endPump() { times_.endPump(); }
    /// Delivers a touch event of the program, as if an input device had reported it.
    void deliver(const platform::TouchEvent& event);
    /// Cancels all touches.
    void cancelTouches();

private:
    void dispatchWindowEvent(const SDL_WindowEvent& event);
    void dispatchMotion(const SDL_MouseMotionEvent& event);
    void dispatchButton(const SDL_MouseButtonEvent& event);
    void dispatchFinger(const SDL_TouchFingerEvent& event);
    void dispatchWheel(const SDL_MouseWheelEvent& event);
    void dispatchGesture(const SDL_MultiGestureEvent& event);
    void zoom(double factor, std::uint32_t timestamp);
    void offer(const platform::TouchEvent& event);
    void tellPointer() const;
    [[nodiscard]] bool isOurs(std::uint32_t windowId) const { return windowId == windowId_; }
    [[nodiscard]] bool isTrackPad(SDL_TouchID device) const;
    [[nodiscard]] platform::Instant instantOf(std::uint32_t timestamp);

    EmbeddedHost& host_;
    std::uint32_t windowId_;
    SDLFacts facts_;
    platform::Size size_;
    std::optional<platform::Point> pointer_; // none until the pointer is seen
    EventTimes times_;
    TouchListener listener_;
    TouchFilter filter_;
    PointerListener pointerListener_;
    std::set<std::int64_t> taken_; // touches that the program owns until they end
    SampleKeeper keeper_;
    EmulatedDevice device_;
    SDLTouches touches_;
    WheelPinch wheel_;
};

} // namespace zanto
