#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/Image.h"

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <span>

namespace platform {

struct CairoCloser {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};

/// Pixels in cairo's format: 32-bit words of premultiplied ARGB. As with all cairo objects, a
/// failed surface reports its error as a status, and drawing with it only propagates that status.
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoCloser>;
using CairoContext = std::unique_ptr<cairo_t, CairoCloser>;
using CairoPattern = std::unique_ptr<cairo_pattern_t, CairoCloser>;

/// Creates a transparent surface.
[[nodiscard]] CairoSurface makeSurface(SizePx size);
/// Copies an image into a surface. Returns a failed surface if the image's pixels have been
/// released.
[[nodiscard]] CairoSurface surfaceOf(const Image& image);
/// Copies the surface's pixels as straight (not premultiplied) RGBA.
[[nodiscard]] PixelStorage straightPixels(cairo_surface_t* surface);

/// The pixels of one row. Read and write them only between `cairo_surface_flush` and
/// `cairo_surface_mark_dirty`.
[[nodiscard]] std::span<std::uint32_t> rowOf(cairo_surface_t* surface, int y);

} // namespace platform
