#include "HVViewer/Model/VisibleQuads.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kStep = kPi / QuadMask::kRings; // the step of the azimuth, too
constexpr int kVertexRings = QuadMask::kRings + 1;

/// In sphere radii. The margin is much larger than the rounding errors of single precision, and a
/// fraction of the size of a quad.
constexpr double kMargin = 1e-3;

/// A frustum plane in model space. Points inside have `x·X + y·Y + z·Z + w >= 0`.
struct ViewPlane {
    double x, y, z, w;
};

/// The row of the matrix that computes clip coordinate `r`.
ViewPlane row(const GLKMatrix4& m, std::size_t r) {
    return {m.m[r], m.m[4 + r], m.m[8 + r], m.m[12 + r]};
}

ViewPlane combined(const ViewPlane& w, const ViewPlane& other, double sign) {
    const ViewPlane plane{w.x + sign * other.x, w.y + sign * other.y, w.z + sign * other.z,
                          w.w + sign * other.w};
    const double length = std::hypot(plane.x, plane.y, plane.z);
    return {plane.x / length, plane.y / length, plane.z / length, plane.w / length};
}

/// The left, right, bottom, top, near and far planes: clip coordinates are between -w and w.
std::array<ViewPlane, 6> viewPlanes(const GLKMatrix4& m) {
    const ViewPlane w = row(m, 3);
    return {combined(w, row(m, 0), 1),  combined(w, row(m, 0), -1), combined(w, row(m, 1), 1),
            combined(w, row(m, 1), -1), combined(w, row(m, 2), 1),  combined(w, row(m, 2), -1)};
}

struct PolarTable {
    PolarTable() {
        for (std::size_t i = 0; i < sine.size(); ++i) {
            sine[i] = std::sin(static_cast<double>(i) * kStep);
            cosine[i] = std::cos(static_cast<double>(i) * kStep);
        }
    }
    std::array<double, kVertexRings> sine{};
    std::array<double, kVertexRings> cosine{};
};

/// Clears the quads that lie outside of one frustum plane.
class PlaneCut {
public:
    explicit PlaneCut(const ViewPlane& plane)
        : plane_(plane), reach_(std::hypot(plane.x, plane.y)),
          azimuth_(std::atan2(plane.x, plane.y)) {
        for (int i = 0; i < kVertexRings; ++i)
            halfAngles_[static_cast<std::size_t>(i)] =
                outsideHalfAngle(static_cast<std::size_t>(i));
    }

    void apply(QuadMask& mask) const {
        for (int i = 0; i < QuadMask::kRings; ++i) {
            const auto ring = static_cast<std::size_t>(i);
            // A quad has corners on two rings of vertices, whose outside ranges have the same
            // centre azimuth.
            const double half = std::min(halfAngles_[ring], halfAngles_[ring + 1]);
            if (half <= 0)
                continue;
            if (half >= kPi) {
                mask.ring(i) = RingMask();
                continue;
            }
            const int first = static_cast<int>(std::ceil((azimuth_ - half) / kStep));
            const int last = static_cast<int>(std::floor((azimuth_ + half) / kStep));
            mask.ring(i).clearRange(first, last - first);
        }
    }

private:
    /// The vertices of a ring within this angle of `azimuth_` are outside: 0 for none, pi for all.
    [[nodiscard]] double outsideHalfAngle(std::size_t ring) const {
        static const PolarTable table;
        // Along the ring, the distance is `limit - span * cos(angle)`.
        const double span = reach_ * table.sine[ring];
        const double limit = plane_.w - plane_.z * table.cosine[ring] + kMargin;
        // The values of a degenerate plane are NaN. The negated comparison is true for them, so
        // that nothing is culled.
        if (!(span > limit))
            return 0;
        if (-span > limit)
            return kPi;
        return std::acos(limit / span);
    }

    ViewPlane plane_;
    double reach_;
    double azimuth_;
    std::array<double, kVertexRings> halfAngles_{};
};

bool isFinite(const GLKMatrix4& m) {
    return std::all_of(std::begin(m.m), std::end(m.m), [](float e) { return std::isfinite(e); });
}

} // namespace

QuadMask visibleQuads(const GLKMatrix4& modelViewProjection) {
    QuadMask mask = QuadMask::all();
    if (!isFinite(modelViewProjection))
        return mask;
    for (const ViewPlane& plane : viewPlanes(modelViewProjection))
        PlaneCut(plane).apply(mask);
    return mask;
}
