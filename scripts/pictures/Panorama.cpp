// Draws the panorama: a landscape whose markings show at once whether it is rotated, mirrored or
// upside down.

#include "Markings.h"
#include "Noise.h"
#include "Scenery.h"

#include <turbojpeg.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <vector>

namespace {

using namespace pictures;

constexpr std::size_t kMaxBytes = 800 * 1024;
constexpr int kBestQuality = 94;
constexpr int kWorstQuality = 60;

using Bytes = std::vector<std::uint8_t>;

Picture drawPicture() {
    Picture picture;
    for (int row = 0; row < kHeightPx; ++row) {
        for (int column = 0; column < kWidthPx; ++column) {
            picture.at(column, row) = sceneryAt(headingOfPixel(column, row));
        }
    }
    drawMarkings(picture);
    return picture;
}

/// Rounds to bytes with triangular dither of one step, which prevents banding in the wide gradients
/// of the sky.
Bytes quantise(const Picture& picture) {
    Bytes rgb;
    rgb.reserve(static_cast<std::size_t>(kWidthPx) * kHeightPx * 3);
    std::uint32_t seed = 0;
    const auto uniform = [&seed] { return hash(++seed) / 4294967296.0; };
    for (int row = 0; row < kHeightPx; ++row) {
        for (int column = 0; column < kWidthPx; ++column) {
            const Colour& colour = picture.at(column, row);
            // All channels get the same dither: grey grain is less visible than coloured grain, and
            // compresses better.
            const double dither = uniform() - uniform();
            for (const double light : {colour.r, colour.g, colour.b}) {
                const double value = std::clamp(encodeChannel(light) + dither, 0.0, 255.0);
                rgb.push_back(static_cast<std::uint8_t>(std::lround(value)));
            }
        }
    }
    return rgb;
}

Bytes encode(const Bytes& rgb, int quality) {
    const std::unique_ptr<void, decltype(&tjDestroy)> encoder(tjInitCompress(), &tjDestroy);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    const int failed = tjCompress2(encoder.get(), rgb.data(), kWidthPx, 0, kHeightPx, TJPF_RGB,
                                   &buffer, &size, TJSAMP_420, quality, TJFLAG_ACCURATEDCT);
    const std::unique_ptr<unsigned char, decltype(&tjFree)> owner(buffer, &tjFree);
    return failed == 0 ? Bytes(buffer, buffer + size) : Bytes{};
}

Bytes encodeBestThatFits(const Bytes& rgb) {
    for (int quality = kBestQuality; quality >= kWorstQuality; --quality) {
        Bytes file = encode(rgb, quality);
        if (!file.empty() && file.size() <= kMaxBytes) {
            return file;
        }
    }
    return {};
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <file.jpg>\n", argv[0]);
        return 2;
    }
    const Bytes file = encodeBestThatFits(quantise(drawPicture()));
    if (file.empty()) {
        std::fprintf(stderr, "panorama: no quality down to %d fits %zu bytes; nothing written\n",
                     kWorstQuality, kMaxBytes);
        return 1;
    }
    std::ofstream out(argv[1], std::ios::binary);
    out.write(reinterpret_cast<const char*>(file.data()),
              static_cast<std::streamsize>(file.size()));
    if (!out.flush()) {
        std::fprintf(stderr, "panorama: cannot write %s\n", argv[1]);
        return 1;
    }
    std::printf("%s: %zu bytes\n", argv[1], file.size());
    return 0;
}
