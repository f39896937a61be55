#pragma once

#include "StrokeFont.h"

#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace pictures {

/// Pen strokes drawn on the sphere so that they look undistorted from its centre.
class SphereStrokes {
public:
    /// Units: `strokes` and `penDegrees` (the full width of the pen) in degrees at `centre`.
    SphereStrokes(const Heading& centre, std::vector<Segment> strokes, double penDegrees)
        : centre_(centre), plane_(centre), strokes_(std::move(strokes)), penDegrees_(penDegrees) {
        for (const Segment& stroke : strokes_) {
            for (const Point& end : {stroke.from, stroke.to}) {
                reach_.x = std::max(reach_.x, std::abs(end.x) + penDegrees / 2.0);
                reach_.y = std::max(reach_.y, std::abs(end.y) + penDegrees / 2.0);
            }
        }
    }

    /// `heightDegrees` is the height of a capital letter from edge to edge, including the pen's
    /// width.
    static SphereStrokes text(const Heading& centre, std::u32string_view characters,
                              double heightDegrees, double penDegrees) {
        const double scale = heightDegrees - penDegrees;
        std::vector<Segment> strokes = textStrokes(characters);
        for (auto& [from, to] : strokes) {
            from = {from.x * scale, from.y * scale};
            to = {to.x * scale, to.y * scale};
        }
        return {centre, std::move(strokes), penDegrees};
    }

    [[nodiscard]] const Heading& centre() const { return centre_; }

    /// Half the width and half the height in degrees.
    [[nodiscard]] const Point& reach() const { return reach_; }

    /// The distance to the nearest edge of a stroke in degrees, negative inside it.
    [[nodiscard]] double distanceDegrees(const Vec3& direction) const {
        const auto point = plane_.project(direction);
        return point ? distanceToStrokes(strokes_, *point) - penDegrees_ / 2.0
                     : std::numeric_limits<double>::infinity();
    }

private:
    Heading centre_;
    TangentPlane plane_;
    std::vector<Segment> strokes_;
    double penDegrees_;
    Point reach_;
};

} // namespace pictures
