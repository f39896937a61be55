#pragma once

#include "Platform/Foundation/Color.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/BlendMode.h"
#include "Platform/Imaging/Image.h"

#include <memory>

namespace platform {

/// A picture that is being drawn; transparent at first, antialiased, with the best interpolation
/// that there is.
///
/// Units:  points from the top left, y downward.
/// Thread: any, one at a time.
class BitmapContext {
public:
    virtual ~BitmapContext() = default;

    virtual void fillRect(const Rect& rect, const Color& color) = 0;
    /// Draws the image into the rectangle; what lies outside stays as it is.
    virtual void drawImage(const Image& image, const Rect& inRect, BlendMode mode) = 0;
    /// What has been drawn so far, at the context's scale.
    ///
    /// Errors: null, and one log line, when something could not be drawn.
    [[nodiscard]] virtual ImagePtr image() const = 0;
};

/// A context of that size at `scale` pixels per point; broken pixels at its edges count whole. The
/// definition is the backend's, chosen by linking.
///
/// Errors: null, and one log line, for a size that is not 1 to 32767 pixels each way, and without
///         the memory for it.
[[nodiscard]] std::unique_ptr<BitmapContext> makeBitmapContext(Size points, double scale);

} // namespace platform
