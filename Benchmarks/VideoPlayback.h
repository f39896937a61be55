#pragma once

#include <nlohmann/json.hpp>

/// Plays a video of 3840 × 1920 and 30 frames a second at 1280 × 720 through the player, in real
/// time, beside the same decoding into a sink that throws pictures away and one bare quad for each.
///
/// Both from opening to the end; `cpu_seconds` are the whole process's. `ratio` is played : bare.
[[nodiscard]] nlohmann::ordered_json measureVideoPlayback(int seconds);
