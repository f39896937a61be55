#pragma once

#include <cstdint>

namespace platform {

/// How a drawn colour (S, the source) is combined with the existing colour (D, the destination).
/// The first sixteen modes mix the two where both are present, and show the only one elsewhere; Hue
/// to Luminosity use the component that they are named after from S and the others from D.
enum class BlendMode : std::int32_t {
    Normal = 0, ///< S over D
    Multiply = 1,
    Screen = 2,
    Overlay = 3,
    Darken = 4,
    Lighten = 5,
    ColorDodge = 6,
    ColorBurn = 7,
    SoftLight = 8,
    HardLight = 9,
    Difference = 10,
    Exclusion = 11,
    Hue = 12,
    Saturation = 13,
    Color = 14,
    Luminosity = 15,
    Clear = 16,           ///< transparent
    Copy = 17,            ///< S
    SourceIn = 18,        ///< S where D is present
    SourceOut = 19,       ///< S where D is absent
    SourceAtop = 20,      ///< S where D is present, over D
    DestinationOver = 21, ///< D over S
    DestinationIn = 22,   ///< D where S is present
    DestinationAtop = 23, ///< D where S is present, over S
    XOR = 24,             ///< each where the other is absent
    PlusDarker = 25,      ///< the inverse of the sum of both inverses
    PlusLighter = 26,     ///< the sum of both
};

} // namespace platform
