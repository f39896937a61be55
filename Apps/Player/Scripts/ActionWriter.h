#pragma once

#include "Apps/Player/Scripts/Action.h"

#include <nlohmann/json.hpp>

/// What a line of an action script says of an action, without its instant; reading it again gives
/// the same numbers to the last bit.
[[nodiscard]] nlohmann::ordered_json describeAction(const decltype(Action::what)& what);
