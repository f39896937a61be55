#pragma once

#include <cstdint>
#include <span>

namespace platform {

/// Returns the orientation in an EXIF block, 1 to 8; 1 if there is none or the block is damaged.
///
/// `exif` is the block as stored in JPEG, PNG or WebP, with or without the leading "Exif" and two
/// zero bytes. Only the directory of the main image counts, not the thumbnail's.
///
/// Thread: any; thread-safe.
[[nodiscard]] int exifOrientation(std::span<const std::uint8_t> exif);

} // namespace platform
