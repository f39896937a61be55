#pragma once

#include <nlohmann/json.hpp>

/// Measures the longest time that one call blocks the main thread while a 3840 × 1920 video is
/// opened, played, sought, starved by its server, replaced and closed: the call itself, and a loop
/// iteration of the library after it, without drawing.
///
/// Milliseconds; `own` excludes the time that the thread waited in the run queue for a processor.
/// The shaders and the watermark have been prepared before.
[[nodiscard]] nlohmann::ordered_json measureVideoLatency();
