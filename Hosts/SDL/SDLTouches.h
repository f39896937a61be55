#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <SDL.h>

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace zanto {

/// Converts SDL events of the touch screen and the left mouse button to touches.
///
/// The id of a finger is the lowest number above 0 that no other finger has; the mouse has 0. The
/// receiver is called inside of the functions below and may call them.
///
/// Thread: main.
class SDLTouches {
public:
    using Receiver = std::function<void(const platform::TouchEvent&)>;
    explicit SDLTouches(Receiver receiver) : receiver_(std::move(receiver)) {}

    /// Stops SDL from reporting each mouse event as a touch and each touch as a mouse event, too,
    /// because users of this class handle both kinds.
    static void setHints();

    void take(const SDL_MouseButtonEvent& event, platform::Instant time);
    void take(const SDL_MouseMotionEvent& event, platform::Instant time);
    /// SDL reports the position of a finger as a fraction of the window.
    void take(const SDL_TouchFingerEvent& event, platform::Size window, platform::Instant time);

    /// Cancels the touch of the mouse, or all touches.
    void cancelMouse(platform::Instant time);
    void cancelAll(platform::Instant time);
    [[nodiscard]] bool isAnyDown() const { return !places_.empty(); }

private:
    using Finger = std::pair<SDL_TouchID, SDL_FingerID>; // an id is unique only on its device

    void down(std::int64_t id, platform::Point location, platform::Instant time);
    void move(std::int64_t id, platform::Point location, platform::Instant time);
    void lift(platform::TouchPhase phase, std::int64_t id, platform::Point location,
              platform::Instant time);
    void tell(platform::TouchPhase phase, std::int64_t id, platform::Point location,
              platform::Instant time) const;
    [[nodiscard]] std::int64_t idOf(const Finger& finger);

    Receiver receiver_;
    std::map<Finger, std::int64_t> ids_;
    std::map<std::int64_t, platform::Point> places_; // of fingers and mouse buttons that are down
};

} // namespace zanto
