#pragma once

#include "Platform/Foundation/InterfaceOrientation.h"
#include "Platform/Motion/AttitudeSource.h"
#include "Platform/Motion/Vector3.h"

#include <algorithm>
#include <cmath>
#include <numbers>

// Rotations as unit quaternions, and the vectors that they rotate.
//
// Thread: any; thread-safe. All functions are pure.
namespace platform {

[[nodiscard]] constexpr Vector3 operator+(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
[[nodiscard]] constexpr Vector3 operator-(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
[[nodiscard]] constexpr Vector3 operator*(double factor, const Vector3& a) {
    return {factor * a.x, factor * a.y, factor * a.z};
}
[[nodiscard]] constexpr double dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
[[nodiscard]] constexpr Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
[[nodiscard]] inline double length(const Vector3& a) {
    return std::hypot(a.x, a.y, a.z);
}

/// To be checked before `length`, which may miss an element that is NaN.
[[nodiscard]] inline bool isFinite(const Vector3& a) {
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

/// The rotation that applies `second` first and then `first`.
[[nodiscard]] constexpr Attitude operator*(const Attitude& first, const Attitude& second) {
    const Vector3 a{first.x, first.y, first.z};
    const Vector3 b{second.x, second.y, second.z};
    const Vector3 v = first.w * b + second.w * a + cross(a, b);
    return {v.x, v.y, v.z, first.w * second.w - dot(a, b)};
}
[[nodiscard]] constexpr Attitude inverse(const Attitude& turn) {
    return {-turn.x, -turn.y, -turn.z, turn.w};
}
[[nodiscard]] constexpr Vector3 rotate(const Attitude& turn, const Vector3& a) {
    const Vector3 v{turn.x, turn.y, turn.z};
    const Vector3 twice = 2.0 * cross(v, a);
    return a + turn.w * twice + cross(v, twice);
}
/// Returns the rotation with unit length. Dividing by the largest element first prevents an
/// overflow.
[[nodiscard]] inline Attitude normalized(const Attitude& turn) {
    const double largest =
        std::max({std::abs(turn.x), std::abs(turn.y), std::abs(turn.z), std::abs(turn.w)});
    const Attitude a{turn.x / largest, turn.y / largest, turn.z / largest, turn.w / largest};
    const double size = std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z + a.w * a.w);
    return {a.x / size, a.y / size, a.z / size, a.w / size};
}

/// The rotation about the vector by its length in radians.
[[nodiscard]] inline Attitude turnAbout(const Vector3& radians) {
    const double angle = length(radians);
    // sin(angle / 2) / angle, or the first term of its series where the quotient would be 0 / 0.
    const double factor = angle > 1e-6 ? std::sin(angle / 2) / angle : 0.5;
    const Vector3 v = factor * radians;
    return {v.x, v.y, v.z, std::cos(angle / 2)};
}

/// The smallest rotation of one unit vector into another. For opposite vectors it is about
/// `fallback`, which is perpendicular to both and of unit length.
[[nodiscard]] inline Attitude turnBetween(const Vector3& from, const Vector3& to,
                                          const Vector3& fallback) {
    const double w = 1 + dot(from, to);
    if (w < 1e-9)
        return {fallback.x, fallback.y, fallback.z, 0};
    const Vector3 axis = cross(from, to);
    return normalized({axis.x, axis.y, axis.z, w});
}

/// The angle by which a device is rotated about its own z axis, which points out of the screen,
/// relative to portrait, while its interface is upright in an orientation.
[[nodiscard]] constexpr double rollOf(InterfaceOrientation orientation) {
    constexpr double quarterTurn = std::numbers::pi / 2;
    switch (orientation) {
    case InterfaceOrientation::LandscapeLeft:
        return -quarterTurn;
    case InterfaceOrientation::LandscapeRight:
        return quarterTurn;
    case InterfaceOrientation::PortraitUpsideDown:
        return 2 * quarterTurn;
    case InterfaceOrientation::Portrait:
    case InterfaceOrientation::Unknown:
        break;
    }
    return 0;
}

} // namespace platform
