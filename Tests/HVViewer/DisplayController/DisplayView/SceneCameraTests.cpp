#include "HVViewer/DisplayController/DisplayView/SceneCamera.h"
#include "HVViewer/Utilities/ZNTMath.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <random>

using platform::InterfaceOrientation;

namespace {

constexpr double kPi = 3.141592653589793;
constexpr std::array kOrientations{
    InterfaceOrientation::Portrait, InterfaceOrientation::PortraitUpsideDown,
    InterfaceOrientation::LandscapeRight, InterfaceOrientation::LandscapeLeft};

/// A 4 × 4 matrix in double precision, column-major, worked out without the library.
using Matrix = std::array<double, 16>;

Matrix times(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t c = 0; c < 4; ++c) {
        for (std::size_t r = 0; r < 4; ++r) {
            for (std::size_t k = 0; k < 4; ++k)
                product[4 * c + r] += a[4 * k + r] * b[4 * c + k];
        }
    }
    return product;
}

Matrix aboutX(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1};
}

Matrix aboutZ(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

Matrix moved(double x, double y, double z) {
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
}

Matrix perspective(double fovy, double aspect, double nearZ, double farZ) {
    const double f = 1 / std::tan(fovy / 2);
    return {f / aspect,
            0,
            0,
            0,
            0,
            f,
            0,
            0,
            0,
            0,
            (farZ + nearZ) / (nearZ - farZ),
            -1,
            0,
            0,
            2 * farZ * nearZ / (nearZ - farZ),
            0};
}

GLKMatrix4 narrowed(const Matrix& matrix) {
    GLKMatrix4 result{};
    for (std::size_t i = 0; i < 16; ++i)
        result.m[i] = static_cast<float>(matrix[i]);
    return result;
}

void expectNear(const GLKMatrix4& actual, const Matrix& expected) {
    for (std::size_t i = 0; i < 16; ++i)
        ASSERT_NEAR(static_cast<double>(actual.m[i]), expected[i], 2e-5) << "element " << i;
}

/// Inputs with nothing at rest, so that a matrix in the wrong place shows.
struct RandomInputs {
    explicit RandomInputs(std::mt19937& random) {
        std::uniform_real_distribution<double> angle(-kPi, kPi);
        view = aboutX(angle(random));
        rotation = aboutZ(angle(random));
        motion = times(aboutX(angle(random)), aboutZ(angle(random)));
        translation = moved(angle(random) / 10, angle(random) / 10, 0);
        offset = angle(random);
        std::uniform_real_distribution<double> side(50, 2000);
        inputs.size = {side(random), side(random)};
        inputs.farZ = 2.1F;
        inputs.scale = std::uniform_real_distribution<double>(0.6, 3)(random);
        inputs.view = narrowed(view);
        inputs.rotation = narrowed(rotation);
        inputs.translation = narrowed(translation);
        inputs.rotationOffset = static_cast<float>(offset);
    }
    [[nodiscard]] Matrix lens(double degrees, double distance) const {
        return times(perspective(degrees / 180 * kPi / inputs.scale,
                                 inputs.size.width / inputs.size.height, NearZ, inputs.farZ),
                     moved(0, 0, distance));
    }

    SceneCameraInputs inputs;
    Matrix view, rotation, motion, translation;
    double offset;
};

struct ModeFacts {
    DisplayMode mode;
    InterfaceOrientation orientation;
    double degrees;
    double distance;
};

constexpr double kFar = 2.1F;
constexpr std::array kFacts{
    ModeFacts{DisplayMode::Plane, InterfaceOrientation::Portrait, 70, -1 / kFar},
    ModeFacts{DisplayMode::Plane, InterfaceOrientation::LandscapeLeft, 70, -1 / kFar},
    ModeFacts{DisplayMode::Sphere, InterfaceOrientation::Portrait, 70, 0},
    ModeFacts{DisplayMode::Sphere, InterfaceOrientation::LandscapeRight, 70, 0.40312},
    ModeFacts{DisplayMode::LittlePlanet, InterfaceOrientation::PortraitUpsideDown, 115, -0.9F},
    ModeFacts{DisplayMode::LittlePlanet, InterfaceOrientation::LandscapeRight, 105, -0.9F},
    ModeFacts{DisplayMode::SideBySide, InterfaceOrientation::LandscapeRight, 70, 0},
    ModeFacts{DisplayMode::SideBySide, InterfaceOrientation::Portrait, 70, 0}};

} // namespace

