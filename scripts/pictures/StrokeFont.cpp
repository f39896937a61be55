#include "StrokeFont.h"

#include <cmath>
#include <limits>
#include <map>
#include <sstream>
#include <string>

namespace pictures {
namespace {

constexpr double kLetterGap = 0.26;
constexpr double kArcStepDegrees = 7.5;

/// A path is a list of commands and begins with the pen lifted: `P x y` moves to a point, `A cx cy
/// rx ry from to` follows an elliptical arc between two angles in degrees, and `U` lifts the pen.
struct Glyph {
    double width = 0.0;
    const char* path = "";
};

const std::map<char32_t, Glyph>& glyphs() {
    static const std::map<char32_t, Glyph> table{
        {U'Z', {0.56, "P 0 1 P .56 1 P 0 0 P .56 0"}},
        {U'A', {0.68, "P 0 0 P .34 1 P .68 0 U P .109 .32 P .571 .32"}},
        {U'N', {0.60, "P 0 0 P 0 1 P .6 0 P .6 1"}},
        {U'T', {0.60, "P 0 1 P .6 1 U P .3 1 P .3 0"}},
        {U'O', {0.76, "A .38 .5 .38 .5 0 360"}},
        {U'E', {0.52, "P .52 1 P 0 1 P 0 0 P .52 0 U P 0 .52 P .46 .52"}},
        {U'S', {0.60, "A .3 .755 .28 .245 25 270 A .3 .255 .3 .255 90 -155"}},
        {U'W', {1.00, "P 0 1 P .25 0 P .5 .92 P .75 0 P 1 1"}},
        {U'0', {0.58, "A .29 .5 .29 .5 0 360"}},
        {U'1', {0.30, "P 0 .78 P .26 1 P .26 0"}},
        {U'2', {0.56, "A .28 .72 .28 .28 165 -35 P 0 0 P .56 0"}},
        {U'3', {0.55, "A .27 .76 .25 .24 155 -90 A .27 .26 .28 .26 90 -155"}},
        {U'4', {0.58, "P .43 0 P .43 1 P 0 .29 P .58 .29"}},
        {U'5', {0.56, "P .5 1 P .09 1 P .065 .546 A .27 .32 .29 .32 135 -150"}},
        {U'6', {0.56, "A .28 .31 .28 .31 0 360 U A .5 .31 .5 .69 180 97"}},
        {U'7', {0.55, "P 0 1 P .55 1 P .18 0"}},
        {U'8', {0.56, "A .28 .76 .24 .24 0 360 U A .28 .26 .28 .26 0 360"}},
        {U'9', {0.56, "A .28 .69 .28 .31 0 360 U A .06 .69 .5 .69 0 -83"}},
        {U'\u00b0', {0.30, "A .15 .86 .14 .14 0 360"}},
        {U'-', {0.42, "P 0 .46 P .42 .46"}},
    };
    return table;
}

class Pen {
public:
    Pen(std::vector<Segment>& strokes, double left) : strokes_(strokes), left_(left) {}

    void lift() { isDown_ = false; }

    void moveTo(const Point& point) {
        const Point next{point.x + left_, point.y};
        if (isDown_) {
            strokes_.push_back({position_, next});
        }
        position_ = next;
        isDown_ = true;
    }

    void followArc(const Point& centre, const Point& radii, double from, double to) {
        const int steps = static_cast<int>(std::ceil(std::abs(to - from) / kArcStepDegrees));
        for (int step = 0; step <= steps; ++step) {
            const double angle = (from + (to - from) * step / steps) * kRadiansPerDegree;
            moveTo({centre.x + radii.x * std::cos(angle), centre.y + radii.y * std::sin(angle)});
        }
    }

private:
    std::vector<Segment>& strokes_;
    double left_;
    Point position_;
    bool isDown_ = false;
};

void draw(const Glyph& glyph, double left, std::vector<Segment>& strokes) {
    Pen pen(strokes, left);
    std::istringstream path(glyph.path);
    for (char move = 0; path >> move;) {
        Point first;
        Point second;
        double from = 0.0;
        double to = 0.0;
        if (move == 'U') {
            pen.lift();
        } else if (move == 'P' && path >> first.x >> first.y) {
            pen.moveTo(first);
        } else if (path >> first.x >> first.y >> second.x >> second.y >> from >> to) {
            pen.followArc(first, second, from, to);
        }
    }
}

double distanceToSegment(const Segment& segment, const Point& point) {
    const double dx = segment.to.x - segment.from.x;
    const double dy = segment.to.y - segment.from.y;
    const double px = point.x - segment.from.x;
    const double py = point.y - segment.from.y;
    const double lengthSquared = dx * dx + dy * dy;
    const double along =
        lengthSquared > 0.0 ? std::clamp((px * dx + py * dy) / lengthSquared, 0.0, 1.0) : 0.0;
    return std::hypot(px - along * dx, py - along * dy);
}

} // namespace

std::vector<Segment> textStrokes(std::u32string_view text) {
    std::vector<Segment> strokes;
    double left = 0.0;
    for (const char32_t character : text) {
        const Glyph& glyph = glyphs().at(character);
        draw(glyph, left, strokes);
        left += glyph.width + kLetterGap;
    }
    const double centre = (left - kLetterGap) / 2.0;
    for (Segment& stroke : strokes) {
        stroke = {{stroke.from.x - centre, stroke.from.y - 0.5},
                  {stroke.to.x - centre, stroke.to.y - 0.5}};
    }
    return strokes;
}

double distanceToStrokes(std::span<const Segment> strokes, const Point& point) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const Segment& stroke : strokes) {
        nearest = std::min(nearest, distanceToSegment(stroke, point));
    }
    return nearest;
}

} // namespace pictures
