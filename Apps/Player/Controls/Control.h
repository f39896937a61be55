#pragma once

#include "Apps/Player/Controls/WindowAction.h"

#include <optional>
#include <string_view>

/// What can be pressed in the window.
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

/// What pressing it does; none: something that no key does.
[[nodiscard]] std::optional<WindowAction> actionOf(Control control);

/// What it is called when the mouse rests on it; empty: it speaks for itself.
[[nodiscard]] std::string_view nameOf(Control control);

/// Whether it has values, along its width, rather than being pressed.
[[nodiscard]] constexpr bool isBar(Control control) {
    return control == Control::SeekBar || control == Control::VolumeBar;
}