TEST(FieldOfView, IsWiderForTheLittlePlanetAndWidestInPortrait) {
    for (const auto orientation : kOrientations) {
        const bool portrait = platform::isPortrait(orientation);
        EXPECT_EQ(fieldOfViewDegrees(DisplayMode::Plane, orientation), 70.0);
        EXPECT_EQ(fieldOfViewDegrees(DisplayMode::Sphere, orientation), 70.0);
        EXPECT_EQ(fieldOfViewDegrees(DisplayMode::LittlePlanet, orientation),
                  portrait ? 115.0 : 105.0);
        EXPECT_EQ(fieldOfViewDegrees(DisplayMode::SideBySide, orientation), 70.0);
    }
}

TEST(CameraDistance, IsExactlyTheModes) {
    for (const auto orientation : kOrientations) {
        const bool portrait = platform::isPortrait(orientation);
        EXPECT_EQ(cameraDistance(DisplayMode::Plane, orientation, kFar), -(1.0 / kFar));
        EXPECT_EQ(cameraDistance(DisplayMode::Sphere, orientation, kFar), portrait ? 0.0 : 0.40312);
        EXPECT_EQ(cameraDistance(DisplayMode::LittlePlanet, orientation, kFar),
                  -0.8999999761581421);
        EXPECT_EQ(cameraDistance(DisplayMode::SideBySide, orientation, kFar), 0.0);
    }
}

TEST(SceneCamera, ComposesTheModesWithoutMotion) {
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        RandomInputs it(random);
        for (const ModeFacts& facts : kFacts) {
            it.inputs.mode = facts.mode;
            it.inputs.orientation = facts.orientation;
            const bool plane = facts.mode == DisplayMode::Plane;
            const Matrix view = plane ? it.view : times(it.view, aboutX(-kPi / 2));
            const Matrix rotation = times(plane ? it.translation : it.rotation, aboutZ(it.offset));
            const SceneCamera camera = composeCamera(it.inputs);
            EXPECT_EQ(camera.fieldOfViewDegrees, facts.degrees);
            EXPECT_EQ(camera.distance, facts.distance);
            EXPECT_EQ(camera.aspect, it.inputs.size.width / it.inputs.size.height);
            expectNear(camera.modelViewProjection,
                       times(times(it.lens(facts.degrees, facts.distance), view), rotation));
        }
    }
}

TEST(SceneCamera, PutsTheAttitudeInFrontAndTurnsNothingWithMotion) {
    std::mt19937 random(11);
    for (int round = 0; round < 500; ++round) {
        RandomInputs it(random);
        it.inputs.motion = narrowed(it.motion);
        for (const ModeFacts& facts : kFacts) {
            it.inputs.mode = facts.mode;
            it.inputs.orientation = facts.orientation;
            const Matrix rotation = times(times(it.motion, it.rotation), aboutZ(it.offset));
            const SceneCamera camera = composeCamera(it.inputs);
            expectNear(camera.modelViewProjection,
                       times(times(it.lens(facts.degrees, facts.distance), it.view), rotation));
        }
    }
}

TEST(SceneCamera, CarriesANaNThroughWithoutHarm) {
    std::mt19937 random(13);
    RandomInputs it(random);
    it.inputs.motion = GLKMatrix4MakeWithQuaternion(GLKQuaternionMake(0, 0, 0, 0));
    EXPECT_TRUE(containsNaN(composeCamera(it.inputs).modelViewProjection));
}
