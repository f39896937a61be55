#pragma once

#include "Hosts/SDL/KeyEvent.h"

#include <SDL.h>

#include <optional>

namespace zanto {

/// Converts a keyboard event; none if `KeyEvent` has no value for the key.
[[nodiscard]] std::optional<KeyEvent> keyEventOf(const SDL_KeyboardEvent& event);

} // namespace zanto
