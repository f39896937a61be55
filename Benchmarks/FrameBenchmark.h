#pragma once

#include "Platform/Foundation/Geometry.h"

#include <nlohmann/json.hpp>

/// Measures a steady frame of the sphere with a rotating camera, for eight views of an 8192 × 4096
/// panorama, each beside a bare full-screen quad that samples the same part of the image.
///
/// Wall-clock milliseconds, each frame finished; medians. `ratio` is frame : quad.
[[nodiscard]] nlohmann::ordered_json measureFrames(platform::SizePx size);
