#pragma once

#include <nlohmann/json.hpp>

/// Measures one frame of a 3840 × 1920 video at 1280 × 720, uploaded and drawn on the sphere with a
/// rotating camera, beside a bare upload and a bare full-screen quad with the same colour
/// conversion that samples an equal part of the frame.
///
/// Wall-clock milliseconds, each step finished; medians. `ratio` is frame : bare upload and quad.
[[nodiscard]] nlohmann::ordered_json measureVideoFrames();
