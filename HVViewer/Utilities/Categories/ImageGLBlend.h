#pragma once

#include "Platform/Graphics/GLKMath.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>

// Single pixels of pictures, and pictures of what GL has drawn. Thread: main.

/// The red, green, blue and alpha, 0 to 1, of the pixel at (x, y) points times the screen's scale
/// from the top left. A caller who thinks of bytes finds them in the order of the platform's
/// bitmaps, blue first: 10 20 30 FF is the red 30, the green 20 and the blue 10.
///
/// The column just right of the picture is the first of the row below.
///
/// Errors: opaque black outside the picture, and for one whose pixels cannot be had again.
[[nodiscard]] GLKVector4 pickPixelAtX(const platform::Image& image, std::uint64_t x,
                                      std::uint64_t y);

/// What the framebuffer shows that is bound now: the square from its bottom left corner whose sides
/// are as many pixels as the screen is points wide. Opaque, its top row first.
///
/// Thread: the one on which the GL context is current.
/// Errors: null, and a log line, without a context and for a screen without a width. What lies
///         outside the framebuffer is black.
[[nodiscard]] platform::ImagePtr screenShotFromGl();
