#include "Benchmarks/BareQuad.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace {

constexpr const char* kVertexShader = "attribute vec2 a_corner;"
                                      "uniform vec4 u_part;"
                                      "varying highp vec2 v_place;"
                                      "void main() {"
                                      "  v_place = mix(u_part.xy, u_part.zw, a_corner);"
                                      "  gl_Position = vec4(a_corner * 2.0 - 1.0, 0.0, 1.0);"
                                      "}";
} // namespace

BareQuad::BareQuad() : program_(kVertexShader, "a_corner"), part_(program_.uniform("u_part")) {
    constexpr std::array<float, 8> corners{0, 0, 1, 0, 0, 1, 1, 1};
    glGenBuffers(1, &corners_);
    glBindBuffer(GL_ARRAY_BUFFER, corners_);
    glBufferData(GL_ARRAY_BUFFER, sizeof corners, corners.data(), GL_STATIC_DRAW);
}

BareQuad::~BareQuad() {
    glDeleteBuffers(1, &corners_);
}

void BareQuad::draw(std::uint32_t texture, const std::array<float, 4>& part) const {
    platform::GLDevice::main().bindVertexArray(0);
    program_.use(texture);
    glUniform4fv(part_, 1, part.data());
    glBindBuffer(GL_ARRAY_BUFFER, corners_);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(0);
}
