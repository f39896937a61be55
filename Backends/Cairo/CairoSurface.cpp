#include "Backends/Cairo/CairoSurface.h"

#include <cstddef>

namespace platform {
namespace {

/// Multiplies two fixed-point numbers, where 255 stands for 1.
std::uint32_t product(std::uint32_t one, std::uint32_t other) {
    return (one * other + 127) / 255;
}

std::uint32_t premultiplied(const std::uint8_t* rgba) {
    const std::uint32_t alpha = rgba[3];
    return alpha << 24U | product(rgba[0], alpha) << 16U | product(rgba[1], alpha) << 8U |
           product(rgba[2], alpha);
}

void writeStraight(std::uint32_t word, std::uint8_t* rgba) {
    const std::uint32_t alpha = word >> 24U;
    const auto straight = [&](unsigned shift) {
        const std::uint32_t channel = word >> shift & 255U;
        return static_cast<std::uint8_t>(alpha == 0 ? 0 : (channel * 255 + alpha / 2) / alpha);
    };
    rgba[0] = straight(16);
    rgba[1] = straight(8);
    rgba[2] = straight(0);
    rgba[3] = static_cast<std::uint8_t>(alpha);
}

} // namespace

CairoSurface makeSurface(SizePx size) {
    return CairoSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size.width, size.height));
}

CairoSurface surfaceOf(const Image& image) {
    const auto pixels = image.pixels();
    // An image without pixels yields a failed surface, because a negative side is invalid.
    CairoSurface surface =
        makeSurface(pixels.empty() ? SizePx{-1, -1} : SizePx{image.widthPx(), image.heightPx()});
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return surface;
    cairo_surface_flush(surface.get());
    const std::uint8_t* rgba = pixels.data();
    for (int y = 0; y < image.heightPx(); ++y) {
        for (std::uint32_t& word : rowOf(surface.get(), y)) {
            word = premultiplied(rgba);
            rgba += 4;
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

PixelStorage straightPixels(cairo_surface_t* surface) {
    PixelStorage pixels(cairo_image_surface_get_width(surface),
                        cairo_image_surface_get_height(surface));
    cairo_surface_flush(surface);
    for (int y = 0; y < pixels.heightPx; ++y) {
        std::uint8_t* rgba = pixels.row(y);
        for (const std::uint32_t word : rowOf(surface, y)) {
            writeStraight(word, rgba);
            rgba += 4;
        }
    }
    return pixels;
}

std::span<std::uint32_t> rowOf(cairo_surface_t* surface, int y) {
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(surface);
    unsigned char* const row = cairo_image_surface_get_data(surface) + stride * y;
    return {reinterpret_cast<std::uint32_t*>(row),
            static_cast<std::size_t>(cairo_image_surface_get_width(surface))};
}

} // namespace platform
