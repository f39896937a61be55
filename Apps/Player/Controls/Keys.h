#pragma once

#include "Apps/Player/Controls/WindowAction.h"
#include "Hosts/SDL/KeyEvent.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The action of a key; nullopt if it has none. Key repeat applies to looking, seeking and volume
/// only. Keys pressed together with Control, Alt or the system key have no action here.
[[nodiscard]] std::optional<WindowAction> windowActionOf(const zanto::KeyEvent& press);

struct KeyHelp {
    std::string_view key;
    std::string_view text;
};

/// The help for all keys.
[[nodiscard]] std::vector<KeyHelp> keyHelpLines();
/// The same as text, one line per key.
[[nodiscard]] std::string keyHelp();
