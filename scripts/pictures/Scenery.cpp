#include "Scenery.h"

#include "Noise.h"

#include <array>

namespace pictures {
namespace {

constexpr Heading kSun{40.0, 25.0};

const Vec3& sunDirection() {
    static const Vec3 direction = directionOf(kSun);
    return direction;
}

/// The colour of the haze at the horizon, warmer below the sun.
Colour haze(const Vec3& direction) {
    static const Colour away = srgb(0xCFDDE6);
    static const Colour towards = srgb(0xFBE3BD);
    const Vec3& sun = sunDirection();
    const double side = (direction.x * sun.x + direction.z * sun.z) / std::hypot(sun.x, sun.z);
    return mix(away, towards, smoothStep(-0.7, 1.0, side));
}

Colour clearSky(const Vec3& direction) {
    static const Colour low = srgb(0x8FC1E6);
    static const Colour middle = srgb(0x4E93D3);
    static const Colour zenith = srgb(0x174A94);
    const double up = std::max(direction.y, 0.0);
    Colour sky = mix(haze(direction), low, smoothStep(0.0, 0.26, up));
    sky = mix(sky, middle, smoothStep(0.08, 0.55, up));
    return mix(sky, zenith, smoothStep(0.35, 1.0, up));
}

/// The wide glow is paler than the sun: warm light spread over the blue would turn it violet.
Colour addSun(const Colour& sky, const Vec3& direction) {
    static const Colour glow = srgb(0xE6F1FA);
    static const Colour corona = srgb(0xFFF0CC);
    static const Colour disc = srgb(0xFFF8E4);
    const double angle = angleDegreesBetween(direction, sunDirection());
    const Colour lit = mix(sky, glow, 0.60 * std::exp(-angle / 13.0));
    return lit + corona * (0.55 * std::exp(-angle / 2.6)) +
           disc * (2.0 * (1.0 - smoothStep(1.5, 1.8, angle)));
}

/// The intersection of a view direction with a dome of clouds. Because the dome curves down far
/// away, clouds keep a finite size at the horizon, unlike those of a flat ceiling.
Vec3 pointOnCloudDome(const Vec3& direction) {
    constexpr double kRadius = 12.0;
    const double climb = kRadius * direction.y;
    return direction * (std::sqrt(climb * climb + 2.0 * kRadius + 1.0) - climb);
}

double cloudDensity(const Vec3& at, int octaves) {
    const Vec3 place = at * 0.85 + Vec3{4.2, 0.0, 9.4};
    const Vec3 bend{noise(place * 1.7), 0.0, noise(place * 1.7 + Vec3{31.0, 7.0, 0.0})};
    const double body = fractalNoise(place + bend * 0.22, octaves);
    return smoothStep(0.06, 0.75, body);
}

Colour addClouds(const Colour& sky, const Vec3& direction) {
    static const Colour lit = srgb(0xFFFDF8);
    static const Colour shaded = srgb(0xA9B7CB);
    const double clearance = smoothStep(0.05, 0.22, direction.y);
    if (clearance <= 0.0) {
        return sky;
    }
    const Vec3 at = pointOnCloudDome(direction);
    const double density = cloudDensity(at, 6);
    const double towardsSun = cloudDensity(at + sunDirection() * 0.16, 4);
    const double shade = std::clamp(0.16 + 0.9 * (towardsSun - 0.4 * density), 0.0, 1.0);
    const Colour cloud = mix(lit, shaded, shade * density);
    return mix(sky, cloud, 0.92 * clearance * density);
}

/// One range of mountains, in degrees of pitch; `haze` is the share of haze in its colour.
struct Range {
    double baseDegrees;
    double reliefDegrees;
    double frequency;
    double seed;
    double haze;
    std::uint32_t colour;
};

constexpr std::array<Range, 4> kRangesFromFar{{
    {1.8, 6.4, 2.6, 3.0, 0.50, 0x4E709A},
    {1.1, 4.6, 3.4, 19.0, 0.38, 0x41658A},
    {0.5, 2.8, 4.8, 41.0, 0.28, 0x3F666B},
    {0.2, 1.3, 7.5, 67.0, 0.20, 0x47683F},
}};

Colour addRange(const Colour& behind, const Range& range, const Heading& heading) {
    const Vec3 around = directionOf({heading.yawDegrees, 0.0});
    const Vec3 seed{range.seed, range.seed * 1.7, -range.seed};
    const double swell = 0.65 + 0.6 * noise(around * (range.frequency * 0.5) + seed);
    const double crest = ridgedNoise(around * range.frequency + seed, 6);
    const double top = range.baseDegrees + range.reliefDegrees * swell * crest;
    const double cover = coverage(heading.pitchDegrees - top);
    if (cover <= 0.0) {
        return behind;
    }
    const double depth = std::max(top - heading.pitchDegrees, 0.0);
    const Vec3 rock = around * (range.frequency * 5.0) +
                      Vec3{depth * 0.9, heading.pitchDegrees * 1.3, -depth * 0.9} + seed;
    const double facets = 1.0 + 0.35 * fractalNoise(rock, 4);
    const double snow = smoothStep(3.7, 4.5, heading.pitchDegrees + 0.8 * noise(rock * 1.6));
    const Colour body = mix(srgb(range.colour) * facets, srgb(0xF4F7FB) * facets, 0.75 * snow);
    const double mist = 0.30 * smoothStep(0.0, 2.5, depth);
    const double share = range.haze + (1.0 - range.haze) * mist;
    return mix(behind, mix(body, haze(around), share), cover);
}

/// Eight spikes around the nadir, seen from above: those at the four headings are longer, and the
/// one to the north is red.
Colour addCompassRose(const Colour& ground, double yawDegrees, double radiusDegrees) {
    static const Colour light = srgb(0xF3EAD6);
    static const Colour dark = srgb(0x3B4A57);
    static const Colour northLight = srgb(0xE2604F);
    static const Colour northDark = srgb(0xA8322B);
    Colour result = ground;
    const auto star = [&](double turnDegrees, double tip, double waist, bool hasNorth) {
        const double turned = yawDegrees - turnDegrees;
        const double nearest = 90.0 * std::round(turned / 90.0);
        const double off = (turned - nearest) * kRadiansPerDegree;
        const double along = radiusDegrees * std::cos(off);
        const double across = radiusDegrees * std::sin(off);
        const double notch = waist * std::sqrt(0.5);
        const double outside = ((along - tip) * notch - std::abs(across) * (notch - tip)) /
                               std::hypot(notch - tip, notch);
        const bool isNorth = hasNorth && std::abs(nearest) < 1.0;
        const double rightHalf = coverage(-across);
        const Colour face =
            isNorth ? mix(northLight, northDark, rightHalf) : mix(light, dark, rightHalf);
        result = mix(mix(result, dark, 0.6 * coverage(outside - 0.18)), face, coverage(outside));
    };
    star(45.0, 7.5, 2.6, false);
    star(0.0, 12.0, 3.2, true);
    return result;
}

Colour paving(const Vec3& place, double yawDegrees, double radiusDegrees, double footprint) {
    static const Colour stone = srgb(0xC9BCA2);
    static const Colour kerb = srgb(0x8D8069);
    const double grain = 1.0 + 0.12 * fractalNoise(place * 14.0, 4, footprint * 14.0);
    const auto ring = [radiusDegrees](double radius, double width) {
        return coverage(std::abs(radiusDegrees - radius) - width / 2.0);
    };
    const double joints = std::max(ring(13.6, 0.25), ring(17.2, 1.0));
    const Colour floor = mix(stone * grain, kerb * grain, joints);
    return addCompassRose(floor, yawDegrees, radiusDegrees);
}

Colour meadow(const Vec3& place, double footprint) {
    static const Colour dark = srgb(0x4F7A38);
    static const Colour light = srgb(0x9DB45A);
    static const Colour sand = srgb(0xD8C48E);
    const double patches = fractalNoise(place * 0.55, 5, footprint * 0.55);
    const double dryness = fractalNoise(place * 0.3 + Vec3{8.0, 3.0, 0.0}, 4, footprint * 0.3);
    const double blades = fractalNoise(place * 6.0 + Vec3{0.0, 21.0, 0.0}, 5, footprint * 6.0);
    const double stalks = fractalNoise(place * 55.0, 2, footprint * 55.0);
    Colour grass = mix(dark, light, std::clamp(0.45 + 0.6 * patches, 0.0, 1.0));
    grass = mix(grass, sand, 0.8 * smoothStep(0.12, 0.5, dryness + 0.1 * patches));
    return grass * (1.0 + 0.24 * blades + 0.09 * stalks);
}

/// Rings every 15 degrees of pitch and spokes every 10 degrees of yaw, which show how the
/// projection distorts the ground. They stop at the paving, because the spokes would merge at the
/// nadir.
double groundGrid(const Heading& heading) {
    const double pitch = heading.pitchDegrees;
    const double narrowing = std::cos(pitch * kRadiansPerDegree);
    const auto spoke = [&](double everyDegrees, double width) {
        const double off = std::remainder(heading.yawDegrees, everyDegrees) * narrowing;
        return coverage(std::abs(off) - width / 2.0);
    };
    const double ring = coverage(std::abs(std::remainder(pitch, 15.0)) - 0.09);
    const double fine = spoke(10.0, 0.12) * 0.5 * smoothStep(-62.0, -45.0, pitch);
    const double lines = std::max({ring, spoke(30.0, 0.18), fine});
    return lines * (1.0 - smoothStep(-9.0, -5.0, pitch));
}

Colour ground(const Heading& heading, const Vec3& direction) {
    const double down = std::max(-direction.y, 1e-4);
    const Vec3 place{direction.x / down, 0.0, direction.z / down};
    const double distance = std::hypot(place.x, place.z);
    const double footprint = (1.0 + distance * distance) * kPixelDegrees * kRadiansPerDegree;
    const double radius = 90.0 + heading.pitchDegrees;

    Colour colour = meadow(place, footprint);
    colour = mix(colour, srgb(0xFFFFFF), 0.26 * groundGrid(heading));
    colour =
        mix(colour, paving(place, heading.yawDegrees, radius, footprint), coverage(radius - 17.8));
    const double towardsSun = dot(direction, sunDirection());
    colour = colour * (0.86 + 0.10 * towardsSun + 0.10 * smoothStep(0.0, 60.0, radius));
    return mix(colour, haze(direction), 0.55 * (1.0 - std::exp(-distance / 30.0)));
}

} // namespace

Colour sceneryAt(const Heading& heading) {
    const Vec3 direction = directionOf(heading);
    if (heading.pitchDegrees < -kPixelDegrees) {
        return ground(heading, direction);
    }
    Colour colour = addClouds(addSun(clearSky(direction), direction), direction);
    if (heading.pitchDegrees < 12.0) {
        for (const Range& range : kRangesFromFar) {
            colour = addRange(colour, range, heading);
        }
    }
    return colour;
}

} // namespace pictures
