#pragma once

#include "HVViewer/Model/DisplayMode.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

/// The names of the display modes on the command line and in action scripts.
inline constexpr std::array<std::pair<std::string_view, DisplayMode>, 4> kDisplayModeNames{{
    {"plane", DisplayMode::Plane},
    {"sphere", DisplayMode::Sphere},
    {"little-planet", DisplayMode::LittlePlanet},
    {"side-by-side", DisplayMode::SideBySide},
}};

[[nodiscard]] constexpr std::optional<DisplayMode> displayModeNamed(std::string_view name) {
    for (const auto& [known, mode] : kDisplayModeNames) {
        if (known == name)
            return mode;
    }
    return std::nullopt;
}
