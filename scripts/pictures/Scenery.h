#pragma once

#include "Colour.h"
#include "Sphere.h"

namespace pictures {

/// The light that arrives from `heading`: sky, sun and clouds above, mountains around the horizon,
/// and below it a meadow and a round paved area with a compass rose.
[[nodiscard]] Colour sceneryAt(const Heading& heading);

} // namespace pictures
