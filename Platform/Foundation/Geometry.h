#pragma once

namespace platform {

/// A position in points; the origin is at the top left, y grows downward.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// An extent in points.
struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle in points; `origin` is its top left corner.
struct Rect {
    Point origin;
    Size size;
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// An extent in pixels.
struct SizePx {
    int width = 0;
    int height = 0;
    friend bool operator==(const SizePx&, const SizePx&) = default;
};

/// A rectangle of a framebuffer in pixels; `x` and `y` are its bottom left corner, as in GL.
struct RectPx {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const RectPx&, const RectPx&) = default;
};

} // namespace platform
