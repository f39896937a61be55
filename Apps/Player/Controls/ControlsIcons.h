#pragma once

#include "Apps/Player/Controls/Control.h"
#include "Apps/Player/Controls/ControlsState.h"

#include <imgui.h>

/// Draws what a control looks like at the moment; bars and words look like nothing.
void drawIcon(ImDrawList& list, Control control, const ControlsState& state, ImVec2 center,
              ImU32 color);

/// A cross that closes something.
void drawCross(ImDrawList& list, ImVec2 center, ImU32 color);
