#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <vector>

namespace platform {

/// Writes a picture as PNG, 8-bit RGBA, straight alpha, always the same bytes for the same pixels.
///
/// Thread: any, reentrant. The definition is the backends', chosen by linking.
/// Errors: Unavailable (out of memory inside the library).
[[nodiscard]] ZANTO_EXPORT Result<std::vector<std::uint8_t>> encodePng(const Image& image);

} // namespace platform
