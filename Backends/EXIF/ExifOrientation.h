#pragma once

#include <cstdint>
#include <span>

namespace platform {

/// The orientation that an EXIF block gives, 1 to 8; 1 where there is none or the block is damaged.
///
/// `exif` is the block as JPEG, PNG or WebP hold it, with or without the leading "Exif" and two
/// zeros. Only the picture's own directory counts, not the thumbnail's.
///
/// Thread: any, reentrant.
[[nodiscard]] int exifOrientation(std::span<const std::uint8_t> exif);

} // namespace platform
