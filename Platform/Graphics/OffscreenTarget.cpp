#include "Platform/Graphics/OffscreenTarget.h"

#include "Platform/Graphics/GLDevice.h"

#include <GLES2/gl2.h>

#include <algorithm>
#include <string>

namespace platform {
namespace {

std::string describe(SizePx size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height) + " pixels";
}

} // namespace

Result<std::unique_ptr<OffscreenTarget>> OffscreenTarget::create(SizePx size) {
    const int limit = GLDevice::main().maxTextureSidePx();
    if (size.width < 1 || size.height < 1 || size.width > limit || size.height > limit)
        return Error{ErrorCode::TooLarge,
                     describe(size) + " is not between 1 and " + std::to_string(limit) + " a side"};
    std::unique_ptr<OffscreenTarget> target(new OffscreenTarget(size));
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        return Error{ErrorCode::Unavailable, "no framebuffer of " + describe(size)};
    return target;
}

OffscreenTarget::OffscreenTarget(SizePx size)
    : size_(size), generation_(GLDevice::main().generation()) {
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &previous_);
    glGetIntegerv(GL_VIEWPORT, previousViewport_.data());
    // The active unit keeps the texture that its user has bound there.
    GLint boundTexture = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &boundTexture);
    glGenTextures(1, &texture_);
    glBindTexture(GL_TEXTURE_2D, texture_);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, size.width, size.height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 nullptr);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(boundTexture));
    glGenFramebuffers(1, &framebuffer_);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture_, 0);
    clear(); // the content of a new texture is undefined
}

void OffscreenTarget::clear() const {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glDisable(GL_SCISSOR_TEST);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
}

OffscreenTarget::~OffscreenTarget() {
    // In a context that has replaced ours, the names belong to other objects.
    if (generation_ != GLDevice::main().generation())
        return;
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(previous_));
    glViewport(previousViewport_[0], previousViewport_[1], previousViewport_[2],
               previousViewport_[3]);
    glDeleteFramebuffers(1, &framebuffer_);
    glDeleteTextures(1, &texture_);
}

PixelStorage OffscreenTarget::readPixels() const {
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    PixelStorage pixels(size_.width, size_.height);
    glReadPixels(0, 0, size_.width, size_.height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.bytes.get());
    // The first row in GL is the lowest one.
    for (int top = 0, bottom = size_.height - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(pixels.row(top), pixels.row(top) + pixels.rowBytes(), pixels.row(bottom));
    return pixels;
}

} // namespace platform
