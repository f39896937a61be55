// Draws the icons of the hot-spot example: round badges with a sign and a soft edge, in the PNG
// colour types that support transparency.

#include "Colour.h"
#include "StrokeFont.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace pictures;

constexpr int kSidePx = 128;
constexpr double kRadiusPx = 59;
constexpr double kEdgePx = 4; // width of the soft edge
constexpr double kRingPx = 50;
constexpr double kRingPenPx = 4;
constexpr double kLetterPx = 52;
constexpr double kPenPx = 9;
constexpr int kLevels = 16; // of a palette: that many shares of the sign times that many alphas

enum class Kind { Colour, Grey, Palette };

struct Icon {
    const char* name;
    std::uint32_t colour;
    Kind kind;
    std::vector<Segment> sign; // 1 high, centred, y up
};

std::vector<Icon> allIcons() {
    const std::vector<Segment> up{
        {{0, -0.5}, {0, 0.5}}, {{0, 0.5}, {-0.4, 0.1}}, {{0, 0.5}, {0.4, 0.1}}};
    const std::vector<Segment> down{
        {{0, 0.5}, {0, -0.5}}, {{0, -0.5}, {-0.4, -0.1}}, {{0, -0.5}, {0.4, -0.1}}};
    return {{"north", 0xC0392B, Kind::Colour, textStrokes(U"N")},
            {"east", 0x1F618D, Kind::Colour, textStrokes(U"E")},
            {"south", 0x404040, Kind::Grey, textStrokes(U"S")},
            {"west", 0x1E7A45, Kind::Palette, textStrokes(U"W")},
            {"zenith", 0xB9770E, Kind::Colour, up},
            {"ground", 0x6C3483, Kind::Colour, down}};
}

/// The components of a pixel, each from 0 to 1.
struct Shade {
    double white;
    double alpha;
};

double covered(double distancePx) {
    return std::clamp(0.5 - distancePx, 0.0, 1.0);
}

/// The coverage at the middle of a pixel. Outside of the badge the colour stays the same, so that a
/// filter that reaches across the edge finds no other colour.
Shade shadeAt(const Icon& icon, int column, int row) {
    const Point place{column + 0.5 - kSidePx / 2.0, kSidePx / 2.0 - row - 0.5};
    const double radius = std::hypot(place.x, place.y);
    const double toSign =
        distanceToStrokes(icon.sign, {place.x / kLetterPx, place.y / kLetterPx}) * kLetterPx;
    const double white = std::max(covered(toSign - kPenPx / 2),
                                  covered(std::abs(radius - kRingPx) - kRingPenPx / 2));
    return {white, std::clamp((kRadiusPx - radius) / kEdgePx + 0.5, 0.0, 1.0)};
}

using Bytes = std::vector<std::uint8_t>;

std::uint8_t byteOf(double value) {
    return static_cast<std::uint8_t>(std::lround(value));
}

/// Red, green, blue and alpha, or grey and alpha.
void append(Bytes& pixels, const Icon& icon, const Shade& shade) {
    const std::array<unsigned, 3> channels{icon.colour >> 16U & 0xFFU, icon.colour >> 8U & 0xFFU,
                                           icon.colour & 0xFFU};
    const std::size_t count = icon.kind == Kind::Grey ? 1 : 3;
    for (std::size_t i = 0; i < count; ++i)
        pixels.push_back(byteOf(channels[i] + (255.0 - channels[i]) * shade.white));
    pixels.push_back(byteOf(255 * shade.alpha));
}

int levelOf(double value) {
    return static_cast<int>(std::lround(value * (kLevels - 1)));
}

bool write(const Icon& icon, const std::string& path) {
    Bytes pixels;
    Bytes palette;
    for (int i = 0; i < kLevels * kLevels; ++i)
        append(palette, icon, {i / kLevels / (kLevels - 1.0), i % kLevels / (kLevels - 1.0)});
    for (int i = 0; i < kSidePx * kSidePx; ++i) {
        const Shade shade = shadeAt(icon, i % kSidePx, i / kSidePx);
        if (icon.kind == Kind::Palette)
            pixels.push_back(
                static_cast<std::uint8_t>(levelOf(shade.white) * kLevels + levelOf(shade.alpha)));
        else
            append(pixels, icon, shade);
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = kSidePx;
    image.height = kSidePx;
    image.format = icon.kind == Kind::Grey      ? PNG_FORMAT_GA
                   : icon.kind == Kind::Palette ? PNG_FORMAT_RGBA_COLORMAP
                                                : PNG_FORMAT_RGBA;
    image.colormap_entries = kLevels * kLevels;
    return png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, palette.data()) != 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <folder>\n", argv[0]);
        return 2;
    }
    for (const Icon& icon : allIcons()) {
        const std::string path = std::string(argv[1]) + "/" + icon.name + ".png";
        if (!write(icon, path)) {
            std::fprintf(stderr, "icons: cannot write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
