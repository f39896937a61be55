#include "Platform/Graphics/GLKMath.h"

#define GLM_FORCE_XYZW_ONLY
#include <glm/ext/matrix_transform.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtc/type_ptr.hpp>

#include <cmath>
#include <cstring>

namespace {

glm::mat4 toGlm(const GLKMatrix4& matrix) {
    return glm::make_mat4(matrix.m);
}

GLKMatrix4 fromGlm(const glm::mat4& matrix) {
    GLKMatrix4 result{};
    std::memcpy(result.m, glm::value_ptr(matrix), sizeof result.m);
    return result;
}

} // namespace

extern "C" {

const GLKMatrix4 GLKMatrix4Identity = {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};

GLKVector3 GLKVector3Make(float x, float y, float z) {
    return {{x, y, z}};
}

GLKVector4 GLKVector4Make(float x, float y, float z, float w) {
    return {{x, y, z, w}};
}

GLKQuaternion GLKQuaternionMake(float x, float y, float z, float w) {
    return {x, y, z, w};
}

GLKMatrix4 GLKMatrix4MakeRotation(float radians, float x, float y, float z) {
    return GLKMatrix4Rotate(GLKMatrix4Identity, radians, x, y, z);
}

GLKMatrix4 GLKMatrix4MakeTranslation(float x, float y, float z) {
    return GLKMatrix4Translate(GLKMatrix4Identity, x, y, z);
}

GLKMatrix4 GLKMatrix4MakeScale(float x, float y, float z) {
    return GLKMatrix4Scale(GLKMatrix4Identity, x, y, z);
}

GLKMatrix4 GLKMatrix4MakePerspective(float fovyRadians, float aspect, float nearZ, float farZ) {
    // Not by glm, which asserts on the aspect of a view without a size; that view's matrix is all
    // NaNs.
    const float tangent = std::tan(fovyRadians / 2.0F);
    GLKMatrix4 matrix{};
    matrix.m[0] = 1.0F / (aspect * tangent);
    matrix.m[5] = 1.0F / tangent;
    matrix.m[10] = -(farZ + nearZ) / (farZ - nearZ);
    matrix.m[11] = -1.0F;
    matrix.m[14] = -(2.0F * farZ * nearZ) / (farZ - nearZ);
    return matrix;
}

GLKMatrix4 GLKMatrix4MakeWithQuaternion(GLKQuaternion q) {
    // Not by glm::normalize, which returns the identity for a quaternion of zeros.
    const glm::quat raw(q.w, q.x, q.y, q.z);
    return fromGlm(glm::mat4_cast(raw / glm::length(raw)));
}

GLKMatrix4 GLKMatrix4Multiply(GLKMatrix4 left, GLKMatrix4 right) {
    return fromGlm(toGlm(left) * toGlm(right));
}

GLKVector4 GLKMatrix4MultiplyVector4(GLKMatrix4 matrix, GLKVector4 vector) {
    const glm::vec4 result = toGlm(matrix) * glm::make_vec4(vector.v);
    return {{result.x, result.y, result.z, result.w}};
}

GLKMatrix4 GLKMatrix4Rotate(GLKMatrix4 matrix, float radians, float x, float y, float z) {
    return fromGlm(glm::rotate(toGlm(matrix), radians, glm::vec3(x, y, z)));
}

GLKMatrix4 GLKMatrix4Translate(GLKMatrix4 matrix, float x, float y, float z) {
    return fromGlm(glm::translate(toGlm(matrix), glm::vec3(x, y, z)));
}

GLKMatrix4 GLKMatrix4Scale(GLKMatrix4 matrix, float x, float y, float z) {
    return fromGlm(glm::scale(toGlm(matrix), glm::vec3(x, y, z)));
}

GLKVector4 GLKMatrix4GetColumn(GLKMatrix4 matrix, int column) {
    const float* from = matrix.m + static_cast<std::ptrdiff_t>(column) * 4;
    return {{from[0], from[1], from[2], from[3]}};
}

} // extern "C"
