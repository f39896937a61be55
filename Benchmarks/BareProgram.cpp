#include "Benchmarks/BareProgram.h"

#include <GLES2/gl2.h>

#include <stdexcept>

namespace {

void attach(GLuint program, GLenum type, const char* source) {
    const GLuint shader = glCreateShader(type);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    glAttachShader(program, shader);
    glDeleteShader(shader);
}

} // namespace

BareProgram::BareProgram(const std::string& vertexShader, const char* firstAttribute,
                         const char* secondAttribute, const char* fragmentShader)
    : name_(glCreateProgram()) {
    attach(name_, GL_VERTEX_SHADER, vertexShader.c_str());
    attach(name_, GL_FRAGMENT_SHADER, fragmentShader);
    glBindAttribLocation(name_, 0, firstAttribute);
    if (secondAttribute)
        glBindAttribLocation(name_, 1, secondAttribute);
    glLinkProgram(name_);
    GLint linked = GL_FALSE;
    glGetProgramiv(name_, GL_LINK_STATUS, &linked);
    if (linked != GL_TRUE)
        throw std::runtime_error("a floor's program does not link");
}

BareProgram::~BareProgram() {
    glDeleteProgram(name_);
}

void BareProgram::use(std::uint32_t texture) const {
    glUseProgram(name_);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, texture);
}

std::int32_t BareProgram::uniform(const char* name) const {
    return glGetUniformLocation(name_, name);
}
