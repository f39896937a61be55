#pragma once

#include "Platform/Imaging/Image.h"

#include <string_view>

namespace platform {

/// Returns the image of that name from the application's bundle. The name may omit the file
/// extension.
///
/// Of the variants `name`, `name@2x` and `name@3x` the one for the screen's scale is used, else the
/// next denser one, else the densest. For a name without an extension, png, jpg, jpeg and webp are
/// tried.
///
/// Errors: null when there is none; null and one log line with file and cause when it cannot be
///         decoded.
/// Thread: main.
[[nodiscard]] ImagePtr imageNamed(std::string_view name);

} // namespace platform
