#pragma once

#include "Apps/Player/Controls/Control.h"
#include "Apps/Player/Controls/ControlsState.h"

#include <imgui.h>

/// Draws the icon of a control in its current state; a no-op for sliders and text.
void drawIcon(ImDrawList& list, Control control, const ControlsState& state, ImVec2 center,
              ImU32 color);

/// Draws the cross of a close button.
void drawCross(ImDrawList& list, ImVec2 center, ImU32 color);
