#pragma once

#include "Platform/Foundation/Geometry.h"

#include <functional>

struct ImDrawList;

/// Lets Dear ImGui draw over a frame. Nothing but its draw lists and its text is used; it keeps no
/// file.
///
/// Owner:  whoever draws; one at a time. Goes while the GL context is current.
/// Thread: main.
class ImGuiSurface {
public:
    ImGuiSurface();
    ~ImGuiSurface();
    ImGuiSurface(const ImGuiSurface&) = delete;
    ImGuiSurface& operator=(const ImGuiSurface&) = delete;

    /// Draws what is put into the list, in points from the top left, into the framebuffer that is
    /// bound, whose context is current. GL state is as it was afterwards but for what is bound to
    /// draw with and the arrays of the vertex array 0.
    void draw(platform::Size size, double scale, const std::function<void(ImDrawList&)>& paint);

private:
    void loadFont(double scale);

    double fontScale_ = 0; // that the font has been made for
};
