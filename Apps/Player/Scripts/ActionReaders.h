#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Apps/Player/Scripts/ActionLine.h"

#include <vector>

/// Parses a line of an action script into actions in time order; the first has the line's own time.
///
/// Errors: `LineRefused`.
[[nodiscard]] std::vector<Action> readActions(const ActionLine& line);
