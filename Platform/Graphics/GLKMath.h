#pragma once

#include "Platform/Foundation/Export.h"

// Vectors, quaternions and matrices of the scene, as plain C structs so that functions with C
// linkage can take them by value. They are of single precision throughout; angles are in radians.
//
// Matrices are column-major: element 4 * c + r is in column c and row r, and elements 12, 13 and 14
// are the translation. A point p is transformed as M * p, so in `GLKMatrix4Multiply(A, B)` B is
// applied first, and `GLKMatrix4Rotate(M, …)` applies the rotation before M.
//
// Thread: any; thread-safe. All functions are pure.

extern "C" {

struct GLKVector3 {
    float v[3];
};

struct GLKVector4 {
    float v[4];
};

/// x, y, z are the vector part, w the scalar part.
struct GLKQuaternion {
    float x, y, z, w;
};

struct GLKMatrix4 {
    float m[16];
};

ZANTO_EXPORT extern const GLKMatrix4 GLKMatrix4Identity;

ZANTO_EXPORT GLKVector3 GLKVector3Make(float x, float y, float z);
ZANTO_EXPORT GLKVector4 GLKVector4Make(float x, float y, float z, float w);
ZANTO_EXPORT GLKQuaternion GLKQuaternionMake(float x, float y, float z, float w);

/// A rotation about the axis (x, y, z), counter-clockwise as seen when the axis points at the
/// viewer. The axis need not be of unit length.
ZANTO_EXPORT GLKMatrix4 GLKMatrix4MakeRotation(float radians, float x, float y, float z);
ZANTO_EXPORT GLKMatrix4 GLKMatrix4MakeTranslation(float x, float y, float z);
ZANTO_EXPORT GLKMatrix4 GLKMatrix4MakeScale(float x, float y, float z);

/// A right-handed perspective projection that looks along -z and maps depth to -1…1.
///
/// `fovyRadians` is the vertical field of view and `aspect` is width / height; both clipping
/// distances are positive.
ZANTO_EXPORT GLKMatrix4 GLKMatrix4MakePerspective(float fovyRadians, float aspect, float nearZ,
                                                  float farZ);

/// The rotation that the quaternion represents. The quaternion is normalised first, so a quaternion
/// of zeros gives a matrix of NaNs.
ZANTO_EXPORT GLKMatrix4 GLKMatrix4MakeWithQuaternion(GLKQuaternion quaternion);

ZANTO_EXPORT GLKMatrix4 GLKMatrix4Multiply(GLKMatrix4 left, GLKMatrix4 right);
ZANTO_EXPORT GLKVector4 GLKMatrix4MultiplyVector4(GLKMatrix4 matrix, GLKVector4 vector);

/// The matrix times a rotation, a translation or a scaling.
ZANTO_EXPORT GLKMatrix4 GLKMatrix4Rotate(GLKMatrix4 matrix, float radians, float x, float y,
                                         float z);
ZANTO_EXPORT GLKMatrix4 GLKMatrix4Translate(GLKMatrix4 matrix, float x, float y, float z);
ZANTO_EXPORT GLKMatrix4 GLKMatrix4Scale(GLKMatrix4 matrix, float x, float y, float z);

/// `column`: 0 to 3.
ZANTO_EXPORT GLKVector4 GLKMatrix4GetColumn(GLKMatrix4 matrix, int column);

} // extern "C"
