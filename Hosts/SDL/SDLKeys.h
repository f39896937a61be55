#pragma once

#include "Hosts/SDL/KeyPress.h"

#include <SDL.h>

#include <optional>

/// The key that an event is about; none for one that programs have no name for.
[[nodiscard]] std::optional<KeyPress> keyPressOf(const SDL_KeyboardEvent& event);
