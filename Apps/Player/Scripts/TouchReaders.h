#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Apps/Player/Scripts/ActionLine.h"

#include <vector>

/// Read lines with touches: a single touch event, or a whole gesture.
///
/// Errors: `LineRefused`.
[[nodiscard]] std::vector<Action> readTouch(const ActionLine& line);
/// Down and up at the same position and the same time.
[[nodiscard]] std::vector<Action> readTap(const ActionLine& line);
/// Two fingers, side by side and 100 points apart, that go down and then spread or close in 60
/// moves per second.
[[nodiscard]] std::vector<Action> readPinch(const ActionLine& line);
