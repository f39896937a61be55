#pragma once

#include <nlohmann/json.hpp>

/// Plays a 3840 × 1920 video with 30 frames per second at 1280 × 720 through the player, in real
/// time, beside the same decoding into a sink that discards frames and one bare quad for each.
///
/// Both from opening to the end; `cpu_seconds` are those of the whole process. `ratio` is played :
/// bare.
[[nodiscard]] nlohmann::ordered_json measureVideoPlayback(int seconds);
