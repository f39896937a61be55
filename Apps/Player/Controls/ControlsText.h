#pragma once

#include <optional>
#include <string>

/// "1:05", or "1:01:05" from an hour on; times that are none are 0.
[[nodiscard]] std::string timeText(double seconds);

/// "42 %", whole and never more than 100; empty for none.
[[nodiscard]] std::string percentText(std::optional<double> fraction);
