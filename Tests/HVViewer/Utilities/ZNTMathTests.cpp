#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Foundation/Screen.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <string>

namespace {

void setNativeSize(double width, double height) {
    platform::Screen::mainScreen().setSize({width, height}, 1);
}

} // namespace

TEST(ViewingConstants, AreStoredAsNamed) {
    EXPECT_EQ(ViewAngle, 70.0);
    EXPECT_EQ(ViewAngleLittlePlanet, 105.0);
    EXPECT_EQ(NearZ, 0.009999999776482582);
    EXPECT_EQ(VelocityDeltaCoef, 0.07999999821186066);
    EXPECT_EQ(VelocityDivideValue, 15.0);
    EXPECT_EQ(VelocityMinValue, 0.05);
}

TEST(FrameworkVersion, IsExported) {
    EXPECT_EQ(ZantoPlayerFrameworkVersionNumber, 1.0);
    EXPECT_STREQ(reinterpret_cast<const char*>(ZantoPlayerFrameworkVersionString),
                 "@(#)PROGRAM:ZantoPlayerFramework  PROJECT:HalvoraSDK-1\n");
}

TEST(Dlog, WritesTheFormattedText) {
    const LogRecorder log;
    Dlog("%s %d", "seconds", 12);
    const std::string longText(5000, 'x');
    Dlog("%s", longText.c_str());
    ASSERT_EQ(log.lines().size(), 2U);
    EXPECT_EQ(log.lines()[0], "seconds 12");
    EXPECT_EQ(log.lines()[1], longText);
}

TEST(DegToRad, DividesBeforeItMultiplies) {
    EXPECT_EQ(DegToRad(180.0), std::numbers::pi);
    EXPECT_EQ(DegToRad(2.0), (2.0 / 180.0) * std::numbers::pi);
    EXPECT_EQ(DegToRad(70.0), (70.0 / 180.0) * std::numbers::pi);
    EXPECT_EQ(DegToRad(-90.0), -std::numbers::pi / 2);
}

TEST(FarZ, FollowsTheShapeOfTheScreen) {
    setNativeSize(1080, 1920);
    EXPECT_EQ(FarZ(), 2.480600118637085);
    setNativeSize(1000, 1500);
    EXPECT_EQ(FarZ(), 2.0999999046325684);
    setNativeSize(1536, 2048);
    EXPECT_EQ(FarZ(), 1.899999976158142);
}

TEST(FarZ, ComparesStrictlyAtItsThresholds) {
    setNativeSize(1000, 1700);
    EXPECT_EQ(FarZ(), 2.480600118637085);
    setNativeSize(1000, 1600);
    EXPECT_EQ(FarZ(), 2.0999999046325684);
    // 12499026 / 2^23 is 1.49f to the last bit.
    setNativeSize(8388608, 12499026);
    ASSERT_EQ(12499026.0 / 8388608.0, static_cast<double>(1.49F));
    EXPECT_EQ(FarZ(), 2.480600118637085);
}

TEST(FarZ, IsTheSameWhicheverWayTheScreenIsHeld) {
    setNativeSize(1920, 1080);
    EXPECT_EQ(FarZ(), 2.480600118637085);
    setNativeSize(2048, 1536);
    EXPECT_EQ(FarZ(), 1.899999976158142);
}

TEST(ScreenSize, IsInPointsAsHeld) {
    platform::Screen::mainScreen().setSize({667, 375}, 2);
    EXPECT_EQ(screenWidth(), 667.0F);
    EXPECT_EQ(screenHeight(), 375.0F);
}

TEST(IsIdentityMatrix, HasNoTolerance) {
    EXPECT_TRUE(isIdentityMatrix(GLKMatrix4Identity));
    for (int i = 0; i < 16; ++i) {
        GLKMatrix4 matrix = GLKMatrix4Identity;
        matrix.m[i] += 1e-7F;
        EXPECT_FALSE(isIdentityMatrix(matrix)) << "element " << i;
    }
}

TEST(ContainsNaN, FindsItInAnyElement) {
    EXPECT_FALSE(containsNaN(GLKMatrix4Identity));
    for (int i = 0; i < 16; ++i) {
        GLKMatrix4 matrix = GLKMatrix4Identity;
        matrix.m[i] = std::numeric_limits<float>::quiet_NaN();
        EXPECT_TRUE(containsNaN(matrix)) << "element " << i;
        EXPECT_FALSE(isIdentityMatrix(matrix)) << "element " << i;
    }
}

