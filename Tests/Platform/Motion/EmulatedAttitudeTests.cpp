#include "Platform/Graphics/GLKMath.h"
#include "Platform/Motion/EmulatedAttitude.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>

using namespace platform;

namespace {

constexpr double kPi = std::numbers::pi;

/// The rotation that the viewer makes of an attitude: the inverse, in the axes of the interface.
GLKMatrix4 viewerMatrix(const Attitude& attitude, InterfaceOrientation orientation) {
    const auto x = static_cast<float>(attitude.x);
    const auto y = static_cast<float>(attitude.y);
    const auto z = static_cast<float>(attitude.z);
    const auto w = static_cast<float>(attitude.w);
    const auto turned = [](const GLKQuaternion& inverse, double radians) {
        return GLKMatrix4Rotate(GLKMatrix4MakeWithQuaternion(inverse), static_cast<float>(radians),
                                0, 0, 1);
    };
    switch (orientation) {
    case InterfaceOrientation::LandscapeLeft:
        return turned(GLKQuaternionMake(-y, x, -z, w), -kPi / 2);
    case InterfaceOrientation::LandscapeRight:
        return turned(GLKQuaternionMake(y, -x, -z, w), kPi / 2);
    case InterfaceOrientation::PortraitUpsideDown:
        return turned(GLKQuaternionMake(x, y, -z, w), kPi);
    default:
        return GLKMatrix4MakeWithQuaternion(GLKQuaternionMake(-x, -y, -z, w));
    }
}

constexpr GLKVector4 kRight{1, 0, 0, 0};
constexpr GLKVector4 kAhead{0, 1, 0, 0};
constexpr GLKVector4 kUp{0, 0, 1, 0};

struct Expected {
    double x, y, z;
};

/// Where a direction of the sphere lands in the eye's space (x right, y up, -z ahead) in every
/// orientation.
void expectSeen(const EmulatedAttitude& device, GLKVector4 direction, Expected expected) {
    for (int number = 0; number <= 4; ++number) {
        const auto orientation = static_cast<InterfaceOrientation>(number);
        const GLKVector4 seen = GLKMatrix4MultiplyVector4(
            viewerMatrix(device.attitude(orientation), orientation), direction);
        const std::string where = "orientation " + std::to_string(number);
        EXPECT_NEAR(seen.v[0], expected.x, 1e-6) << where;
        EXPECT_NEAR(seen.v[1], expected.y, 1e-6) << where;
        EXPECT_NEAR(seen.v[2], expected.z, 1e-6) << where;
    }
}

} // namespace

TEST(EmulatedAttitude, LooksAheadAndLevelAtFirstHoweverItIsHeld) {
    const EmulatedAttitude device;
    expectSeen(device, kAhead, {0, 0, -1});
    expectSeen(device, kUp, {0, 1, 0});
    expectSeen(device, kRight, {1, 0, 0});
}

TEST(EmulatedAttitude, LooksToTheRightAfterAPositiveYaw) {
    EmulatedAttitude device;
    device.turnBy(kPi / 6, 0);
    expectSeen(device, kAhead, {-0.5, 0, -std::sqrt(0.75)});
    expectSeen(device, kUp, {0, 1, 0});
    expectSeen(device, kRight, {std::sqrt(0.75), 0, -0.5});
}

TEST(EmulatedAttitude, LooksUpAfterAPositivePitch) {
    EmulatedAttitude device;
    device.turnBy(0, kPi / 6);
    expectSeen(device, kAhead, {0, -0.5, -std::sqrt(0.75)});
    expectSeen(device, kUp, {0, std::sqrt(0.75), -0.5});
    expectSeen(device, kRight, {1, 0, 0});
}

TEST(EmulatedAttitude, PitchesAboutTheLevelWhereverItLooks) {
    EmulatedAttitude device;
    device.turnBy(kPi / 2, kPi / 6);
    expectSeen(device, kRight, {0, -0.5, -std::sqrt(0.75)});
    expectSeen(device, kAhead, {-1, 0, 0});
}

TEST(EmulatedAttitude, AddsItsTurnsUp) {
    EmulatedAttitude device;
    device.turnBy(0.1, 0.2);
    device.turnBy(0.3, -0.5);
    EXPECT_DOUBLE_EQ(device.yaw(), 0.4);
    EXPECT_DOUBLE_EQ(device.pitch(), -0.3);
}

TEST(EmulatedAttitude, PitchesNoFurtherThanTheZenithAndTheNadir) {
    EmulatedAttitude device;
    device.turnBy(0, 5);
    EXPECT_DOUBLE_EQ(device.pitch(), kPi / 2);
    expectSeen(device, kUp, {0, 0, -1});
    device.turnBy(0, -20);
    EXPECT_DOUBLE_EQ(device.pitch(), -kPi / 2);
    expectSeen(device, kUp, {0, 0, 1});
}

TEST(EmulatedAttitude, KeepsItsYawWithinHalfATurn) {
    EmulatedAttitude device;
    for (int i = 0; i < 5; ++i)
        device.turnBy(1, 0);
    EXPECT_NEAR(device.yaw(), 5 - 2 * kPi, 1e-12);
}

TEST(EmulatedAttitude, IgnoresAnglesThatAreNotFinite) {
    EmulatedAttitude device;
    device.turnBy(0.1, 0.2);
    device.turnBy(std::numeric_limits<double>::quiet_NaN(), 0.1);
    device.turnBy(0.1, std::numeric_limits<double>::infinity());
    EXPECT_DOUBLE_EQ(device.yaw(), 0.1);
    EXPECT_DOUBLE_EQ(device.pitch(), 0.2);
}

TEST(EmulatedAttitude, GivesUnitQuaternions) {
    EmulatedAttitude device;
    device.turnBy(1.1, -0.7);
    const Attitude a = device.attitude(InterfaceOrientation::LandscapeRight);
    EXPECT_NEAR(a.x * a.x + a.y * a.y + a.z * a.z + a.w * a.w, 1, 1e-12);
}
