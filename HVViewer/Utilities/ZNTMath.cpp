#include "HVViewer/Utilities/ZNTMath.h"

#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Screen.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <numbers>
#include <string>

namespace {

/// Whether the predicate is true for every element of the matrix, in column-major order.
template <class Predicate>
bool everyElement(const GLKMatrix4& matrix, Predicate passes) {
    for (int c = 0; c < 4; ++c) {
        const GLKVector4 column = GLKMatrix4GetColumn(matrix, c);
        for (int r = 0; r < 4; ++r) {
            if (!passes(column.v[r], c, r))
                return false;
        }
    }
    return true;
}

} // namespace

extern "C" {

const double ViewAngle = 70.0;
const double ViewAngleLittlePlanet = 105.0;
const double NearZ = 0.01F;
const double VelocityDeltaCoef = 0.08F;
const double VelocityDivideValue = 15.0;
const double VelocityMinValue = 0.05;

const double ZantoPlayerFrameworkVersionNumber = 1.0;
const unsigned char ZantoPlayerFrameworkVersionString[] =
    "@(#)PROGRAM:ZantoPlayerFramework  PROJECT:HalvoraSDK-1\n";

void Dlog(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    va_end(arguments);
    platform::log(platform::LogLevel::Warning, text);
}

double DegToRad(double degrees) {
    return degrees / 180.0 * std::numbers::pi;
}

double FarZ() {
    const platform::Size native = platform::Screen::mainScreen().nativeBounds().size;
    const double r = native.height / native.width;
    // Phones, 3:2 screens and tablets: each value just includes the ground of the little planet.
    if (r < 1.7 && r > 1.49F)
        return 2.1F;
    if (r < 1.49F)
        return 1.9F;
    return 2.4806F;
}

float screenWidth() {
    return static_cast<float>(platform::Screen::mainScreen().bounds().size.width);
}

float screenHeight() {
    return static_cast<float>(platform::Screen::mainScreen().bounds().size.height);
}

bool isIdentityMatrix(GLKMatrix4 matrix) {
    return everyElement(
        matrix, [](float element, int c, int r) { return element == (c == r ? 1.0F : 0.0F); });
}

bool containsNaN(GLKMatrix4 matrix) {
    return !everyElement(matrix, [](float element, int, int) { return !std::isnan(element); });
}

void getRotationFromGLKMat4(float* aboutY, float* aboutX, float* aboutZ, GLKQuaternion q) {
    *aboutX =
        std::atan2(2 * (q.y * q.z + q.w * q.x), q.w * q.w - q.x * q.x - q.y * q.y + q.z * q.z);
    *aboutY = std::asin(-2 * (q.x * q.z - q.w * q.y));
    *aboutZ =
        std::atan2(2 * (q.x * q.y + q.w * q.z), q.w * q.w + q.x * q.x - q.y * q.y - q.z * q.z);
}

} // extern "C"
