#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"

namespace platform {

/// The rectangle that the host provides: the content area of a window or the whole screen of a
/// device.
///
/// Thread: main.
class ZANTO_EXPORT Screen {
public:
    [[nodiscard]] static Screen& mainScreen();

    /// In points and in the current orientation: wider than high in landscape.
    [[nodiscard]] Rect bounds() const { return {{}, size_}; }
    /// In pixels and in portrait, whatever the current orientation: the width is the smaller side.
    [[nodiscard]] Rect nativeBounds() const;
    /// Pixels per point.
    [[nodiscard]] double scale() const { return scale_; }

    /// For `Application::setContentSize`, which hosts call instead.
    void setSize(Size points, double scale);

private:
    Size size_;
    double scale_ = 1.0;
};

} // namespace platform
