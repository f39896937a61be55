#pragma once

#include <GLES2/gl2.h>

#include <array>

/// How many textures, buffers, programs, shaders and framebuffers there are. A context is current.
[[nodiscard]] inline std::array<int, 5> liveGLObjects() {
    std::array<int, 5> counts{};
    for (GLuint name = 1; name < 500; ++name) {
        counts[0] += glIsTexture(name);
        counts[1] += glIsBuffer(name);
        counts[2] += glIsProgram(name);
        counts[3] += glIsShader(name);
        counts[4] += glIsFramebuffer(name);
    }
    return counts;
}
