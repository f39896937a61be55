#include "HVViewer/DisplayController/DisplayView/UploadEnding.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace {

GLint integer(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

void enableAttribute(std::uint32_t vertexArray, GLuint attribute) {
    if (attribute >= static_cast<GLuint>(integer(GL_MAX_VERTEX_ATTRIBS)))
        return;
    const auto& device = platform::GLDevice::main();
    device.bindVertexArray(vertexArray);
    glEnableVertexAttribArray(attribute);
    device.bindVertexArray(0);
}

void bindFramebufferNamed(GLuint name) {
    const auto bound = static_cast<GLuint>(integer(GL_FRAMEBUFFER_BINDING));
    const bool isInUse = glIsFramebuffer(name) == GL_TRUE;
    glBindFramebuffer(GL_FRAMEBUFFER, name);
    if (!isInUse)
        glDeleteFramebuffers(1, &name); // binding an unused name creates a framebuffer object
    glBindFramebuffer(GL_FRAMEBUFFER, bound);
}

} // namespace

void endUpload(const platform::MeshBuffers& mesh) {
    if (platform::GLDevice::main().quirks().endsUploadsPlainly)
        return;
    enableAttribute(mesh.vertexArray, mesh.positions);
    bindFramebufferNamed(mesh.positions);
}
