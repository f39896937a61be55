#pragma once

#include "Apps/Player/Scripts/Action.h"

#include <nlohmann/json.hpp>

/// Returns an action as the members of a script line, without "at". Reading the line again yields
/// bit-identical numbers.
[[nodiscard]] nlohmann::ordered_json describeAction(const decltype(Action::what)& what);
