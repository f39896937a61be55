#include "Apps/Player/Controls/ControlsText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

std::string timeText(double seconds) {
    constexpr double mostSeconds = 360000; // a hundred hours
    const auto whole =
        std::isfinite(seconds) ? static_cast<int>(std::clamp(seconds, 0.0, mostSeconds)) : 0;
    std::array<char, 32> text{};
    if (whole >= 3600)
        std::snprintf(text.data(), text.size(), "%d:%02d:%02d", whole / 3600, whole / 60 % 60,
                      whole % 60);
    else
        std::snprintf(text.data(), text.size(), "%d:%02d", whole / 60, whole % 60);
    return text.data();
}

std::string percentText(std::optional<double> fraction) {
    if (!fraction)
        return {};
    return std::to_string(static_cast<int>(std::clamp(*fraction, 0.0, 1.0) * 100)) + " %";
}
