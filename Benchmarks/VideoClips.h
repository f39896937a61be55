#pragma once

#include <string>

/// Makes a video for measurements with `ffmpeg`: moving shapes and noise, H.264, 30 frames a
/// second.
///
/// `megabits` a second. It is kept in the folder for
/// temporary files and taken from there by the next run.
///
/// Errors: an exception where `ffmpeg` is missing or refuses.
[[nodiscard]] std::string benchmarkClip(int widthPx, int heightPx, int seconds, int megabits);
