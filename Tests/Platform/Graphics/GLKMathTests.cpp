#include "Platform/Graphics/GLKMath.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <string>
#include <type_traits>

namespace {

/// A 4 × 4 matrix in double precision, [row][column], computed here from the textbook.
using Exact = std::array<std::array<double, 4>, 4>;

struct Axis {
    double x, y, z;
};

Exact identity() {
    Exact matrix{};
    for (std::size_t i = 0; i < 4; ++i)
        matrix[i][i] = 1;
    return matrix;
}

Exact product(const Exact& left, const Exact& right) {
    Exact result{};
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 4; ++c) {
            for (std::size_t k = 0; k < 4; ++k)
                result[r][c] += left[r][k] * right[k][c];
        }
    }
    return result;
}

/// Rodrigues' formula: cos a · 1 + sin a · [n]× + (1 − cos a) · n nᵀ.
Exact rotation(double radians, Axis axis) {
    const double length = std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
    const std::array<double, 3> n{axis.x / length, axis.y / length, axis.z / length};
    const std::array<std::array<double, 3>, 3> cross{
        {{0, -n[2], n[1]}, {n[2], 0, -n[0]}, {-n[1], n[0], 0}}};
    Exact result = identity();
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 3; ++c) {
            result[r][c] = (r == c ? std::cos(radians) : 0) + std::sin(radians) * cross[r][c] +
                           (1 - std::cos(radians)) * n[r] * n[c];
        }
    }
    return result;
}

Exact translation(double x, double y, double z) {
    Exact result = identity();
    result[0][3] = x;
    result[1][3] = y;
    result[2][3] = z;
    return result;
}

Exact scaling(double x, double y, double z) {
    return {{{x, 0, 0, 0}, {0, y, 0, 0}, {0, 0, z, 0}, {0, 0, 0, 1}}};
}

/// What a float matrix stands for.
Exact exactly(const GLKMatrix4& matrix) {
    Exact result{};
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 4; ++c)
            result[r][c] = static_cast<double>(matrix.m[4 * c + r]);
    }
    return result;
}

void expectNear(const GLKMatrix4& actual, const Exact& expected, double tolerance = 1e-5) {
    for (std::size_t r = 0; r < 4; ++r) {
        for (std::size_t c = 0; c < 4; ++c) {
            const double value = expected[r][c];
            EXPECT_NEAR(static_cast<double>(actual.m[4 * c + r]), value,
                        tolerance * std::max(1.0, std::abs(value)))
                << "row " << r << ", column " << c;
        }
    }
}

/// The same numbers in every run.
class Numbers {
public:
    float between(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random_);
    }
    GLKMatrix4 matrix() {
        GLKMatrix4 result;
        for (float& element : result.m)
            element = between(-3, 3);
        return result;
    }
    GLKVector3 axis() {
        GLKVector3 axis = GLKVector3Make(0, 0, 0);
        while (std::abs(axis.v[0]) + std::abs(axis.v[1]) + std::abs(axis.v[2]) < 0.1F)
            axis = GLKVector3Make(between(-2, 2), between(-2, 2), between(-2, 2));
        return axis;
    }

private:
    std::mt19937 random_{7};
};

constexpr int kRounds = 500;
constexpr float kTurn = 2 * std::numbers::pi_v<float>;

Axis exactly(const GLKVector3& vector) {
    return {static_cast<double>(vector.v[0]), static_cast<double>(vector.v[1]),
            static_cast<double>(vector.v[2])};
}

} // namespace

TEST(GLKTypes, ArePlainStructsOfFloats) {
    static_assert(std::is_trivial_v<GLKMatrix4> && std::is_standard_layout_v<GLKMatrix4>);
    static_assert(std::is_trivial_v<GLKVector3> && std::is_trivial_v<GLKVector4>);
    static_assert(std::is_trivial_v<GLKQuaternion>);
    EXPECT_EQ(sizeof(GLKMatrix4), 16 * sizeof(float));
    EXPECT_EQ(sizeof(GLKVector3), 3 * sizeof(float));
    EXPECT_EQ(sizeof(GLKVector4), 4 * sizeof(float));
    EXPECT_EQ(sizeof(GLKQuaternion), 4 * sizeof(float));
}

