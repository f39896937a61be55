#include "Tests/HVViewer/DisplayController/DisplayView/TextureLimit.h"

#include <GLES2/gl2.h>
#include <dlfcn.h>

#include <algorithm>

namespace {

int limitPx = 0; // 0: the driver's own

template <class Function>
Function* driversOwn(Function* /*type*/, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

TextureLimit::TextureLimit(int sidePx) {
    limitPx = sidePx;
}

TextureLimit::~TextureLimit() {
    limitPx = 0;
    platform::Image::setDecodeLimits(decodeLimits_);
}

// The program's definitions come before those of the driver's library.
extern "C" {

void glGetIntegerv(GLenum name, GLint* values) {
    static auto* const real = driversOwn(&glGetIntegerv, "glGetIntegerv");
    real(name, values);
    if (name == GL_MAX_TEXTURE_SIZE && limitPx != 0)
        *values = std::min(*values, limitPx);
}

void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels) {
    static auto* const real = driversOwn(&glTexImage2D, "glTexImage2D");
    const bool isTooLarge = limitPx != 0 && std::max(width, height) > limitPx;
    // The driver itself notes the error for a width below zero.
    real(target, level, internalFormat, isTooLarge ? -1 : width, height, border, format, type,
         pixels);
}

} // extern "C"
