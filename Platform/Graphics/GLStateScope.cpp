#include "Platform/Graphics/GLStateScope.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace platform {
namespace {

/// A constant of OES_vertex_array_object, which every installed context offers.
constexpr GLenum kVertexArrayBinding = 0x85B5;

int integer(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

void setEnabled(GLenum capability, bool enabled) {
    if (enabled)
        glEnable(capability);
    else
        glDisable(capability);
}

/// The name, or 0 if the object was deleted: binding a deleted name would create a new object.
GLuint stillThere(int name, GLboolean (*isObject)(GLuint)) {
    const auto unsignedName = static_cast<GLuint>(name);
    return isObject(unsignedName) == GL_TRUE ? unsignedName : 0;
}

GLboolean isVertexArray(GLuint name) {
    return GLDevice::main().isVertexArray(name) ? GL_TRUE : GL_FALSE;
}

} // namespace

GLStateScope::GLStateScope() {
    const GLDevice& device = GLDevice::main();
    if (!device.isInstalled())
        return;
    device.makeCurrent();
    generation_ = device.generation();
    program_ = integer(GL_CURRENT_PROGRAM);
    vertexArray_ = integer(kVertexArrayBinding);
    arrayBuffer_ = integer(GL_ARRAY_BUFFER_BINDING);
    activeUnit_ = integer(GL_ACTIVE_TEXTURE);
    for (std::size_t unit = 0; unit < kUnits; ++unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
        textures_[unit] = integer(GL_TEXTURE_BINDING_2D);
    }
    glActiveTexture(static_cast<GLenum>(activeUnit_));
    unpackAlignment_ = integer(GL_UNPACK_ALIGNMENT);
    depthTest_ = glIsEnabled(GL_DEPTH_TEST) == GL_TRUE;
    culling_ = glIsEnabled(GL_CULL_FACE) == GL_TRUE;
    GLboolean mask = GL_FALSE;
    glGetBooleanv(GL_DEPTH_WRITEMASK, &mask);
    depthMask_ = mask == GL_TRUE;
}

GLStateScope::~GLStateScope() {
    const GLDevice& device = GLDevice::main();
    if (generation_ == 0 || !device.isInstalled() || generation_ != device.generation())
        return;
    device.makeCurrent();
    glUseProgram(stillThere(program_, glIsProgram));
    device.bindVertexArray(stillThere(vertexArray_, isVertexArray));
    glBindBuffer(GL_ARRAY_BUFFER, stillThere(arrayBuffer_, glIsBuffer));
    for (std::size_t unit = 0; unit < kUnits; ++unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
        glBindTexture(GL_TEXTURE_2D, stillThere(textures_[unit], glIsTexture));
    }
    glActiveTexture(static_cast<GLenum>(activeUnit_));
    glPixelStorei(GL_UNPACK_ALIGNMENT, unpackAlignment_);
    setEnabled(GL_DEPTH_TEST, depthTest_);
    setEnabled(GL_CULL_FACE, culling_);
    glDepthMask(depthMask_ ? GL_TRUE : GL_FALSE);
}

} // namespace platform
