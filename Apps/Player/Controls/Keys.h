#pragma once

#include "Apps/Player/Controls/WindowAction.h"
#include "Hosts/SDL/KeyPress.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// None: the key does nothing. A key that is held goes on looking, seeking and changing the volume;
/// other keys act once. Keys that are pressed with Control, Alt or the system's key
/// belong to somebody else.
[[nodiscard]] std::optional<WindowAction> windowActionOf(const KeyPress& press);

struct KeyHelp {
    std::string_view key;
    std::string_view text;
};

/// What all keys do.
[[nodiscard]] std::vector<KeyHelp> keyHelpLines();
/// The same as text, a line each.
[[nodiscard]] std::string keyHelp();
