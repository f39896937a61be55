#pragma once

#include "Platform/Imaging/Image.h"

#include <string_view>

namespace platform {

/// The picture of the application's bundle that goes by a name, with or without its ending.
///
/// Of the variants `name`, `name@2x` and `name@3x` the one made for the screen's scale is taken,
/// else the next denser one, else the densest. Endings that are tried for a name without one: png,
/// jpg, jpeg, webp.
///
/// Errors: null; and one log line that names picture and cause for one that cannot be decoded.
/// Thread: main.
[[nodiscard]] ImagePtr imageNamed(std::string_view name);

} // namespace platform
