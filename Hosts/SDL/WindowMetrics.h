#pragma once

#include "Platform/Foundation/Geometry.h"

/// How large a window is, in both units.
struct WindowMetrics {
    platform::Size points;
    platform::SizePx pixels;

    /// Pixels per point. Both sizes are whole numbers, so the two sides may disagree: the longer
    /// one is off by less.
    [[nodiscard]] constexpr double scale() const {
        const bool wide = points.width >= points.height;
        const double longer = wide ? points.width : points.height;
        const int longerPx = wide ? pixels.width : pixels.height;
        return longer > 0 && longerPx > 0 ? longerPx / longer : 1.0;
    }

    friend bool operator==(const WindowMetrics&, const WindowMetrics&) = default;
};
