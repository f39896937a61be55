#pragma once

#include <nlohmann/json.hpp>

/// Plays a small video repeatedly for that many minutes, and prints the resources of the process to
/// standard error every ten seconds: resident memory, threads, files and GL objects.
///
/// `slope_kib_a_minute` is the memory's growth after the first minute; null for a shorter run.
[[nodiscard]] nlohmann::ordered_json measureVideoSoak(int minutes);
