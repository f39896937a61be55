#pragma once

#include "Platform/Graphics/GLKMath.h"

// The numbers and small functions that the player shares, and that hosts may use. All have C
// linkage. Thread: main where the screen is read, else any.

extern "C" {

/// Vertical field of view in degrees, and that of the little planet (10 more in portrait).
extern const double ViewAngle;
extern const double ViewAngleLittlePlanet;
/// Near clipping distance: single precision, widened.
extern const double NearZ;
/// Pan inertia: the decay of one step (single precision, widened), the divisor of the lift-off
/// velocity, and the velocity at which coasting ends.
extern const double VelocityDeltaCoef;
extern const double VelocityDivideValue;
extern const double VelocityMinValue;

extern const double ZantoPlayerFrameworkVersionNumber;
extern const unsigned char ZantoPlayerFrameworkVersionString[];

/// Logs a formatted line, always; the format is `printf`'s.
void Dlog(const char* format, ...) __attribute__((format(printf, 1, 2)));

double DegToRad(double degrees);

/// Far clipping distance for the shape of the screen, which is measured in pixels, portrait-up.
double FarZ();

/// The screen's size in points, as held.
float screenWidth();
float screenHeight();

/// Exactly the identity, without tolerance.
bool isIdentityMatrix(GLKMatrix4 matrix);
/// Whether any element is a NaN; infinities do not count.
bool containsNaN(GLKMatrix4 matrix);

/// The quaternion's turns in radians: about y (`aboutY`), about x and about z. A quaternion that is
/// not of unit length can give a NaN about y.
void getRotationFromGLKMat4(float* aboutY, float* aboutX, float* aboutZ, GLKQuaternion quaternion);

} // extern "C"
