#include "Benchmarks/Soak/GLCensus.h"

#include <GLES2/gl2.h>

namespace {

/// Drivers assign the lowest free names, so no name follows a gap of this width.
constexpr GLuint kWidestGap = 4096;

bool isKept(GLuint buffer) {
    GLint bytes = 0;
    GLint usage = 0;
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_SIZE, &bytes);
    glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_USAGE, &usage);
    return bytes == 48 && usage == GL_STATIC_DRAW;
}

/// Counts the objects of that name; returns whether there is one.
bool count(GLCensus& census, GLuint name) {
    const bool isBuffer = glIsBuffer(name) == GL_TRUE;
    if (isBuffer)
        ++(isKept(name) ? census.keptBuffers : census.buffers);
    const int textures = glIsTexture(name);
    const int framebuffers = glIsFramebuffer(name);
    const int renderbuffers = glIsRenderbuffer(name);
    const int programs = glIsProgram(name);
    const int shaders = glIsShader(name);
    census.textures += textures;
    census.framebuffers += framebuffers;
    census.renderbuffers += renderbuffers;
    census.programs += programs;
    census.shaders += shaders;
    return isBuffer || textures + framebuffers + renderbuffers + programs + shaders > 0;
}

} // namespace

GLCensus takeGLCensus() {
    GLint bound = 0;
    glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &bound);
    GLCensus census;
    GLuint last = 0;
    for (GLuint name = 1; name <= last + kWidestGap; ++name) {
        if (count(census, name))
            last = name;
    }
    glBindBuffer(GL_ARRAY_BUFFER, static_cast<GLuint>(bound));
    return census;
}
