#pragma once

#include "Apps/Player/Scripts/Action.h"
#include "Apps/Player/Scripts/ActionLine.h"

#include <vector>

/// The readers of lines that touch: one report of a finger, or a whole gesture.
///
/// Errors: `LineRefused`.
[[nodiscard]] std::vector<Action> readTouch(const ActionLine& line);
/// Down and up at one place and one instant.
[[nodiscard]] std::vector<Action> readTap(const ActionLine& line);
/// Two fingers, level, 100 points apart, that hold and then spread or close in moves a sixtieth of
/// a second apart.
[[nodiscard]] std::vector<Action> readPinch(const ActionLine& line);
