#pragma once

#include "Platform/Foundation/Color.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/BlendMode.h"
#include "Platform/Imaging/Image.h"

#include <memory>

namespace platform {

/// A surface for drawing in software: transparent at first, antialiased, with the best
/// interpolation that the backend offers.
///
/// Units:  points from the top left, y downward.
/// Thread: any; not thread-safe, one thread at a time.
class BitmapContext {
public:
    virtual ~BitmapContext() = default;

    virtual void fillRect(const Rect& rect, const Color& color) = 0;
    /// Draws the image into the rectangle; pixels outside of it do not change.
    virtual void drawImage(const Image& image, const Rect& inRect, BlendMode mode) = 0;
    /// Returns what has been drawn so far, at the context's scale.
    ///
    /// Errors: null and one log line when something could not be drawn.
    [[nodiscard]] virtual ImagePtr image() const = 0;
};

/// Creates a context of that size with `scale` pixels per point; fractional pixels are rounded up.
/// A backend library defines this function.
///
/// Errors: null and one log line for a size that is not 1 to 32767 pixels in each direction, and
///         when memory runs out.
[[nodiscard]] std::unique_ptr<BitmapContext> makeBitmapContext(Size points, double scale);

} // namespace platform
