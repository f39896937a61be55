#include "Apps/Player/Keys.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct Binding {
    char32_t character;
    KeyAction action;
    std::string_view help;
};

constexpr std::array<Binding, 11> kBindings{{
    {U'1', KeyAction::ShowPlane, "1       flat on a plane"},
    {U'2', KeyAction::ShowSphere, "2       from inside the sphere"},
    {U'3', KeyAction::ShowLittlePlanet, "3       as a little planet"},
    {U'4', KeyAction::ShowSideBySide, "4       side by side, for a viewer"},
    {U'g', KeyAction::ToggleDeviceMotion,
     "g       in the sphere: follow the device, or stop; without one the right mouse button turns "
     "it"},
    {U'l', KeyAction::ToggleVerticalLock, "l       drag sideways only, or freely again"},
    {U'a', KeyAction::ToggleAutoPicking, "a       pick hot spots by looking at them, or stop"},
    {U'f', KeyAction::ToggleFullScreen, "f       full screen, and back"},
    {U's', KeyAction::TakeScreenshot, "s       write a screenshot into the current folder"},
    {U'h', KeyAction::PrintHelp, "h       print this help"},
    {U'q', KeyAction::Quit, "q       quit"},
}};
constexpr std::string_view kEscapeHelp = "Escape  leave full screen, or quit";

} // namespace

std::optional<KeyAction> keyActionOf(const KeyPress& press) {
    if (press.isRepeat || press.hasControl || press.hasAlt || press.hasCommand)
        return std::nullopt;
    if (press.key == KeyPress::Key::Escape)
        return KeyAction::Leave;
    const auto* const found =
        std::find_if(kBindings.begin(), kBindings.end(), [&press](const Binding& binding) {
            return binding.character == press.character;
        });
    return found == kBindings.end() ? std::nullopt : std::optional(found->action);
}

std::string keyHelp() {
    std::string text;
    for (const Binding& binding : kBindings)
        text += std::string(binding.help) + "\n";
    return text + std::string(kEscapeHelp) + "\n";
}
