#include "Tests/HVViewer/Model/HotSpot/RefusedUploads.h"

#include "Hosts/Headless/SurfacelessContext.h"

#include <GLES2/gl2.h>

namespace {

bool isRefusing = false;

} // namespace

RefusedUploads::RefusedUploads() {
    isRefusing = true;
}

RefusedUploads::~RefusedUploads() {
    isRefusing = false;
}

// The linker prefers this one to the driver's in the whole test program. A width below zero is what
// every driver refuses.
void glTexImage2D(GLenum target, GLint level, GLint internalFormat, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const void* pixels) {
    static const auto driver = reinterpret_cast<decltype(&glTexImage2D)>(
        zanto::SurfacelessContext::procAddress("glTexImage2D"));
    driver(target, level, internalFormat, isRefusing ? -1 : width, height, border, format, type,
           pixels);
}
