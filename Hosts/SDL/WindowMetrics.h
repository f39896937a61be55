#pragma once

#include "Platform/Foundation/Geometry.h"

namespace zanto {

/// The size of a window in points and in pixels.
struct WindowMetrics {
    platform::Size points;
    platform::SizePx pixels;

    /// Pixels per point. Both sizes are integers, so the two axes may give different results. The
    /// longer one is more accurate.
    [[nodiscard]] constexpr double scale() const {
        const bool wide = points.width >= points.height;
        const double longer = wide ? points.width : points.height;
        const int longerPx = wide ? pixels.width : pixels.height;
        return longer > 0 && longerPx > 0 ? longerPx / longer : 1.0;
    }

    friend bool operator==(const WindowMetrics&, const WindowMetrics&) = default;
};

} // namespace zanto
