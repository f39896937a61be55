#pragma once

#include "Platform/Foundation/Color.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/BlendMode.h"
#include "Platform/Imaging/Image.h"

#include <optional>

// Images of one colour, and images tinted with a colour.
//
// Thread: main.

/// An image of 1 x 1 point. Its errors are those of the overload below.
[[nodiscard]] ZANTO_EXPORT platform::ImagePtr
imageWithColor(const std::optional<platform::Color>& color);

/// An image of one colour, with one pixel per point.
///
/// Errors: throws `AssertionFailure` without a colour. Logs an error and returns null if no image
///         can have the size.
[[nodiscard]] ZANTO_EXPORT platform::ImagePtr
imageWithColor(const std::optional<platform::Color>& color, platform::Size withSize);

/// Draws the image over the colour with the blend mode, then clips the result to the alpha of the
/// image. The result has the size of the image in points, at the scale of the screen.
///
/// Errors: logs an error and returns null if the image is too large.
[[nodiscard]] ZANTO_EXPORT platform::ImagePtr
tintedImageWithColor(const platform::Image& image, const platform::Color& color,
                     platform::BlendMode blendingMode);
