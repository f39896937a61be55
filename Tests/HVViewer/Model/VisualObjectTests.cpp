#include "HVViewer/Model/ZNTHotSpotPlaneVO.h"
#include "HVViewer/Model/ZNTPlaneVO.h"
#include "HVViewer/Model/ZNTSphericalVO.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Foundation/Screen.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr double kPi = 3.141592653589793;

struct Vertex {
    float x, y, z, u, v;
};

Vertex vertexAt(const VisualObjectModel& model, std::ptrdiff_t index) {
    const float* position = model.vertices + index * 3;
    const float* texCoord = model.texCoords + index * 2;
    return {position[0], position[1], position[2], texCoord[0], texCoord[1]};
}

/// The point of the unit sphere for two angles in degrees, as the mesh's arithmetic has it.
void expectSphereVertex(const Vertex& vertex, double theta, double phi) {
    const double t = theta / 180.0 * kPi;
    const double p = phi / 180.0 * kPi;
    EXPECT_EQ(vertex.x, static_cast<float>(-std::sin(t) * std::sin(p))) << theta << ", " << phi;
    EXPECT_EQ(vertex.y, static_cast<float>(-std::cos(t) * std::sin(p))) << theta << ", " << phi;
    EXPECT_EQ(vertex.z, static_cast<float>(-std::cos(p))) << theta << ", " << phi;
    EXPECT_EQ(vertex.u, static_cast<float>(theta) / 360.0F) << theta;
    EXPECT_EQ(vertex.v, 2.0F * static_cast<float>(phi) / 360.0F) << phi;
}

void expectPlane(const VisualObjectModel& model, float h) {
    constexpr float a = 0.0001F;
    constexpr float b = 0.9999F;
    const std::array<Vertex, 6> expected{{{-0.5F, h, 0, a, b},
                                          {0.5F, h, 0, b, b},
                                          {0.5F, -h, 0, b, a},
                                          {-0.5F, h, 0, a, b},
                                          {-0.5F, -h, 0, a, a},
                                          {0.5F, -h, 0, b, a}}};
    ASSERT_EQ(model.numberOfVertices, 6);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const Vertex vertex = vertexAt(model, static_cast<std::ptrdiff_t>(i));
        EXPECT_EQ(vertex.x, expected[i].x) << i;
        EXPECT_EQ(vertex.y, expected[i].y) << i;
        EXPECT_EQ(vertex.z, 0.0F) << i;
        EXPECT_EQ(vertex.u, expected[i].u) << i;
        EXPECT_EQ(vertex.v, expected[i].v) << i;
    }
}

void setNativeSize(double width, double height) {
    platform::Screen::mainScreen().setSize({width, height}, 1);
}

} // namespace

TEST(SphericalVO, HasTheOrderOfTheStrip) {
    const ZNTSphericalVO sphere;
    const VisualObjectModel model = sphere.model();
    ASSERT_EQ(model.numberOfVertices, 64800);
    std::ptrdiff_t index = 0;
    for (int phi = 0; phi <= 178; phi += 2) {
        for (int theta = 0; theta <= 358; theta += 2) {
            expectSphereVertex(vertexAt(model, index++), theta, phi);
            expectSphereVertex(vertexAt(model, index++), theta, phi + 2);
            expectSphereVertex(vertexAt(model, index++), theta + 2, phi);
            expectSphereVertex(vertexAt(model, index++), theta + 2, phi + 2);
        }
    }
    EXPECT_EQ(index, 64800);
}

TEST(SphericalVO, BeginsAtTheLowerPole) {
    const ZNTSphericalVO sphere;
    const Vertex first = vertexAt(sphere.model(), 0);
    EXPECT_EQ(first.x, 0.0F);
    EXPECT_EQ(first.y, 0.0F);
    EXPECT_EQ(first.z, -1.0F);
    EXPECT_EQ(first.u, 0.0F);
    EXPECT_EQ(first.v, 0.0F);
    const Vertex second = vertexAt(sphere.model(), 1);
    EXPECT_EQ(second.y, static_cast<float>(-std::sin(DegToRad(2))));
    EXPECT_EQ(second.z, static_cast<float>(-std::cos(DegToRad(2))));
    EXPECT_EQ(second.v, 2.0F * 2.0F / 360.0F);
}

TEST(SphericalVO, EndsAtTheUpperPole) {
    const ZNTSphericalVO sphere;
    const Vertex last = vertexAt(sphere.model(), 64799);
    EXPECT_NEAR(last.x, 0, 1e-7);
    EXPECT_NEAR(last.y, 0, 1e-7);
    EXPECT_EQ(last.z, 1.0F);
    EXPECT_EQ(last.u, 1.0F);
    EXPECT_EQ(last.v, 1.0F);
}

TEST(SphericalVO, LiesAtDistanceOne) {
    const ZNTSphericalVO sphere;
    for (std::ptrdiff_t i = 0; i < sphere.model().numberOfVertices; ++i) {
        const Vertex vertex = vertexAt(sphere.model(), i);
        ASSERT_NEAR(std::hypot(vertex.x, vertex.y, vertex.z), 1.0F, 1e-6F) << i;
    }
}

TEST(SphericalVO, SharesNothingWithAnother) {
    const ZNTSphericalVO one;
    const ZNTSphericalVO other;
    EXPECT_NE(one.model().vertices, other.model().vertices);
    EXPECT_NE(one.model().texCoords, other.model().texCoords);
}

TEST(VisualObject, KeepsEarlierMeshesForRecordsThatWereCopiedOut) {
    ZNTSphericalVO sphere;
    const VisualObjectModel copied = sphere.model();
    sphere.buildModel();
    EXPECT_NE(sphere.model().vertices, copied.vertices);
    expectSphereVertex(vertexAt(copied, 64799), 360, 180);
}

TEST(VisualObject, TakesAModelByValue) {
    ZNTPlaneVO plane;
    const VisualObjectModel other{nullptr, nullptr, 3};
    plane.setModel(other);
    EXPECT_EQ(plane.model().numberOfVertices, 3);
}

TEST(PlaneVO, HasTheScreensShape) {
    setNativeSize(1080, 1920);
    expectPlane(ZNTPlaneVO().model(), 0.28125F);
    setNativeSize(1125, 2436);
    expectPlane(ZNTPlaneVO().model(), static_cast<float>(1125.0F / 2436.0F / 2.0));
}

TEST(PlaneVO, IsTheSameWhicheverWayTheScreenIsHeld) {
    setNativeSize(1920, 1080);
    expectPlane(ZNTPlaneVO().model(), 0.28125F);
}

TEST(PlaneVO, KeepsItsShapeWhenTheScreenChanges) {
    setNativeSize(1080, 1920);
    const ZNTPlaneVO plane;
    setNativeSize(1536, 2048);
    expectPlane(plane.model(), 0.28125F);
}

TEST(HotSpotPlaneVO, IsTwiceAsTallAsThePlane) {
    setNativeSize(1080, 1920);
    expectPlane(ZNTHotSpotPlaneVO().model(), 0.5625F);
}
