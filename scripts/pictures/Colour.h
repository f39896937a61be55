#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace pictures {

/// A colour in linear light, so that blending and adding are physically correct.
struct Colour {
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
};

constexpr Colour operator+(const Colour& a, const Colour& b) {
    return {a.r + b.r, a.g + b.g, a.b + b.b};
}

constexpr Colour operator*(const Colour& colour, double factor) {
    return {colour.r * factor, colour.g * factor, colour.b * factor};
}

constexpr Colour mix(const Colour& from, const Colour& to, double share) {
    return from * (1.0 - share) + to * share;
}

/// Converts an sRGB colour 0xRRGGBB to linear light.
inline Colour srgb(std::uint32_t code) {
    const auto channel = [code](unsigned shift) {
        const double value = ((code >> shift) & 0xFFu) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return {channel(16), channel(8), channel(0)};
}

/// Converts to sRGB, from 0 to 255 and not yet rounded; light brighter than white rolls off softly.
inline double encodeChannel(double light) {
    constexpr double kKnee = 0.75;
    constexpr double kRoom = 1.0 - kKnee;
    const double rolled =
        light <= kKnee ? light : kKnee + kRoom * (1.0 - std::exp(-(light - kKnee) / kRoom));
    const double value = std::clamp(rolled, 0.0, 1.0);
    return 255.0 *
           (value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1.0 / 2.4) - 0.055);
}

} // namespace pictures
