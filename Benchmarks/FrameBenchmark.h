#pragma once

#include "Platform/Foundation/Geometry.h"

#include <nlohmann/json.hpp>

/// A steady frame of the sphere with the camera turning, for eight views of an 8192 × 4096
/// panorama, each beside a bare full-screen quad that samples the same part of the picture.
///
/// Milliseconds of processor time on the wall, each frame finished; medians. `ratio` is frame :
/// quad.
[[nodiscard]] nlohmann::ordered_json measureFrames(platform::SizePx size);
