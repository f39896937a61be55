// Draws the watermark: one faint word, repeated all around below the horizon, on transparency.

#include "SphereStrokes.h"

#include <png.h>
#include <zlib.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <optional>
#include <vector>

namespace {

using namespace pictures;

constexpr double kPitchDegrees = -18.0;
constexpr double kLetterHeightDegrees = 3.2;
constexpr double kPenDegrees = 0.44;
constexpr double kOutlineDegrees = 0.22;
constexpr double kLetterOpacity = 0.40;
constexpr double kOutlineOpacity = 0.25;

// The distance between two words is a whole number of pixels, so that all words have the same
// bytes, and all but the first compress to almost nothing.
constexpr int kRepeats = 16;
constexpr int kTileWidthPx = kWidthPx / kRepeats;
constexpr std::size_t kMaxBytes = 64 * 1024;

using Pixel = std::array<std::uint8_t, 4>;

/// White letters with a black outline that do not overlap. Transparent pixels are black like the
/// outline, so a renderer that filters across the edge shows no fringe.
Pixel shade(double distanceDegrees) {
    const double letter = kLetterOpacity * coverage(distanceDegrees);
    const double falloff = 1.0 - smoothStep(0.0, kOutlineDegrees * 1.6, distanceDegrees);
    const double outline = kOutlineOpacity * falloff * (1.0 - coverage(distanceDegrees));
    const double alpha = letter + outline;
    const auto byte = [](double value) {
        return static_cast<std::uint8_t>(std::lround(value * 255.0));
    };
    if (byte(alpha) == 0) {
        return {};
    }
    const std::uint8_t grey = byte(letter / alpha);
    return {grey, grey, grey, byte(alpha)};
}

std::vector<Pixel> drawPicture() {
    const auto word =
        SphereStrokes::text({0.0, kPitchDegrees}, U"ZANTO", kLetterHeightDegrees, kPenDegrees);
    const int tileLeft = (kWidthPx - kTileWidthPx) / 2;
    std::vector<Pixel> pixels(static_cast<std::size_t>(kWidthPx) * kHeightPx);
    for (int row = 0; row < kHeightPx; ++row) {
        for (int column = 0; column < kTileWidthPx; ++column) {
            const Heading heading = headingOfPixel(tileLeft + column, row);
            if (std::abs(heading.pitchDegrees - kPitchDegrees) > kLetterHeightDegrees) {
                continue;
            }
            const Pixel pixel = shade(word.distanceDegrees(directionOf(heading)));
            for (int repeat = 0; repeat < kRepeats; ++repeat) {
                const int target = (tileLeft + column + repeat * kTileWidthPx) % kWidthPx;
                pixels[static_cast<std::size_t>(row * kWidthPx + target)] = pixel;
            }
        }
    }
    return pixels;
}

using Bytes = std::vector<char>;

void append(png_structp png, png_bytep bytes, png_size_t count) {
    auto& file = *static_cast<Bytes*>(png_get_io_ptr(png));
    file.insert(file.end(), bytes, bytes + count);
}

/// Holds no objects with destructors, because libpng reports errors by longjmp, which skips
/// destructors.
bool write(png_structp png, png_infop info, png_const_bytep pixels) {
    if (setjmp(png_jmpbuf(png))) { // NOLINT(cert-err52-cpp): the only way libpng reports an error
        return false;
    }
    png_set_IHDR(png, info, kWidthPx, kHeightPx, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (png_uint_32 row = 0; row < kHeightPx; ++row) {
        png_write_row(png, pixels + static_cast<std::size_t>(row) * kWidthPx * sizeof(Pixel));
    }
    png_write_end(png, info);
    return true;
}

std::optional<Bytes> encode(const std::vector<Pixel>& pixels, int filters, int strategy) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    Bytes file;
    png_set_write_fn(png, &file, append, nullptr);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, filters);
    png_set_compression_level(png, Z_BEST_COMPRESSION);
    png_set_compression_mem_level(png, MAX_MEM_LEVEL);
    png_set_compression_strategy(png, strategy);
    // One chunk for all of the data; libpng's default splits it at 8 KiB.
    png_set_compression_buffer_size(png, kMaxBytes);
    const bool done = write(png, info, pixels.front().data());
    png_destroy_write_struct(&png, &info);
    return done ? std::optional(std::move(file)) : std::nullopt;
}

Bytes encodeSmallest(const std::vector<Pixel>& pixels) {
    Bytes smallest;
    for (const int filters :
         {PNG_FILTER_NONE, PNG_FILTER_SUB, PNG_FILTER_UP, PNG_FILTER_PAETH, PNG_ALL_FILTERS}) {
        for (const int strategy : {Z_DEFAULT_STRATEGY, Z_FILTERED, Z_RLE}) {
            auto file = encode(pixels, filters, strategy);
            if (file && (smallest.empty() || file->size() < smallest.size())) {
                smallest = std::move(*file);
            }
        }
    }
    return smallest;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <file.png>\n", argv[0]);
        return 2;
    }
    const Bytes file = encodeSmallest(drawPicture());
    if (file.empty() || file.size() > kMaxBytes) {
        std::fprintf(stderr, "watermark: encoded to %zu bytes, at most %zu fit; nothing written\n",
                     file.size(), kMaxBytes);
        return 1;
    }
    std::ofstream out(argv[1], std::ios::binary);
    out.write(file.data(), static_cast<std::streamsize>(file.size()));
    if (!out.flush()) {
        std::fprintf(stderr, "watermark: cannot write %s\n", argv[1]);
        return 1;
    }
    std::printf("%s: %zu bytes\n", argv[1], file.size());
    return 0;
}
