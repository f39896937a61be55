#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Graphics/GLKMath.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>

// Single pixels of images, and screenshots of the framebuffer.
//
// Thread: main.

/// Returns red, green, blue and alpha, from 0 to 1, of the pixel at (x, y) points times the
/// screen's scale from the top left. Bytes in the platform's bitmaps are in the order blue, green,
/// red, alpha: 10 20 30 FF has red 30, green 20 and blue 10.
///
/// The column next to the right edge of the image is the first column of the row below.
///
/// Errors: opaque black outside of the image, and if its pixels cannot be decoded again.
[[nodiscard]] ZANTO_EXPORT GLKVector4 pickPixelAtX(const platform::Image& image, std::uint64_t x,
                                                   std::uint64_t y);

/// A screenshot of the framebuffer that is currently bound: the square from its bottom left corner
/// whose sides are as many pixels as the screen is points wide. The image is opaque, with the top
/// row first. The GL context must be current. What is outside of the framebuffer is black.
///
/// Errors: logs an error and returns null without a context, and if the screen has no width.
[[nodiscard]] ZANTO_EXPORT platform::ImagePtr screenShotFromGl();
