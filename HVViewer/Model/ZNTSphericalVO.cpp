#include "HVViewer/Model/ZNTSphericalVO.h"

#include "HVViewer/Utilities/ZNTMath.h"

#include <array>
#include <cmath>

namespace {

constexpr int kStepDegrees = 2;
constexpr int kRings = 180 / kStepDegrees;
constexpr int kSegments = 360 / kStepDegrees;
constexpr std::int32_t kNumberOfVertices = kRings * kSegments * 4;

/// The sine and cosine of every angle of the mesh: 181 pairs instead of half a million calls.
class AngleTable {
public:
    AngleTable() {
        for (std::size_t i = 0; i < sines_.size(); ++i) {
            const double radians = DegToRad(static_cast<double>(i) * kStepDegrees);
            sines_[i] = std::sin(radians);
            cosines_[i] = std::cos(radians);
        }
    }
    [[nodiscard]] double sine(int step) const { return sines_[static_cast<std::size_t>(step)]; }
    [[nodiscard]] double cosine(int step) const { return cosines_[static_cast<std::size_t>(step)]; }

private:
    std::array<double, kSegments + 1> sines_{};
    std::array<double, kSegments + 1> cosines_{};
};

/// Appends vertices in the order of the strip.
class StripWriter {
public:
    explicit StripWriter(const MeshArrays::Mesh& mesh)
        : vertex_(mesh.vertices), texCoord_(mesh.texCoords) {}

    void add(int thetaStep, int phiStep) {
        *vertex_++ = static_cast<float>(-angles_.sine(thetaStep) * angles_.sine(phiStep));
        *vertex_++ = static_cast<float>(-angles_.cosine(thetaStep) * angles_.sine(phiStep));
        *vertex_++ = static_cast<float>(-angles_.cosine(phiStep));
        *texCoord_++ = static_cast<float>(thetaStep * kStepDegrees) / 360.0F;
        *texCoord_++ = 2.0F * static_cast<float>(phiStep * kStepDegrees) / 360.0F;
    }

private:
    AngleTable angles_;
    float* vertex_;
    float* texCoord_;
};

} // namespace

ZNTSphericalVO::ZNTSphericalVO() {
    ZNTSphericalVO::buildModel();
}

void ZNTSphericalVO::buildModel() {
    const MeshArrays::Mesh mesh = arrays_.allocate(kNumberOfVertices);
    StripWriter strip(mesh);
    for (int phi = 0; phi < kRings; ++phi) {
        for (int theta = 0; theta < kSegments; ++theta) {
            strip.add(theta, phi);
            strip.add(theta, phi + 1);
            strip.add(theta + 1, phi);
            strip.add(theta + 1, phi + 1);
        }
    }
    setModel(mesh.model());
}
