#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/Touch.h"

#include <SDL.h>

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

/// Makes raw touches of fingers on a touch screen and of the left mouse button.
///
/// A finger's id is the least above 0 that no other finger has; the mouse's is 0.
///
/// Thread: main. The receiver is called inside, and may call back.
class SDLTouches {
public:
    using Receiver = std::function<void(const platform::TouchEvent&)>;
    explicit SDLTouches(Receiver receiver) : receiver_(std::move(receiver)) {}

    /// Whoever uses this class sees both mouse and fingers; neither should come as the other too.
    static void setHints();

    void take(const SDL_MouseButtonEvent& event, platform::Instant time);
    void take(const SDL_MouseMotionEvent& event, platform::Instant time);
    /// SDL counts a finger's place in windows.
    void take(const SDL_TouchFingerEvent& event, platform::Size window, platform::Instant time);

    /// A Cancel for the mouse's touch, and for every touch.
    void cancelMouse(platform::Instant time);
    void cancelAll(platform::Instant time);
    [[nodiscard]] bool isAnyDown() const { return !places_.empty(); }

private:
    using Finger = std::pair<SDL_TouchID, SDL_FingerID>; // an id is unique on its device only

    void down(std::int64_t id, platform::Point location, platform::Instant time);
    void move(std::int64_t id, platform::Point location, platform::Instant time);
    void lift(platform::TouchPhase phase, std::int64_t id, platform::Point location,
              platform::Instant time);
    void tell(platform::TouchPhase phase, std::int64_t id, platform::Point location,
              platform::Instant time) const;
    [[nodiscard]] std::int64_t idOf(const Finger& finger);

    Receiver receiver_;
    std::map<Finger, std::int64_t> ids_;
    std::map<std::int64_t, platform::Point> places_; // of what is down
};
