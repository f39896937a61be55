#pragma once

#include <nlohmann/json.hpp>

#include <string>

/// Measures the time from an existing GL context to the first frame of an image file, beside a bare
/// decode into fresh memory and upload of the same file. Medians of several alternating runs.
[[nodiscard]] nlohmann::ordered_json measureFirstPicture(const std::string& path);

/// Shows an image file in this process and reports its resident memory in bytes: the peak during
/// loading, and the amount afterwards.
[[nodiscard]] nlohmann::ordered_json measureResidentMemory(const std::string& path);
