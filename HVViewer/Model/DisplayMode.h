#pragma once

#include <cstdint>

/// Which scene is shown. The numbers are part of the interface.
enum class DisplayMode : std::uint64_t {
    Plane = 0,        ///< the picture, flat
    Sphere = 1,       ///< from inside the sphere
    LittlePlanet = 2, ///< the sphere from off its centre, looking down
    SideBySide = 3,   ///< the sphere twice, for head-mounted viewers
};
