#pragma once

#include "Platform/Imaging/Image.h"

namespace platform {

/// Whether a picture stored with that EXIF orientation changes width and height when turned
/// upright.
[[nodiscard]] bool swapsSides(int orientation);

/// Turns stored pixels upright.
///
/// `orientation` is EXIF's, 1 to 8: where the stored first row and first column belong. 1, and
/// anything that is no orientation, gives the pixels back untouched; 2 to 4 work in place; 5 to 8
/// need a second picture of the same size for the time of the call.
///
/// Thread: any, reentrant.
[[nodiscard]] PixelStorage turnedUpright(PixelStorage pixels, int orientation);

} // namespace platform
