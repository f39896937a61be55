#pragma once

#include <nlohmann/json.hpp>

/// A frame of a video of 3840 × 1920 at 1280 × 720, uploaded and drawn on the sphere with the
/// camera turning, beside a bare upload and a bare full-screen quad with the same conversion that
/// samples as much of the picture.
///
/// Milliseconds on the wall, each step finished; medians. `ratio` is frame : bare upload and quad.
[[nodiscard]] nlohmann::ordered_json measureVideoFrames();
