#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Interface/Touch.h"

class SDLHost;

/// Looks around for somebody who has keys: drags the picture a little way, as a mouse would, so
/// that everything that a drag does and does not do in a mode holds here too.
///
/// Owner:  the host outlives it. Made with `platform::make`. Thread: main.
class KeyLook : public platform::Object {
public:
    explicit KeyLook(SDLHost& host) : host_(host) {}

    /// `direction`: of the look, one of the four unit steps, y down. While one goes on it is
    /// prolonged, or turned.
    void look(platform::Point direction);

private:
    void step();
    void send(platform::TouchPhase phase);

    SDLHost& host_;
    platform::Point direction_;
    platform::Point finger_;
    int stepsToGo_ = 0;
};
