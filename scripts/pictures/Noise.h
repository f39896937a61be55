#pragma once

#include "Sphere.h"

#include <cmath>
#include <cstdint>

/// Three-dimensional noise. Sampled along directions or in the ground plane, it has no seam and no
/// pole, unlike noise over rows and columns.
namespace pictures {

constexpr std::uint32_t hash(std::uint32_t value) {
    value = (value ^ (value >> 16u)) * 0x7FEB352Du;
    value = (value ^ (value >> 15u)) * 0x846CA68Bu;
    return value ^ (value >> 16u);
}

/// The noise's gradient at a lattice point, dotted with the offset from that point.
inline double latticeSlope(int x, int y, int z, const Vec3& way) {
    const std::uint32_t code = hash(
        static_cast<std::uint32_t>(x) * 0x9E3779B1u ^
        hash(static_cast<std::uint32_t>(y) * 0x85EBCA77u ^ hash(static_cast<std::uint32_t>(z))));
    const auto component = [code](unsigned shift) {
        return ((code >> shift) & 0x3FFu) / 511.5 - 1.0;
    };
    return component(0) * way.x + component(10) * way.y + component(20) * way.z;
}

/// Smooth gradient noise, about -1 to 1 and 0 on average, with features one unit in size.
inline double noise(const Vec3& at) {
    const Vec3 floor{std::floor(at.x), std::floor(at.y), std::floor(at.z)};
    const Vec3 part = at + floor * -1.0;
    const auto fade = [](double t) { return t * t * t * (t * (t * 6.0 - 15.0) + 10.0); };
    const auto corner = [&](int dx, int dy, int dz) {
        return latticeSlope(static_cast<int>(floor.x) + dx, static_cast<int>(floor.y) + dy,
                            static_cast<int>(floor.z) + dz,
                            {part.x - dx, part.y - dy, part.z - dz});
    };
    const double u = fade(part.x);
    const double v = fade(part.y);
    const double w = fade(part.z);
    const double bottom = std::lerp(std::lerp(corner(0, 0, 0), corner(1, 0, 0), u),
                                    std::lerp(corner(0, 1, 0), corner(1, 1, 0), u), v);
    const double top = std::lerp(std::lerp(corner(0, 0, 1), corner(1, 0, 1), u),
                                 std::lerp(corner(0, 1, 1), corner(1, 1, 1), u), v);
    return 1.3 * std::lerp(bottom, top, w);
}

/// Noise with `octaves` of increasingly fine detail. Detail finer than `footprint`, the size of a
/// pixel in the units of `at`, is faded out, because it would alias.
inline double fractalNoise(const Vec3& at, int octaves, double footprint = 0.0) {
    double sum = 0.0;
    double amplitude = 1.0;
    double frequency = 1.0;
    for (int octave = 0; octave < octaves; ++octave) {
        const double strength = 1.0 - smoothStep(0.2, 0.6, footprint * frequency);
        if (strength > 0.0) {
            const Vec3 offset{17.3 * octave, 5.9 * octave, 11.1 * octave};
            sum += amplitude * strength * noise(at * frequency + offset);
        }
        amplitude *= 0.5;
        frequency *= 2.03;
    }
    return sum;
}

/// Sharp crests with slopes on both sides, from 0 to about 1.
inline double ridgedNoise(const Vec3& at, int octaves) {
    double sum = 0.0;
    double amplitude = 0.5;
    double frequency = 1.0;
    for (int octave = 0; octave < octaves; ++octave) {
        const double crest = 1.0 - std::abs(noise(at * frequency + Vec3{3.7 * octave, 0.0, 0.0}));
        sum += amplitude * crest * crest;
        amplitude *= 0.5;
        frequency *= 2.1;
    }
    return sum;
}

} // namespace pictures
