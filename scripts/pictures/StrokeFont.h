#pragma once

#include "Sphere.h"

#include <span>
#include <string_view>
#include <vector>

/// A small stroke font with the few characters that the images need.
namespace pictures {

struct Segment {
    Point from;
    Point to;
};

/// The centre lines of the strokes of `text`, with arcs divided into short segments.
///
/// Shape:  capitals and digits are 1 high; the whole text is centred on the origin, y up.
/// Errors: throws std::out_of_range for a character that the font lacks.
[[nodiscard]] std::vector<Segment> textStrokes(std::u32string_view text);

/// The distance from `point` to the nearest of `strokes`; infinity if there are none.
[[nodiscard]] double distanceToStrokes(std::span<const Segment> strokes, const Point& point);

} // namespace pictures
