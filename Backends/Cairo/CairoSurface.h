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

/// Pixels as cairo has them: 32-bit words of premultiplied ARGB. A failed one has a status that
/// says so, as everything of cairo's has; drawing with it does nothing but hand that on.
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoCloser>;
using CairoContext = std::unique_ptr<cairo_t, CairoCloser>;
using CairoPattern = std::unique_ptr<cairo_pattern_t, CairoCloser>;

/// Transparent.
[[nodiscard]] CairoSurface makeSurface(SizePx size);
/// A copy of a picture; a failed surface for one that has no pixels any more.
[[nodiscard]] CairoSurface surfaceOf(const Image& image);
/// A copy of what has been drawn.
[[nodiscard]] PixelStorage straightPixels(cairo_surface_t* surface);

/// The words of a row, to be read and written between flush and mark.
[[nodiscard]] std::span<std::uint32_t> rowOf(cairo_surface_t* surface, int y);

} // namespace platform
