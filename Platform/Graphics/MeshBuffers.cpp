#include "Platform/Graphics/MeshBuffers.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace platform {
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

MeshBuffers uploadMesh(const MeshVertices& vertices, std::uint32_t textureCoordinateAttribute,
                       std::uint32_t usage) {
    const auto& device = GLDevice::main();
    MeshBuffers buffers;
    device.genVertexArrays(1, &buffers.vertexArray);
    device.bindVertexArray(buffers.vertexArray);
    buffers.positions =
        uploadAttribute(kPositionAttribute, vertices.positions, 3, vertices.count, usage);
    buffers.textureCoordinates = uploadAttribute(
        textureCoordinateAttribute, vertices.textureCoordinates, 2, vertices.count, usage);
    // Unbound, so that a host that sets its own attribute pointers does not change this object.
    device.bindVertexArray(0);
    return buffers;
}

void deleteMesh(const MeshBuffers& buffers) {
    glDeleteBuffers(1, &buffers.positions);
    GLDevice::main().deleteVertexArrays(1, &buffers.vertexArray);
    glDeleteBuffers(1, &buffers.textureCoordinates);
}

} // namespace platform
