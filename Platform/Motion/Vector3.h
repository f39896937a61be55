#pragma once

namespace platform {

/// A vector in double precision; its user defines axes and units.
struct Vector3 {
    double x = 0;
    double y = 0;
    double z = 0;
    friend bool operator==(const Vector3&, const Vector3&) = default;
};

} // namespace platform
