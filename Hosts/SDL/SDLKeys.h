#pragma once

#include "Hosts/SDL/KeyPress.h"

#include <SDL.h>

#include <optional>

/// Converts a keyboard event; none if `KeyPress` has no value for the key.
[[nodiscard]] std::optional<KeyPress> keyPressOf(const SDL_KeyboardEvent& event);
