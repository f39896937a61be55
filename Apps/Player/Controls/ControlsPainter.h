#pragma once

#include "Apps/Player/Controls/Controls.h"
#include "Apps/Player/Controls/ImGuiSurface.h"

/// The looks of the controls.
///
/// Owner:  whoever draws; goes while the GL context is current. Thread: main.
class ControlsPainter {
public:
    /// Draws them over what is in the framebuffer that is bound.
    void draw(const ControlsPicture& picture, platform::Size size, double scale);

private:
    ImGuiSurface surface_;
};
