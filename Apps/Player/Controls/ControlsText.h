#pragma once

#include <optional>
#include <string>

/// Formats a time as "1:05", or from one hour as "1:01:05"; NaN and infinity count as 0.
[[nodiscard]] std::string timeText(double seconds);

/// Formats a fraction as "42 %", a whole number of at most 100; empty for nullopt.
[[nodiscard]] std::string percentText(std::optional<double> fraction);
