#include "Platform/Interface/Animation.h"

#include <algorithm>

namespace platform {

Rect FrameAnimation::at(Instant now, const Rect& to) const {
    if (isOver(now))
        return to;
    const double t = std::clamp(toSeconds(now - start) / toSeconds(duration), 0.0, 1.0);
    const double eased = t * t * (3 - 2 * t);
    const auto between = [eased](double a, double b) { return a + (b - a) * eased; };
    return {{between(from.origin.x, to.origin.x), between(from.origin.y, to.origin.y)},
            {between(from.size.width, to.size.width), between(from.size.height, to.size.height)}};
}

} // namespace platform
