#pragma once

#include "Backends/Cairo/CairoSurface.h"
#include "Platform/Imaging/BitmapContext.h"

namespace platform {

/// A bitmap context that draws with cairo. It computes with 8 bits per channel, premultiplied, so
/// colours with a low alpha are quantised coarsely.
class CairoBitmapContext final : public BitmapContext {
public:
    CairoBitmapContext(SizePx size, double scale);

    void fillRect(const Rect& rect, const Color& color) override;
    void drawImage(const Image& image, const Rect& inRect, BlendMode mode) override;
    [[nodiscard]] ImagePtr image() const override;

    /// The first error. Nothing is drawn after an error.
    [[nodiscard]] cairo_status_t status() const;

private:
    void addDarkness(cairo_surface_t* picture, const Rect& inRect);

    double scale_;
    CairoSurface surface_;
    CairoContext context_;
    cairo_status_t failure_ = CAIRO_STATUS_SUCCESS; // of an image that was to be drawn
};

} // namespace platform