TEST(GLKTypes, AreMadeOfTheirParts) {
    const GLKVector3 three = GLKVector3Make(1, 2, 3);
    EXPECT_TRUE(three.v[0] == 1 && three.v[1] == 2 && three.v[2] == 3);
    const GLKVector4 four = GLKVector4Make(1, 2, 3, 4);
    EXPECT_TRUE(four.v[0] == 1 && four.v[1] == 2 && four.v[2] == 3 && four.v[3] == 4);
    const GLKQuaternion q = GLKQuaternionMake(1, 2, 3, 4);
    EXPECT_TRUE(q.x == 1 && q.y == 2 && q.z == 3 && q.w == 4);
}

TEST(GLKMatrix4, IdentityIsOneOnTheDiagonal) {
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(GLKMatrix4Identity.m[i], i % 5 == 0 ? 1.0F : 0.0F) << i;
}

TEST(GLKMatrix4, HoldsATranslationInElementsTwelveToFourteen) {
    const GLKMatrix4 matrix = GLKMatrix4MakeTranslation(4, 5, 6);
    EXPECT_TRUE(matrix.m[12] == 4 && matrix.m[13] == 5 && matrix.m[14] == 6);
    expectNear(matrix, translation(4, 5, 6), 0);
}

TEST(GLKMatrix4, HoldsAScalingOnItsDiagonal) {
    expectNear(GLKMatrix4MakeScale(2, -3, 0.5F), scaling(2, -3, 0.5), 0);
}

TEST(GLKMatrix4, TurnsCounterClockwiseSeenAgainstTheAxis) {
    const float quarter = kTurn / 4;
    const GLKVector4 x = GLKVector4Make(1, 0, 0, 1);
    const GLKVector4 aboutZ =
        GLKMatrix4MultiplyVector4(GLKMatrix4MakeRotation(quarter, 0, 0, 1), x);
    EXPECT_NEAR(aboutZ.v[1], 1, 1e-6);
    const GLKVector4 aboutY =
        GLKMatrix4MultiplyVector4(GLKMatrix4MakeRotation(quarter, 0, 1, 0), x);
    EXPECT_NEAR(aboutY.v[2], -1, 1e-6);
}

TEST(GLKMatrix4, TurnsAboutAnAxisOfAnyLength) {
    Numbers numbers;
    for (int i = 0; i < kRounds; ++i) {
        const GLKVector3 axis = numbers.axis();
        const float angle = numbers.between(-kTurn, kTurn);
        expectNear(GLKMatrix4MakeRotation(angle, axis.v[0], axis.v[1], axis.v[2]),
                   rotation(static_cast<double>(angle), exactly(axis)));
    }
}

TEST(GLKMatrix4, MultipliesSoThatTheRightOneActsFirst) {
    Numbers numbers;
    for (int i = 0; i < kRounds; ++i) {
        const GLKMatrix4 left = numbers.matrix();
        const GLKMatrix4 right = numbers.matrix();
        expectNear(GLKMatrix4Multiply(left, right), product(exactly(left), exactly(right)));
    }
}

TEST(GLKMatrix4, RotatesScalesAndTranslatesBeforeWhatItDid) {
    Numbers numbers;
    for (int i = 0; i < kRounds; ++i) {
        const GLKMatrix4 matrix = numbers.matrix();
        const Exact before = exactly(matrix);
        const GLKVector3 v = numbers.axis();
        const Axis exact = exactly(v);
        const float angle = numbers.between(-kTurn, kTurn);
        expectNear(GLKMatrix4Rotate(matrix, angle, v.v[0], v.v[1], v.v[2]),
                   product(before, rotation(static_cast<double>(angle), exact)));
        expectNear(GLKMatrix4Translate(matrix, v.v[0], v.v[1], v.v[2]),
                   product(before, translation(exact.x, exact.y, exact.z)));
        expectNear(GLKMatrix4Scale(matrix, v.v[0], v.v[1], v.v[2]),
                   product(before, scaling(exact.x, exact.y, exact.z)));
    }
}