TEST(ContainsNaN, DoesNotCountInfinities) {
    GLKMatrix4 matrix = GLKMatrix4Identity;
    matrix.m[5] = std::numeric_limits<float>::infinity();
    matrix.m[9] = -std::numeric_limits<float>::infinity();
    EXPECT_FALSE(containsNaN(matrix));
}

namespace {

struct Angles {
    float aboutY = 7;
    float aboutX = 7;
    float aboutZ = 7;
};

using Quaternion = std::array<float, 4>; // x, y, z, w

/// A rotation about x (0), y (1) or z (2).
Quaternion about(std::size_t axis, float radians) {
    Quaternion q{0, 0, 0, std::cos(radians / 2)};
    q[axis] = std::sin(radians / 2);
    return q;
}

Quaternion product(const Quaternion& a, const Quaternion& b) {
    return {a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1],
            a[3] * b[1] - a[0] * b[2] + a[1] * b[3] + a[2] * b[0],
            a[3] * b[2] + a[0] * b[1] - a[1] * b[0] + a[2] * b[3],
            a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2]};
}

Angles rotationOf(float x, float y, float z, float w) {
    Angles angles;
    getRotationFromGLKMat4(&angles.aboutY, &angles.aboutX, &angles.aboutZ,
                           GLKQuaternionMake(x, y, z, w));
    return angles;
}

} // namespace

TEST(RotationFromQuaternion, IsZeroForTheIdentity) {
    const Angles angles = rotationOf(0, 0, 0, 1);
    EXPECT_EQ(angles.aboutY, 0.0F);
    EXPECT_EQ(angles.aboutX, 0.0F);
    EXPECT_EQ(angles.aboutZ, 0.0F);
}

TEST(RotationFromQuaternion, GivesEachAxisToItsOutput) {
    const float s = std::sin(0.2F);
    const float c = std::cos(0.2F);
    EXPECT_NEAR(rotationOf(0, s, 0, c).aboutY, 0.4F, 1e-6F);
    EXPECT_NEAR(rotationOf(s, 0, 0, c).aboutX, 0.4F, 1e-6F);
    EXPECT_NEAR(rotationOf(0, 0, s, c).aboutZ, 0.4F, 1e-6F);
    EXPECT_NEAR(rotationOf(s, 0, 0, c).aboutZ, 0.0F, 1e-6F);
}

TEST(RotationFromQuaternion, TakesARotationAboutAllAxesApart) {
    for (const float aboutX : {-2.5F, -0.7F, 0.3F, 3.0F}) {
        for (const float aboutY : {-1.3F, -0.4F, 0.2F, 1.1F}) {
            for (const float aboutZ : {-2.8F, -0.9F, 0.6F, 2.2F}) {
                // About x first, then about y, then about z, all axes being fixed.
                const Quaternion q =
                    product(product(about(2, aboutZ), about(1, aboutY)), about(0, aboutX));
                const Angles angles = rotationOf(q[0], q[1], q[2], q[3]);
                EXPECT_NEAR(angles.aboutX, aboutX, 1e-5F);
                EXPECT_NEAR(angles.aboutY, aboutY, 1e-5F);
                EXPECT_NEAR(angles.aboutZ, aboutZ, 1e-5F);
            }
        }
    }
}

TEST(RotationFromQuaternion, DoesNotNormalizeTheQuaternion) {
    const Quaternion q = product(product(about(2, 0.6F), about(1, -0.4F)), about(0, 0.3F));
    const Angles angles = rotationOf(q[0] / 2, q[1] / 2, q[2] / 2, q[3] / 2);
    EXPECT_NEAR(angles.aboutX, 0.3F, 1e-6F) << "two ratios stay";
    EXPECT_NEAR(angles.aboutZ, 0.6F, 1e-6F);
    EXPECT_NEAR(angles.aboutY, std::asin(std::sin(-0.4F) / 4), 1e-6F);
}

TEST(RotationFromQuaternion, IsNotClamped) {
    EXPECT_TRUE(std::isnan(rotationOf(0, 2, 0, 2).aboutY));
}
