#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <vector>

namespace platform {

/// Encodes an image as PNG, 8-bit RGBA, straight alpha. The same pixels always give the same bytes.
/// A backend library defines this function.
///
/// Thread: any; thread-safe.
/// Errors: Unavailable (the library is out of memory).
[[nodiscard]] ZANTO_EXPORT Result<std::vector<std::uint8_t>> encodePng(const Image& image);

} // namespace platform
