#include "Apps/Player/Controls/Keys.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

enum class WhileHeld { Once, GoesOn };

struct Binding {
    char32_t character{};
    WindowAction action{};
    KeyHelp help;
    WhileHeld whileHeld = WhileHeld::Once;
};

constexpr std::array<Binding, 17> kBindings{{
    {U'1', WindowAction::ShowPlane, {"1", "flat on a plane"}},
    {U'2', WindowAction::ShowSphere, {"2", "from inside the sphere"}},
    {U'3', WindowAction::ShowLittlePlanet, {"3", "as a little planet"}},
    {U'4', WindowAction::ShowSideBySide, {"4", "side by side, for a viewer"}},
    {U'g',
     WindowAction::ToggleDeviceMotion,
     {"g", "in the sphere: follow the device, or stop; without a sensor the right mouse button "
           "turns it"}},
    {U'l', WindowAction::ToggleVerticalLock, {"l", "drag sideways only, or freely again"}},
    {U'a', WindowAction::ToggleAutoPicking, {"a", "pick hot spots by looking at them, or stop"}},
    {U' ', WindowAction::TogglePlayback, {"Space", "pause the video, or go on"}},
    {U'[', WindowAction::SeekBack, {"[", "10 seconds back in the video"}, WhileHeld::GoesOn},
    {U']', WindowAction::SeekForward, {"]", "10 seconds on in the video"}, WhileHeld::GoesOn},
    {U'm', WindowAction::ToggleMute, {"m", "mute, or sound again"}},
    {U'9', WindowAction::VolumeDown, {"9", "less volume"}, WhileHeld::GoesOn},
    {U'0', WindowAction::VolumeUp, {"0", "more volume"}, WhileHeld::GoesOn},
    {U'f', WindowAction::ToggleFullScreen, {"f", "full screen, and back"}},
    {U's', WindowAction::TakeScreenshot, {"s", "write a screenshot into the current folder"}},
    {U'h', WindowAction::ToggleHelp, {"h", "show these keys in the window and print them"}},
    {U'q', WindowAction::Quit, {"q", "quit"}},
}};
constexpr KeyHelp kArrowHelp{"Arrows", "look around"};
constexpr KeyHelp kEscapeHelp{"Escape", "put the keys away, leave full screen, or quit"};
constexpr std::size_t kKeyColumn = 8;

std::optional<WindowAction> lookOf(zanto::KeyEvent::Key key) {
    switch (key) {
    case zanto::KeyEvent::Key::Left:
        return WindowAction::LookLeft;
    case zanto::KeyEvent::Key::Right:
        return WindowAction::LookRight;
    case zanto::KeyEvent::Key::Up:
        return WindowAction::LookUp;
    case zanto::KeyEvent::Key::Down:
        return WindowAction::LookDown;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<WindowAction> windowActionOf(const zanto::KeyEvent& press) {
    if (press.hasControl || press.hasAlt || press.hasCommand)
        return std::nullopt;
    if (const auto look = lookOf(press.key))
        return look;
    if (press.key == zanto::KeyEvent::Key::Escape && !press.isRepeat)
        return WindowAction::Leave;
    const auto* const found =
        std::find_if(kBindings.begin(), kBindings.end(), [&press](const Binding& binding) {
            return binding.character == press.character;
        });
    if (found == kBindings.end() || (press.isRepeat && found->whileHeld == WhileHeld::Once))
        return std::nullopt;
    return found->action;
}

std::vector<KeyHelp> keyHelpLines() {
    std::vector<KeyHelp> lines;
    lines.reserve(kBindings.size() + 2);
    for (const Binding& binding : kBindings)
        lines.push_back(binding.help);
    lines.push_back(kArrowHelp);
    lines.push_back(kEscapeHelp);
    return lines;
}

std::string keyHelp() {
    std::string text;
    for (const auto& [key, what] : keyHelpLines()) {
        text += key;
        text.append(kKeyColumn - key.size(), ' ').append(what).append("\n");
    }
    return text;
}
