#include "Apps/Player/Keys.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

enum class WhileHeld { Once, GoesOn };

struct Binding {
    char32_t character;
    KeyAction action;
    std::string_view help;
    WhileHeld whileHeld = WhileHeld::Once;
};

constexpr std::array<Binding, 17> kBindings{{
    {U'1', KeyAction::ShowPlane, "1       flat on a plane"},
    {U'2', KeyAction::ShowSphere, "2       from inside the sphere"},
    {U'3', KeyAction::ShowLittlePlanet, "3       as a little planet"},
    {U'4', KeyAction::ShowSideBySide, "4       side by side, for a viewer"},
    {U'g', KeyAction::ToggleDeviceMotion,
     "g       in the sphere: follow the device, or stop; without one the right mouse button turns "
     "it"},
    {U'l', KeyAction::ToggleVerticalLock, "l       drag sideways only, or freely again"},
    {U'a', KeyAction::ToggleAutoPicking, "a       pick hot spots by looking at them, or stop"},
    {U' ', KeyAction::TogglePlayback, "Space   pause the video, or go on"},
    {U'[', KeyAction::SeekBack, "[       10 seconds back in the video", WhileHeld::GoesOn},
    {U']', KeyAction::SeekForward, "]       10 seconds on in the video", WhileHeld::GoesOn},
    {U'm', KeyAction::ToggleMute, "m       mute, or sound again"},
    {U'9', KeyAction::VolumeDown, "9       less volume", WhileHeld::GoesOn},
    {U'0', KeyAction::VolumeUp, "0       more volume", WhileHeld::GoesOn},
    {U'f', KeyAction::ToggleFullScreen, "f       full screen, and back"},
    {U's', KeyAction::TakeScreenshot, "s       write a screenshot into the current folder"},
    {U'h', KeyAction::PrintHelp, "h       print this help"},
    {U'q', KeyAction::Quit, "q       quit"},
}};
constexpr std::string_view kArrowHelp = "Arrows  look around";
constexpr std::string_view kEscapeHelp = "Escape  leave full screen, or quit";

std::optional<KeyAction> lookOf(KeyPress::Key key) {
    switch (key) {
    case KeyPress::Key::Left:
        return KeyAction::LookLeft;
    case KeyPress::Key::Right:
        return KeyAction::LookRight;
    case KeyPress::Key::Up:
        return KeyAction::LookUp;
    case KeyPress::Key::Down:
        return KeyAction::LookDown;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<KeyAction> keyActionOf(const KeyPress& press) {
    if (press.hasControl || press.hasAlt || press.hasCommand)
        return std::nullopt;
    if (const auto look = lookOf(press.key))
        return look;
    if (press.key == KeyPress::Key::Escape && !press.isRepeat)
        return KeyAction::Leave;
    const auto* const found =
        std::find_if(kBindings.begin(), kBindings.end(), [&press](const Binding& binding) {
            return binding.character == press.character;
        });
    if (found == kBindings.end() || (press.isRepeat && found->whileHeld == WhileHeld::Once))
        return std::nullopt;
    return found->action;
}

std::string keyHelp() {
    std::string text;
    for (const Binding& binding : kBindings)
        text += std::string(binding.help) + "\n";
    return text + std::string(kArrowHelp) + "\n" + std::string(kEscapeHelp) + "\n";
}
