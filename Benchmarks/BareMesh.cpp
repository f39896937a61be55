#include "Benchmarks/BareMesh.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace {

constexpr const char* kVertexShader = "attribute vec3 a_position;"
                                      "attribute vec2 a_place;"
                                      "uniform mat4 u_matrix;"
                                      "varying highp vec2 v_place;"
                                      "void main() {"
                                      "  v_place = vec2(a_place.x, 1.0 - a_place.y);"
                                      "  gl_Position = u_matrix * vec4(a_position, 1.0);"
                                      "}";

GLuint upload(const float* values, std::int32_t count) {
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, count * static_cast<GLsizeiptr>(sizeof(float)), values,
                 GL_STATIC_DRAW);
    return buffer;
}

void pointAt(GLuint attribute, GLuint buffer, GLint floats) {
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glEnableVertexAttribArray(attribute);
    glVertexAttribPointer(attribute, floats, GL_FLOAT, GL_FALSE, 0, nullptr);
}

} // namespace

BareMesh::BareMesh()
    : program_(kVertexShader, "a_position", "a_place"), matrix_(program_.uniform("u_matrix")) {
    const VisualObjectModel& model = sphere_.model();
    positions_ = upload(model.vertices, model.numberOfVertices * 3);
    places_ = upload(model.texCoords, model.numberOfVertices * 2);
}

BareMesh::~BareMesh() {
    glDeleteBuffers(1, &positions_);
    glDeleteBuffers(1, &places_);
}

void BareMesh::draw(std::uint32_t texture, const GLKMatrix4& modelViewProjection,
                    const std::vector<VertexRun>& runs) const {
    platform::GLDevice::main().bindVertexArray(0);
    program_.use(texture);
    glUniformMatrix4fv(matrix_, 1, GL_FALSE, modelViewProjection.m);
    pointAt(0, positions_, 3);
    pointAt(1, places_, 2);
    drawRuns(runs);
    glDisableVertexAttribArray(0);
    glDisableVertexAttribArray(1);
}
