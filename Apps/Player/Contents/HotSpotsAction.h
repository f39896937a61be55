#pragma once

#include "Platform/Foundation/Geometry.h"

#include <cstdint>
#include <string>
#include <vector>

/// A marker, as `ZNTHotSpot` has it.
struct HotSpot {
    std::string name;
    /// A file.
    std::string image;
    float vertical = 0;
    float horizontal = 0;
    float scale = 1;
    float x = 1;
    float y = 1;
};
/// These hot spots and no others.
struct HotSpotsAction {
    std::vector<HotSpot> hotSpots;
    /// Fractions of the screen.
    platform::Point pickingPoint{0.5, 0.5};
    std::int64_t rejectRate = 1;
};
