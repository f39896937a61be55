#pragma once

#include "Platform/Foundation/Color.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/BlendMode.h"
#include "Platform/Imaging/Image.h"

#include <optional>

// Pictures of one colour, and pictures tinted with one. Thread: main.

/// A picture of 1 x 1 point.
///
/// Errors: as below.
[[nodiscard]] ZANTO_EXPORT platform::ImagePtr
imageWithColor(const std::optional<platform::Color>& color);

/// A picture all of one colour, of one pixel a point.
///
/// Errors: `AssertionFailure` without a colour; null, and a log line, for a size that no picture
/// can
///         have.
[[nodiscard]] ZANTO_EXPORT platform::ImagePtr
imageWithColor(const std::optional<platform::Color>& color, platform::Size withSize);

/// The picture drawn over the colour in that mode, then clipped to its own alpha; as large in
/// points, at the screen's scale.
///
/// Errors: null, and a log line, for a picture that is too large.
[[nodiscard]] ZANTO_EXPORT platform::ImagePtr
tintedImageWithColor(const platform::Image& image, const platform::Color& color,
                     platform::BlendMode blendingMode);
