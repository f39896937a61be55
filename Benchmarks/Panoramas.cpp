#include "Benchmarks/Panoramas.h"

#include <cstdint>

platform::PixelStorage makePanorama(int widthPx) {
    platform::PixelStorage pixels(widthPx, widthPx / 2);
    std::uint32_t noise = 1;
    for (int y = 0; y < pixels.heightPx; ++y) {
        std::uint8_t* out = pixels.row(y);
        for (int x = 0; x < widthPx; ++x, out += 4) {
            // Noise from a linear congruential generator, so that an encoder finds no flat areas.
            noise = noise * 1664525U + 1013904223U;
            const auto grain = static_cast<int>(noise >> 28U);
            out[0] = static_cast<std::uint8_t>(x * 200 / widthPx + grain);
            out[1] = static_cast<std::uint8_t>(y * 200 / pixels.heightPx + grain);
            out[2] = static_cast<std::uint8_t>(((x >> 6) ^ (y >> 6)) % 64 * 3 + grain);
            out[3] = 255;
        }
    }
    return pixels;
}
