#pragma once

#include <nlohmann/json.hpp>

/// Plays a small video again and again for so many minutes, and watches what the process holds:
/// resident memory, threads, files and GL objects, a line every ten seconds on standard error.
///
/// `slope_kib_a_minute` is the memory's growth after the first minute; null when it ends before.
[[nodiscard]] nlohmann::ordered_json measureVideoSoak(int minutes);
