#include "HVViewer/DisplayController/DisplayView/UploadEnding.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace {

UploadEnding uploadEnding = UploadEnding::WithBufferName;

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
    const bool isSomebodys = glIsFramebuffer(name) == GL_TRUE;
    glBindFramebuffer(GL_FRAMEBUFFER, name);
    if (!isSomebodys)
        glDeleteFramebuffers(1, &name); // binding an unused name makes a framebuffer of it
    glBindFramebuffer(GL_FRAMEBUFFER, bound);
}

} // namespace

void setUploadEnding(UploadEnding ending) {
    uploadEnding = ending;
}

void endUpload(const platform::MeshBuffers& mesh) {
    if (uploadEnding == UploadEnding::Plain)
        return;
    enableAttribute(mesh.vertexArray, mesh.positions);
    bindFramebufferNamed(mesh.positions);
}
