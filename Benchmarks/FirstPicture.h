#pragma once

#include <nlohmann/json.hpp>

#include <string>

/// The time from a context that exists to the first frame of a picture file, beside a bare decode
/// into fresh memory and upload of the same file. Medians of several runs, taken in turns.
[[nodiscard]] nlohmann::ordered_json measureFirstPicture(const std::string& path);

/// Shows a picture file in this process, and reports its resident memory in bytes: the peak while
/// loading, and what is left when the picture stands.
[[nodiscard]] nlohmann::ordered_json measureResidentMemory(const std::string& path);
