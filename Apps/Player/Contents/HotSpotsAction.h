#pragma once

#include "Platform/Foundation/Geometry.h"

#include <cstdint>
#include <string>
#include <vector>

/// A marker with the attributes of `ZNTHotSpot`.
struct HotSpot {
    std::string name;
    /// A file path.
    std::string image;
    float vertical = 0;
    float horizontal = 0;
    float scale = 1;
    float x = 1;
    float y = 1;
};
/// Replaces all hot spots by these.
struct HotSpotsAction {
    std::vector<HotSpot> hotSpots;
    /// In fractions of the screen.
    platform::Point pickingPoint{0.5, 0.5};
    std::int64_t rejectRate = 1;
};
