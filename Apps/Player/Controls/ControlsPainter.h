#pragma once

#include "Apps/Player/Controls/Controls.h"
#include "Apps/Player/Controls/ImGuiSurface.h"

/// Draws the controls.
///
/// Owner:  the object that draws; destroy it while the GL context is current. Thread: main.
class ControlsPainter {
public:
    /// Draws the controls over the contents of the bound framebuffer.
    void draw(const ControlsPicture& picture, platform::Size size, double scale);

private:
    ImGuiSurface surface_;
};
