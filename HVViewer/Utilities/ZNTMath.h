#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Graphics/GLKMath.h"

// Constants and small functions that the player uses and that hosts may use, with C linkage.
//
// Thread: any; thread-safe, except `FarZ`, `screenWidth` and `screenHeight`, which are main.

extern "C" {

/// Vertical field of view in degrees, in general and for the little planet (10 degrees more in
/// portrait).
ZANTO_EXPORT extern const double ViewAngle;
ZANTO_EXPORT extern const double ViewAngleLittlePlanet;
/// The distance of the near clipping plane. The value has single precision.
ZANTO_EXPORT extern const double NearZ;
/// Pan inertia: the decay per step (a single precision value), the divisor of the velocity at
/// lift-off, and the velocity at which a coast ends.
ZANTO_EXPORT extern const double VelocityDeltaCoef;
ZANTO_EXPORT extern const double VelocityDivideValue;
ZANTO_EXPORT extern const double VelocityMinValue;

ZANTO_EXPORT extern const double ZantoPlayerFrameworkVersionNumber;
ZANTO_EXPORT extern const unsigned char ZantoPlayerFrameworkVersionString[];

/// Logs a formatted line at the level Warning. The format is that of `printf`.
ZANTO_EXPORT void Dlog(const char* format, ...) __attribute__((format(printf, 1, 2)));

ZANTO_EXPORT double DegToRad(double degrees);

/// The distance of the far clipping plane. It depends on the screen's aspect ratio in portrait
/// pixels.
ZANTO_EXPORT double FarZ();

/// The size of the screen in points, in its current orientation.
ZANTO_EXPORT float screenWidth();
ZANTO_EXPORT float screenHeight();

/// Compares exactly, without a tolerance.
ZANTO_EXPORT bool isIdentityMatrix(GLKMatrix4 matrix);
/// Whether any element is NaN. Infinities do not count.
ZANTO_EXPORT bool containsNaN(GLKMatrix4 matrix);

/// The rotations of a quaternion about y, about x and about z, in radians. The result about y can
/// be NaN if the quaternion does not have unit length.
ZANTO_EXPORT void getRotationFromGLKMat4(float* aboutY, float* aboutX, float* aboutZ,
                                         GLKQuaternion quaternion);

} // extern "C"
