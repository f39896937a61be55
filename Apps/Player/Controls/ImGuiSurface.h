#pragma once

#include "Platform/Foundation/Geometry.h"

#include <functional>

struct ImDrawList;

/// Draws with Dear ImGui over a frame. It uses only ImGui's draw lists and text, and writes no
/// file.
///
/// Owner:  the object that draws; only one may exist at a time. Destroy it while the GL context is
///         current.
/// Thread: main.
class ImGuiSurface {
public:
    ImGuiSurface();
    ~ImGuiSurface();
    ImGuiSurface(const ImGuiSurface&) = delete;
    ImGuiSurface& operator=(const ImGuiSurface&) = delete;

    /// Draws the contents of the list into the bound framebuffer, in points from the top left. The
    /// GL context must be current. GL state is restored afterwards, except the bindings used for
    /// drawing and the attribute arrays of vertex array 0.
    void draw(platform::Size size, double scale, const std::function<void(ImDrawList&)>& paint);

private:
    void loadFont(double scale);

    double fontScale_ = 0; // the scale that the font was rasterised for
};
