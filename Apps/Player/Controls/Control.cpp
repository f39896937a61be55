#include "Apps/Player/Controls/Control.h"

std::optional<WindowAction> actionOf(Control control) {
    switch (control) {
    case Control::Playback:
        return WindowAction::TogglePlayback;
    case Control::Mute:
        return WindowAction::ToggleMute;
    case Control::Plane:
        return WindowAction::ShowPlane;
    case Control::Sphere:
        return WindowAction::ShowSphere;
    case Control::LittlePlanet:
        return WindowAction::ShowLittlePlanet;
    case Control::SideBySide:
        return WindowAction::ShowSideBySide;
    case Control::DeviceMotion:
        return WindowAction::ToggleDeviceMotion;
    case Control::Screenshot:
        return WindowAction::TakeScreenshot;
    case Control::Help:
        return WindowAction::ToggleHelp;
    case Control::FullScreen:
        return WindowAction::ToggleFullScreen;
    case Control::VolumeBar:
    case Control::SeekBar:
    case Control::CancelLoading:
    case Control::DismissMessage:
        break;
    }
    return std::nullopt;
}

std::string_view nameOf(Control control) {
    switch (control) {
    case Control::Playback:
        return "Play or pause (Space)";
    case Control::Mute:
        return "Sound on or off (m)";
    case Control::Plane:
        return "Flat (1)";
    case Control::Sphere:
        return "Sphere (2)";
    case Control::LittlePlanet:
        return "Little planet (3)";
    case Control::SideBySide:
        return "Side by side (4)";
    case Control::DeviceMotion:
        return "Follow the device (g)";
    case Control::Screenshot:
        return "Screenshot (s)";
    case Control::Help:
        return "Keys (h)";
    case Control::FullScreen:
        return "Full screen (f)";
    case Control::VolumeBar:
    case Control::SeekBar:
    case Control::CancelLoading:
    case Control::DismissMessage:
        break;
    }
    return {};
}
