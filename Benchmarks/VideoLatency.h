#pragma once

#include <nlohmann/json.hpp>

/// The longest time that the main thread is kept by one call while a video of 3840 × 1920 is
/// opened, played, moved about in, starved by its server, replaced and closed: by the call itself,
/// and by a turn of the library after it, without the drawing.
///
/// Milliseconds; `own` without what the thread waited for a processor that others had. The first
/// frame's shaders and the watermark have been prepared.
[[nodiscard]] nlohmann::ordered_json measureVideoLatency();
