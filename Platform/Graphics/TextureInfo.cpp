#include "Platform/Graphics/TextureInfo.h"

#include "Platform/Graphics/GLContext.h"

#include <GLES2/gl2.h>

#include <utility>

namespace platform {
namespace {

/// Clears earlier errors, so that they are not attributed to an upload. The loop is bounded because
/// a lost context reports the same error forever.
void clearErrors() {
    constexpr int mostFlags = 16;
    for (int i = 0; i < mostFlags && glGetError() != GL_NO_ERROR; ++i) {
    }
}

} // namespace

TextureInfo::TextureInfo(std::shared_ptr<GLContext> context, SizePx size)
    : context_(std::move(context)), size_(size) {
    glGenTextures(1, &name_);
    glBindTexture(GL_TEXTURE_2D, name_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

TextureInfo::~TextureInfo() {
    if (GLContext::setCurrentContext(context_))
        glDeleteTextures(1, &name_);
}

std::uint32_t TextureInfo::define(std::uint32_t format, const std::uint8_t* pixels) const {
    clearErrors();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), size_.width, size_.height, 0, format,
                 GL_UNSIGNED_BYTE, pixels);
    return glGetError();
}

void TextureInfo::refill(std::uint32_t format, const std::uint8_t* pixels) const {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, size_.width, size_.height, format, GL_UNSIGNED_BYTE,
                    pixels);
}

} // namespace platform
