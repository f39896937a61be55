#include "Benchmarks/BareVideoQuad.h"

#include "HVViewer/DisplayController/DisplayView/ColorConversion.h"
#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

namespace {

constexpr const char* kVertexShader = "attribute vec2 a_corner;"
                                      "uniform vec4 u_part;"
                                      "varying highp vec2 v_place;"
                                      "void main() {"
                                      "  v_place = mix(u_part.xw, u_part.zy, a_corner);"
                                      "  gl_Position = vec4(a_corner * 2.0 - 1.0, 0.0, 1.0);"
                                      "}";

constexpr const char* kFragmentShader =
    "precision highp float;"
    "uniform sampler2D u_luma;"
    "uniform sampler2D u_chroma;"
    "uniform mat3 u_matrix;"
    "varying highp vec2 v_place;"
    "void main() {"
    "  vec3 yuv = vec3(texture2D(u_luma, v_place).r, texture2D(u_chroma, v_place).ra);"
    "  gl_FragColor = vec4((yuv - vec3(16.0, 128.0, 128.0) / 255.0) * u_matrix, 1.0);"
    "}";

constexpr std::array<GLenum, 2> kFormats{GL_LUMINANCE, GL_LUMINANCE_ALPHA};

platform::SizePx planeSize(platform::SizePx size, std::size_t plane) {
    return plane == 0 ? size : platform::SizePx{size.width / 2, size.height / 2};
}

} // namespace

BareVideoQuad::BareVideoQuad(platform::SizePx frameSize)
    : size_(frameSize), program_(kVertexShader, "a_corner", nullptr, kFragmentShader) {
    constexpr std::array<float, 8> corners{0, 0, 1, 0, 0, 1, 1, 1};
    glGenBuffers(1, &corners_);
    glBindBuffer(GL_ARRAY_BUFFER, corners_);
    glBufferData(GL_ARRAY_BUFFER, sizeof corners, corners.data(), GL_STATIC_DRAW);
    glGenTextures(2, textures_.data());
    for (std::size_t plane = 0; plane < 2; ++plane) {
        const auto [width, height] = planeSize(size_, plane);
        const GLenum format = kFormats[plane];
        glBindTexture(GL_TEXTURE_2D, textures_[plane]);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), width, height, 0, format,
                     GL_UNSIGNED_BYTE, nullptr);
    }
}

BareVideoQuad::~BareVideoQuad() {
    glDeleteTextures(2, textures_.data());
    glDeleteBuffers(1, &corners_);
}

void BareVideoQuad::upload(const platform::PixelBuffer& frame) const {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glActiveTexture(GL_TEXTURE0);
    for (std::size_t plane = 0; plane < 2; ++plane) {
        const auto [width, height] = planeSize(size_, plane);
        glBindTexture(GL_TEXTURE_2D, textures_[plane]);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, kFormats[plane], GL_UNSIGNED_BYTE,
                        frame.plane(static_cast<int>(plane)).bytes);
    }
}

void BareVideoQuad::draw(const std::array<float, 4>& part) const {
    platform::GLDevice::main().bindVertexArray(0);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, textures_[1]);
    program_.use(textures_[0]);
    glUniform4fv(program_.uniform("u_part"), 1, part.data());
    glUniform1i(program_.uniform("u_chroma"), 1);
    glUniformMatrix3fv(program_.uniform("u_matrix"), 1, GL_FALSE, ColorConversation709Apple.data());
    glBindBuffer(GL_ARRAY_BUFFER, corners_);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(0);
}