TEST(GLKMatrix4, TransformsAVectorAsAColumn) {
    Numbers numbers;
    for (int i = 0; i < kRounds; ++i) {
        const GLKMatrix4 matrix = numbers.matrix();
        const GLKVector4 v = GLKVector4Make(numbers.between(-2, 2), numbers.between(-2, 2),
                                            numbers.between(-2, 2), numbers.between(-2, 2));
        const GLKVector4 actual = GLKMatrix4MultiplyVector4(matrix, v);
        for (std::size_t r = 0; r < 4; ++r) {
            double expected = 0;
            for (std::size_t c = 0; c < 4; ++c)
                expected += static_cast<double>(matrix.m[4 * c + r]) * static_cast<double>(v.v[c]);
            EXPECT_NEAR(static_cast<double>(actual.v[r]), expected, 1e-5);
        }
    }
}

TEST(GLKMatrix4, GivesItsColumns) {
    const GLKMatrix4 matrix = Numbers().matrix();
    for (int c = 0; c < 4; ++c) {
        const GLKVector4 column = GLKMatrix4GetColumn(matrix, c);
        for (int r = 0; r < 4; ++r)
            EXPECT_EQ(column.v[r], matrix.m[4 * c + r]) << c << ", " << r;
    }
}

TEST(GLKMatrix4, ProjectsAsTheFormulaSays) {
    Numbers numbers;
    for (int i = 0; i < kRounds; ++i) {
        const float fov = numbers.between(0.2F, 3.0F);
        const float aspect = numbers.between(0.2F, 5);
        const float nearZ = numbers.between(0.01F, 1);
        const float farZ = nearZ + numbers.between(0.5F, 10);
        const double f = 1 / std::tan(static_cast<double>(fov) / 2);
        const auto n = static_cast<double>(nearZ);
        const auto z = static_cast<double>(farZ);
        expectNear(GLKMatrix4MakePerspective(fov, aspect, nearZ, farZ),
                   {{{f / static_cast<double>(aspect), 0, 0, 0},
                     {0, f, 0, 0},
                     {0, 0, (z + n) / (n - z), 2 * z * n / (n - z)},
                     {0, 0, -1, 0}}});
    }
}

TEST(GLKMatrix4, MapsTheClippingDistancesToMinusOneAndOne) {
    const GLKMatrix4 matrix = GLKMatrix4MakePerspective(1, 2, 0.5F, 8);
    const GLKVector4 front = GLKMatrix4MultiplyVector4(matrix, GLKVector4Make(0, 0, -0.5F, 1));
    const GLKVector4 back = GLKMatrix4MultiplyVector4(matrix, GLKVector4Make(0, 0, -8, 1));
    EXPECT_NEAR(front.v[2] / front.v[3], -1, 1e-5);
    EXPECT_NEAR(back.v[2] / back.v[3], 1, 1e-5);
}

TEST(GLKMatrix4, TurnsAsAQuaternionOfAnyLengthSays) {
    Numbers numbers;
    for (int i = 0; i < kRounds; ++i) {
        const GLKVector3 vector = numbers.axis();
        const float w = numbers.between(-2, 2);
        const Axis axis = exactly(vector);
        const double sine = std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
        const double angle = 2 * std::atan2(sine, static_cast<double>(w));
        expectNear(GLKMatrix4MakeWithQuaternion({vector.v[0], vector.v[1], vector.v[2], w}),
                   rotation(angle, axis));
    }
}

TEST(GLKMatrix4, IsTheIdentityForTheQuaternionThatTurnsNothing) {
    expectNear(GLKMatrix4MakeWithQuaternion({0, 0, 0, 1}), identity(), 0);
    expectNear(GLKMatrix4MakeWithQuaternion({0, 0, 0, -3}), identity(), 0);
}

TEST(GLKMatrix4, IsNaNForAQuaternionOfZeros) {
    const GLKMatrix4 matrix = GLKMatrix4MakeWithQuaternion({0, 0, 0, 0});
    for (std::size_t c = 0; c < 3; ++c) {
        for (std::size_t r = 0; r < 3; ++r)
            EXPECT_TRUE(std::isnan(matrix.m[4 * c + r])) << r << ", " << c;
    }
}
