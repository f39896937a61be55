#pragma once

#include "Apps/Player/Scripts/Action.h"

#include <array>
#include <string_view>
#include <utility>

/// The switches as they are called in action scripts.
inline constexpr std::array<std::pair<std::string_view, SwitchAction::Switch>, 7> kSwitchNames{{
    {"device_motion", SwitchAction::Switch::DeviceMotion},
    {"touch_motion", SwitchAction::Switch::TouchMotion},
    {"pinch_zoom", SwitchAction::Switch::PinchZoom},
    {"lock_vertical", SwitchAction::Switch::LockVertical},
    {"transparent", SwitchAction::Switch::Transparent},
    {"auto_picking", SwitchAction::Switch::AutoPicking},
    {"tap_detection", SwitchAction::Switch::TapDetection},
}};

/// What is done without saying more.
inline constexpr std::array<std::pair<std::string_view, CommandAction>, 4> kCommandNames{{
    {"play", CommandAction::Play},
    {"pause", CommandAction::Pause},
    {"appear", CommandAction::Appear},
    {"reload", CommandAction::Reload},
}};

/// Pictures and videos.
inline constexpr std::array<std::pair<std::string_view, ContentAction::Kind>, 2> kContentNames{{
    {"image", ContentAction::Kind::Picture},
    {"video", ContentAction::Kind::Video},
}};

/// What a finger does, as action scripts call it.
inline constexpr std::array<std::pair<std::string_view, platform::TouchPhase>, 4> kPhaseNames{{
    {"down", platform::TouchPhase::Down},
    {"move", platform::TouchPhase::Move},
    {"up", platform::TouchPhase::Up},
    {"cancel", platform::TouchPhase::Cancel},
}};
