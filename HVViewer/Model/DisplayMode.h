#pragma once

#include <cstdint>

/// The scene that is shown. The numeric values are part of the public interface.
enum class DisplayMode : std::uint64_t {
    Plane = 0,        ///< the flat image
    Sphere = 1,       ///< the sphere, seen from its inside
    LittlePlanet = 2, ///< the sphere, seen downward from a point off its centre
    SideBySide = 3,   ///< the sphere twice, for head-mounted viewers
};
