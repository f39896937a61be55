#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Interface/Touch.h"

namespace zanto {
class SDLHost;
} // namespace zanto

/// Turns the camera for the arrow keys: simulates a short mouse drag, so that everything that a
/// drag does or does not do in a display mode applies here too.
///
/// Owner:  the host must outlive it. Made with `platform::make`. Thread: main.
class KeyLook : public platform::Object {
public:
    explicit KeyLook(zanto::SDLHost& host) : host_(host) {}

    /// `direction` is one of the four unit vectors, y down. A call during a running drag prolongs
    /// it in the new direction.
    void look(platform::Point direction);

private:
    void step();
    void send(platform::TouchPhase phase);

    zanto::SDLHost& host_;
    platform::Point direction_;
    platform::Point finger_;
    int stepsToGo_ = 0;
};
