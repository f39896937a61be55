#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

/// Geometry shared by the generated images.
///
/// Row 0 of an equirectangular image looks at the zenith, and the middle column looks north; yaw
/// grows to the east, which is to the right when seen from the centre. Directions are unit vectors
/// with x east, y up and z south.
namespace pictures {

inline constexpr int kWidthPx = 4096;
inline constexpr int kHeightPx = 2048;
inline constexpr double kPixelDegrees = 360.0 / kWidthPx;
inline constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

struct Point {
    double x = 0.0;
    double y = 0.0;
};

struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

struct Heading {
    double yawDegrees = 0.0;
    double pitchDegrees = 0.0;
};

constexpr Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

constexpr Vec3 operator*(const Vec3& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}

constexpr double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Heading headingOfPixel(int column, int row) {
    return {(column + 0.5) * kPixelDegrees - 180.0, 90.0 - (row + 0.5) * kPixelDegrees};
}

inline Vec3 directionOf(const Heading& heading) {
    const double yaw = heading.yawDegrees * kRadiansPerDegree;
    const double pitch = heading.pitchDegrees * kRadiansPerDegree;
    return {std::sin(yaw) * std::cos(pitch), std::sin(pitch), -std::cos(yaw) * std::cos(pitch)};
}

inline double angleDegreesBetween(const Vec3& a, const Vec3& b) {
    return std::acos(std::clamp(dot(a, b), -1.0, 1.0)) / kRadiansPerDegree;
}

/// The coverage of a pixel by a shape whose edge is `distanceDegrees` away (negative inside).
inline double coverage(double distanceDegrees) {
    return std::clamp(0.5 - distanceDegrees / kPixelDegrees, 0.0, 1.0);
}

inline double smoothStep(double from, double to, double value) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

/// The plane that touches the sphere at `centre`: flat drawings in it look undistorted from the
/// sphere's centre. Coordinates are in degrees as measured at the tangent point, x to the right and
/// y up.
class TangentPlane {
public:
    explicit TangentPlane(const Heading& centre)
        : normal_(directionOf(centre)), right_(directionOf({centre.yawDegrees + 90.0, 0.0})),
          up_(directionOf({centre.yawDegrees, centre.pitchDegrees + 90.0})) {}

    /// nullopt for a direction that points away from the plane.
    [[nodiscard]] std::optional<Point> project(const Vec3& direction) const {
        const double depth = dot(direction, normal_);
        if (depth < 0.1) {
            return std::nullopt;
        }
        const double scale = 1.0 / (depth * kRadiansPerDegree);
        return Point{dot(direction, right_) * scale, dot(direction, up_) * scale};
    }

private:
    Vec3 normal_;
    Vec3 right_;
    Vec3 up_;
};

} // namespace pictures
