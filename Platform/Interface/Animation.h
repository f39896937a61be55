#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"

namespace platform {

/// A frame on its way to another: slow at both ends.
struct FrameAnimation {
    Rect from;
    Instant start{};
    Instant duration{};

    [[nodiscard]] bool isOver(Instant now) const { return now - start >= duration; }
    /// Where the view is shown on its way to `to`.
    [[nodiscard]] Rect at(Instant now, const Rect& to) const;
};

} // namespace platform
