#pragma once

#include "Platform/Imaging/Image.h"

namespace platform {

/// Whether an image with that EXIF orientation swaps its width and height when it is made upright.
[[nodiscard]] bool swapsSides(int orientation);

/// Makes stored pixels upright.
///
/// `orientation` is EXIF's, 1 to 8: the sides where the stored first row and first column belong. 1
/// and all invalid values return the pixels unchanged; 2 to 4 work in place; 5 to 8 need a second
/// buffer of the same size during the call.
///
/// Thread: any; thread-safe.
[[nodiscard]] PixelStorage turnedUpright(PixelStorage pixels, int orientation);

} // namespace platform
