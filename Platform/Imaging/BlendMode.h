#pragma once

#include <cstdint>

namespace platform {

/// How what is drawn (S) meets what is there (D). The first sixteen mix their colours where both
/// are, and show the one that is alone elsewhere; Hue to Luminosity take what they are named after
/// from S and the rest from D.
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
    Clear = 16,           ///< nothing
    Copy = 17,            ///< S
    SourceIn = 18,        ///< S where D is
    SourceOut = 19,       ///< S where D is not
    SourceAtop = 20,      ///< S where D is, over D
    DestinationOver = 21, ///< D over S
    DestinationIn = 22,   ///< D where S is
    DestinationAtop = 23, ///< D where S is, over S
    XOR = 24,             ///< each where the other is not
    PlusDarker = 25,      ///< the sum of what both take from white
    PlusLighter = 26,     ///< the sum of both
};

} // namespace platform
