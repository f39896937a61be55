#pragma once

#include "Apps/Player/Controls/WindowAction.h"

#include <optional>
#include <string_view>

/// Everything in the window that the user can press.
enum class Control {
    Playback,
    Mute,
    VolumeBar,
    SeekBar,
    Plane,
    Sphere,
    LittlePlanet,
    SideBySide,
    DeviceMotion,
    Screenshot,
    Help,
    FullScreen,
    CancelLoading,
    DismissMessage,
};

/// The action of pressing the control; nullopt if no key has the same action.
[[nodiscard]] std::optional<WindowAction> actionOf(Control control);

/// The tooltip; empty if the control needs none.
[[nodiscard]] std::string_view nameOf(Control control);

/// Whether the control is a slider rather than a button.
[[nodiscard]] constexpr bool isBar(Control control) {
    return control == Control::SeekBar || control == Control::VolumeBar;
}
