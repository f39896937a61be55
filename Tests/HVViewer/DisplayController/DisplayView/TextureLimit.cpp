#include "Tests/HVViewer/DisplayController/DisplayView/TextureLimit.h"

#include <GLES2/gl2.h>

#include <algorithm>

namespace {

int limitPx = 0; // 0: the driver's own

} // namespace

TextureLimit::TextureLimit(int sidePx) {
    limitPx = sidePx;
}

TextureLimit::~TextureLimit() {
    limitPx = 0;
    platform::Image::setDecodeLimits(decodeLimits_);
}

// The linker gives every call in the test program these functions, and them the driver's: see
// `--wrap` in the CMakeLists.txt.
extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's names.
void __real_glGetIntegerv(GLenum name, GLint* values);
void __real_glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                         GLsizei height, GLint border, GLenum format, GLenum type,
                         const void* pixels);

void __wrap_glGetIntegerv(GLenum name, GLint* values) {
    __real_glGetIntegerv(name, values);
    if (name == GL_MAX_TEXTURE_SIZE && limitPx != 0)
        *values = std::min(*values, limitPx);
}

void __wrap_glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width,
                         GLsizei height, GLint border, GLenum format, GLenum type,
                         const void* pixels) {
    const bool isTooLarge = limitPx != 0 && std::max(width, height) > limitPx;
    // The driver itself notes the error for a width below zero.
    __real_glTexImage2D(target, level, internalFormat, isTooLarge ? -1 : width, height, border,
                        format, type, pixels);
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

} // extern "C"
