#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Apps/Player/Scripts/ActionLine.h"

#include <vector>

/// What a line of an action script stands for, in time order; the line's own instant is the first.
///
/// Errors: `LineRefused`.
[[nodiscard]] std::vector<Action> readActions(const ActionLine& line);
