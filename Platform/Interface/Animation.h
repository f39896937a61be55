#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"

namespace platform {

/// An animation from one frame of a view to another, slow at both ends.
struct FrameAnimation {
    Rect from;
    Instant start{};
    Instant duration{};

    [[nodiscard]] bool isOver(Instant now) const { return now - start >= duration; }
    /// The frame to be shown now, between `from` and `to`.
    [[nodiscard]] Rect at(Instant now, const Rect& to) const;
};

} // namespace platform
