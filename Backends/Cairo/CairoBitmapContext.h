#pragma once

#include "Backends/Cairo/CairoSurface.h"
#include "Platform/Imaging/BitmapContext.h"

namespace platform {

/// A bitmap context drawn by cairo. It computes with 8 bits a channel, premultiplied, so that faint
/// colours are coarse.
class CairoBitmapContext final : public BitmapContext {
public:
    CairoBitmapContext(SizePx size, double scale);

    void fillRect(const Rect& rect, const Color& color) override;
    void drawImage(const Image& image, const Rect& inRect, BlendMode mode) override;
    [[nodiscard]] ImagePtr image() const override;

    /// The first thing that went wrong; nothing is drawn any more then.
    [[nodiscard]] cairo_status_t status() const;

private:
    void addDarkness(cairo_surface_t* picture, const Rect& inRect);

    double scale_;
    CairoSurface surface_;
    CairoContext context_;
    cairo_status_t failure_ = CAIRO_STATUS_SUCCESS; // of what it was to draw with
};

} // namespace platform
