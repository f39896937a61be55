#pragma once

#include "Platform/Imaging/BlendMode.h"

#include <array>

/// The blend modes as their formulas have them, in double precision.

/// Red, green, blue, 0 to 1.
using Channels = std::array<double, 3>;

/// Straight alpha.
struct StraightColor {
    Channels channels;
    double alpha;
};

/// Colours times their alpha.
struct BlendResult {
    Channels premultiplied;
    double alpha;
};

[[nodiscard]] BlendResult blended(platform::BlendMode mode, const StraightColor& source,
                                  const StraightColor& destination);
