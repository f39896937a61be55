#pragma once

#include <string>

/// Makes a video for measurements with `ffmpeg`: moving shapes and noise, H.264, 30 frames per
/// second, `megabits` per second.
///
/// The file is kept in the folder for temporary files and reused by later runs.
///
/// Errors: throws an exception if `ffmpeg` is missing or fails.
[[nodiscard]] std::string benchmarkClip(int widthPx, int heightPx, int seconds, int megabits);
