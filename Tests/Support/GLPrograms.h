#pragma once

#include <GLES2/gl2.h>

#include <utility>

namespace tests {

/// A linked program that draws white, for tests that need any program. The caller deletes it.
[[nodiscard]] inline GLuint makeWhiteProgram() {
    const GLuint program = glCreateProgram();
    for (const auto& [type, source] :
         {std::pair(GL_VERTEX_SHADER, "void main() { gl_Position = vec4(0.0); }"),
          std::pair(GL_FRAGMENT_SHADER, "void main() { gl_FragColor = vec4(1.0); }")}) {
        const GLuint shader = glCreateShader(static_cast<GLenum>(type));
        const GLchar* text = source;
        glShaderSource(shader, 1, &text, nullptr);
        glCompileShader(shader);
        glAttachShader(program, shader);
    }
    glLinkProgram(program);
    return program;
}

} // namespace tests
