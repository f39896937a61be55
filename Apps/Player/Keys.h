#pragma once

#include "Hosts/SDL/KeyPress.h"

#include <optional>
#include <string>

/// What a key of the window does.
enum class KeyAction {
    ShowPlane,
    ShowSphere,
    ShowLittlePlanet,
    ShowSideBySide,
    ToggleDeviceMotion,
    ToggleVerticalLock,
    ToggleAutoPicking,
    LookLeft,
    LookRight,
    LookUp,
    LookDown,
    TogglePlayback,
    SeekBack,
    SeekForward,
    ToggleMute,
    VolumeDown,
    VolumeUp,
    ToggleFullScreen,
    TakeScreenshot,
    PrintHelp,
    Quit,
    Leave, ///< full screen if it is on, else the program
};

/// None: the key does nothing. A key that is held goes on looking, seeking and changing the volume;
/// other keys act once. Keys that are pressed with Control, Alt or the system's key
/// belong to somebody else.
[[nodiscard]] std::optional<KeyAction> keyActionOf(const KeyPress& press);

/// What all keys do, a line each.
[[nodiscard]] std::string keyHelp();
