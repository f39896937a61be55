#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Graphics/GLKMath.h"

// The numbers and small functions that the player shares, and that hosts may use. All have C
// linkage. Thread: main where the screen is read, else any.

extern "C" {

/// Vertical field of view in degrees, and that of the little planet (10 more in portrait).
ZANTO_EXPORT extern const double ViewAngle;
ZANTO_EXPORT extern const double ViewAngleLittlePlanet;
/// Near clipping distance: single precision, widened.
ZANTO_EXPORT extern const double NearZ;
/// Pan inertia: the decay of one step (single precision, widened), the divisor of the lift-off
/// velocity, and the velocity at which coasting ends.
ZANTO_EXPORT extern const double VelocityDeltaCoef;
ZANTO_EXPORT extern const double VelocityDivideValue;
ZANTO_EXPORT extern const double VelocityMinValue;

ZANTO_EXPORT extern const double ZantoPlayerFrameworkVersionNumber;
ZANTO_EXPORT extern const unsigned char ZantoPlayerFrameworkVersionString[];

/// Logs a formatted line, always; the format is `printf`'s.
ZANTO_EXPORT void Dlog(const char* format, ...) __attribute__((format(printf, 1, 2)));

ZANTO_EXPORT double DegToRad(double degrees);

/// Far clipping distance for the shape of the screen, which is measured in pixels, portrait-up.
ZANTO_EXPORT double FarZ();

/// The screen's size in points, as held.
ZANTO_EXPORT float screenWidth();
ZANTO_EXPORT float screenHeight();

/// Exactly the identity, without tolerance.
ZANTO_EXPORT bool isIdentityMatrix(GLKMatrix4 matrix);
/// Whether any element is a NaN; infinities do not count.
ZANTO_EXPORT bool containsNaN(GLKMatrix4 matrix);

/// The quaternion's turns in radians: about y (`aboutY`), about x and about z. A quaternion that is
/// not of unit length can give a NaN about y.
ZANTO_EXPORT void getRotationFromGLKMat4(float* aboutY, float* aboutX, float* aboutZ,
                                         GLKQuaternion quaternion);

} // extern "C"
