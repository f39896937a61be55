#include "Markings.h"

#include "SphereStrokes.h"

#include <array>
#include <string>

namespace pictures {
namespace {

struct Ink {
    std::uint32_t colour = 0xFFFFFF;
    std::uint32_t outlineColour = 0x1C2A38;
    double outlineDegrees = 0.3;
    double opacity = 0.95;
};

struct NamedHeading {
    double yawDegrees;
    const char32_t* letter;
    std::uint32_t colour;
};

// North has another colour, so that a rotation by 180 degrees is noticed at a glance.
constexpr std::array<NamedHeading, 4> kHeadings{{
    {0.0, U"N", 0xE8412F},
    {90.0, U"E", 0xFFFFFF},
    {180.0, U"S", 0xFFFFFF},
    {270.0, U"W", 0xFFFFFF},
}};

std::u32string numeral(int value) {
    const std::string digits = std::to_string(value);
    return {digits.begin(), digits.end()};
}

void draw(Picture& picture, const SphereStrokes& strokes, const Ink& ink) {
    const double margin = ink.outlineDegrees + kPixelDegrees;
    const Heading& centre = strokes.centre();
    const double halfHeight = strokes.reach().y + margin;
    // A rectangle in a tangent plane spans more yaw than its width in degrees, above all near the
    // poles.
    const double steepest = std::min(std::abs(centre.pitchDegrees) + halfHeight, 80.0);
    const double halfWidth =
        1.1 * (strokes.reach().x + margin) / std::cos(steepest * kRadiansPerDegree);
    const auto columnOf = [](double yaw) {
        return static_cast<int>(std::floor((yaw + 180.0) / kPixelDegrees));
    };
    const auto rowOf = [](double pitch) {
        return static_cast<int>(std::floor((90.0 - pitch) / kPixelDegrees));
    };
    const Colour fill = srgb(ink.colour);
    const Colour outline = srgb(ink.outlineColour);
    for (int row = rowOf(centre.pitchDegrees + 1.2 * halfHeight);
         row <= rowOf(centre.pitchDegrees - 1.2 * halfHeight); ++row) {
        for (int column = columnOf(centre.yawDegrees - halfWidth);
             column <= columnOf(centre.yawDegrees + halfWidth); ++column) {
            const double distance =
                strokes.distanceDegrees(directionOf(headingOfPixel(column, row)));
            const double rim = 0.6 * (1.0 - smoothStep(0.0, ink.outlineDegrees, distance));
            Colour& pixel = picture.at(column, row);
            pixel = mix(mix(pixel, outline, rim), fill, ink.opacity * coverage(distance));
        }
    }
}

void drawHorizon(Picture& picture) {
    const Colour white = srgb(0xFFFFFF);
    const int horizonRow = kHeightPx / 2;
    for (int row = horizonRow - 4; row < horizonRow + 4; ++row) {
        const double pitch = headingOfPixel(0, row).pitchDegrees;
        const double cover = 0.75 * coverage(std::abs(pitch) - 0.07);
        for (int column = 0; column < kWidthPx; ++column) {
            picture.at(column, row) = mix(picture.at(column, row), white, cover);
        }
    }
}

void drawDegreeScale(Picture& picture) {
    const Ink ink{.outlineDegrees = 0.22, .opacity = 0.9};
    for (int yaw = 0; yaw < 360; yaw += 10) {
        const bool isLong = yaw % 30 == 0;
        const double length = isLong ? 1.9 : 1.0;
        const Segment tick{{0.0, 0.0}, {0.0, -length}};
        draw(picture, SphereStrokes({1.0 * yaw, 0.0}, {tick}, isLong ? 0.24 : 0.16), ink);
        if (isLong) {
            draw(picture, SphereStrokes::text({1.0 * yaw, -3.6}, numeral(yaw), 2.0, 0.27), ink);
        }
    }
}

void drawPitchMarks(Picture& picture, double yawDegrees) {
    constexpr double kHalfTickDegrees = 2.5;
    for (const int pitch : {60, 30, -30, -60}) {
        const Segment tick{{-kHalfTickDegrees, 0.0}, {kHalfTickDegrees, 0.0}};
        draw(picture, SphereStrokes({yawDegrees, 1.0 * pitch}, {tick}, 0.26), {});
        const std::u32string sign = pitch < 0 ? U"-" : U"";
        const std::u32string label = sign + numeral(std::abs(pitch)) + U"\u00b0";
        draw(picture, SphereStrokes::text({yawDegrees, pitch + 2.1}, label, 2.4, 0.32), {});
    }
}

} // namespace

void drawMarkings(Picture& picture) {
    drawHorizon(picture);
    drawDegreeScale(picture);
    for (const NamedHeading& heading : kHeadings) {
        const Ink ink{.colour = heading.colour, .outlineDegrees = 0.6};
        draw(picture, SphereStrokes::text({heading.yawDegrees, 7.0}, heading.letter, 6.0, 0.95),
             ink);
        drawPitchMarks(picture, heading.yawDegrees);
    }
}

} // namespace pictures
