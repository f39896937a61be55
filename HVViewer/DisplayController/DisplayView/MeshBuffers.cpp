#include "HVViewer/DisplayController/DisplayView/MeshBuffers.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace {

constexpr GLuint kPositionAttribute = 0;

std::uint32_t uploadAttribute(GLuint attribute, const float* values, GLint floatsPerVertex,
                              std::int32_t numberOfVertices, GLenum usage) {
    const auto stride = static_cast<GLsizei>(floatsPerVertex * static_cast<GLint>(sizeof(float)));
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(numberOfVertices) * stride, values,
                 usage);
    glEnableVertexAttribArray(attribute);
    glVertexAttribPointer(attribute, floatsPerVertex, GL_FLOAT, GL_FALSE, stride, nullptr);
    return buffer;
}

} // namespace

MeshBuffers uploadMesh(const VisualObjectModel& model, std::uint32_t textureCoordinateAttribute,
                       std::uint32_t usage) {
    const auto& device = platform::GLDevice::main();
    MeshBuffers buffers;
    device.genVertexArrays(1, &buffers.vertexArray);
    device.bindVertexArray(buffers.vertexArray);
    buffers.positions =
        uploadAttribute(kPositionAttribute, model.vertices, 3, model.numberOfVertices, usage);
    buffers.textureCoordinates = uploadAttribute(textureCoordinateAttribute, model.texCoords, 2,
                                                 model.numberOfVertices, usage);
    // A host that points attributes of its own must not write into this object.
    device.bindVertexArray(0);
    return buffers;
}

void deleteMesh(const MeshBuffers& buffers) {
    glDeleteBuffers(1, &buffers.positions);
    platform::GLDevice::main().deleteVertexArrays(1, &buffers.vertexArray);
    glDeleteBuffers(1, &buffers.textureCoordinates);
}
