#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"

namespace platform {

/// The rectangle that the host gives: a window's content area or a device's whole screen.
///
/// Thread: main.
class ZANTO_EXPORT Screen {
public:
    [[nodiscard]] static Screen& mainScreen();

    /// In points, as held: wider than high in landscape.
    [[nodiscard]] Rect bounds() const { return {{}, size_}; }
    /// In pixels and portrait-up whichever way it is held: width is the smaller side.
    [[nodiscard]] Rect nativeBounds() const;
    /// Pixels per point.
    [[nodiscard]] double scale() const { return scale_; }

    /// For hosts, which go through `Application::setContentSize`.
    void setSize(Size points, double scale);

private:
    Size size_;
    double scale_ = 1.0;
};

} // namespace platform
