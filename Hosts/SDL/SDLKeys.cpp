#include "Hosts/SDL/SDLKeys.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zanto {

namespace {

using Key = KeyEvent::Key;

constexpr std::array<std::pair<SDL_Keycode, Key>, 14> kNamedKeys{{
    {SDLK_ESCAPE, Key::Escape},
    {SDLK_RETURN, Key::Return},
    {SDLK_KP_ENTER, Key::Return},
    {SDLK_TAB, Key::Tab},
    {SDLK_BACKSPACE, Key::Backspace},
    {SDLK_DELETE, Key::Delete},
    {SDLK_LEFT, Key::Left},
    {SDLK_RIGHT, Key::Right},
    {SDLK_UP, Key::Up},
    {SDLK_DOWN, Key::Down},
    {SDLK_HOME, Key::Home},
    {SDLK_END, Key::End},
    {SDLK_PAGEUP, Key::PageUp},
    {SDLK_PAGEDOWN, Key::PageDown},
}};

/// 0 if the key has no character.
char32_t characterOf(SDL_Keycode code) {
    // The codes of the number pad start with 1; its 0 comes last.
    if (code >= SDLK_KP_1 && code <= SDLK_KP_9)
        return U'1' + static_cast<char32_t>(code - SDLK_KP_1);
    if (code == SDLK_KP_0)
        return U'0';
    const bool isControl = code < 0x20 || (code >= 0x7f && code < 0xa0);
    const bool isUnprintable = (code & SDLK_SCANCODE_MASK) != 0;
    return isControl || isUnprintable ? 0 : static_cast<char32_t>(code);
}

} // namespace

std::optional<KeyEvent> keyEventOf(const SDL_KeyboardEvent& event) {
    KeyEvent press;
    const SDL_Keycode code = event.keysym.sym;
    const auto* const named = std::find_if(kNamedKeys.begin(), kNamedKeys.end(),
                                           [code](const auto& key) { return key.first == code; });
    if (named != kNamedKeys.end())
        press.key = named->second;
    else if (press.character = characterOf(code); press.character == 0)
        return std::nullopt;
    const int modifiers = event.keysym.mod;
    press.hasShift = (modifiers & KMOD_SHIFT) != 0;
    press.hasControl = (modifiers & KMOD_CTRL) != 0;
    press.hasAlt = (modifiers & KMOD_ALT) != 0;
    press.hasCommand = (modifiers & KMOD_GUI) != 0;
    press.isRepeat = event.repeat != 0;
    return press;
}

} // namespace zanto
