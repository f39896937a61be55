#pragma once

#include "Colour.h"
#include "Sphere.h"

namespace pictures {

/// The light that arrives from `heading`: sky, sun and clouds above, mountains around the horizon,
/// meadow and a paved round with a compass rose below.
[[nodiscard]] Colour sceneryAt(const Heading& heading);

} // namespace pictures
