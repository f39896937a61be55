#pragma once

#include "Apps/Player/Scripts/Action.h"

#include <array>
#include <string_view>
#include <utility>

/// The names of the switches in action scripts.
inline constexpr std::array<std::pair<std::string_view, SwitchAction::Switch>, 7> kSwitchNames{{
    {"device_motion", SwitchAction::Switch::DeviceMotion},
    {"touch_motion", SwitchAction::Switch::TouchMotion},
    {"pinch_zoom", SwitchAction::Switch::PinchZoom},
    {"lock_vertical", SwitchAction::Switch::LockVertical},
    {"transparent", SwitchAction::Switch::Transparent},
    {"auto_picking", SwitchAction::Switch::AutoPicking},
    {"tap_detection", SwitchAction::Switch::TapDetection},
}};

/// The names of the actions without parameters.
inline constexpr std::array<std::pair<std::string_view, CommandAction>, 4> kCommandNames{{
    {"play", CommandAction::Play},
    {"pause", CommandAction::Pause},
    {"appear", CommandAction::Appear},
    {"reload", CommandAction::Reload},
}};

/// The names of the content kinds.
inline constexpr std::array<std::pair<std::string_view, ContentAction::Kind>, 2> kContentNames{{
    {"image", ContentAction::Kind::Picture},
    {"video", ContentAction::Kind::Video},
}};

/// The names of the touch phases.
inline constexpr std::array<std::pair<std::string_view, platform::TouchPhase>, 4> kPhaseNames{{
    {"down", platform::TouchPhase::Down},
    {"move", platform::TouchPhase::Move},
    {"up", platform::TouchPhase::Up},
    {"cancel", platform::TouchPhase::Cancel},
}};
