#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>

using namespace platform;

namespace {

using Pixel = std::array<int, 4>;

std::unique_ptr<OffscreenTarget> makeTarget(SizePx size) {
    auto target = OffscreenTarget::create(size);
    return std::move(target).value();
}

GLuint boundFramebuffer() {
    GLint name = 0;
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &name);
    return static_cast<GLuint>(name);
}

void fill(int x, int y, int width, int height, float red, float green) {
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, width, height);
    glClearColor(red, green, 0, 0.25F);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
}

} // namespace

TEST(OffscreenTarget, IsTransparentBlackAtFirst) {
    const auto host = makeHost({4, 4});
    // As an application may have left it.
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glClearColor(1, 1, 1, 1);
    const auto target = makeTarget({5, 3});
    const Image picture(target->readPixels());
    EXPECT_EQ(picture.widthPx(), 5);
    EXPECT_EQ(picture.heightPx(), 3);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(colourAt(picture, x, y), (Pixel{0, 0, 0, 0})) << x << ", " << y;
    }
}

TEST(OffscreenTarget, GivesItsTopRowFirstAndAlphaAsItWasLeft) {
    const auto host = makeHost({4, 4});
    const auto target = makeTarget({3, 4});
    fill(0, 0, 3, 4, 1, 0);
    fill(1, 3, 1, 1, 0, 1); // GL counts from below: the top row
    const Image picture(target->readPixels());
    EXPECT_EQ(colourAt(picture, 1, 0), (Pixel{0, 255, 0, 64}));
    EXPECT_EQ(colourAt(picture, 0, 0), (Pixel{255, 0, 0, 64}));
    EXPECT_EQ(colourAt(picture, 1, 3), (Pixel{255, 0, 0, 64}));
}

TEST(OffscreenTarget, ReadsRowsOfEveryWidth) {
    const auto host = makeHost({4, 4});
    for (int width = 1; width < 10; ++width) {
        const auto target = makeTarget({width, 2});
        fill(width - 1, 0, 1, 1, 1, 0);
        const Image picture(target->readPixels());
        for (int x = 0; x < width; ++x)
            EXPECT_EQ(colourAt(picture, x, 1)[0], x == width - 1 ? 255 : 0) << width;
    }
}

TEST(OffscreenTarget, IsBoundWhileItLives) {
    const auto host = makeHost({4, 4});
    const GLuint before = boundFramebuffer();
    {
        const auto target = makeTarget({2, 2});
        EXPECT_NE(target->framebuffer(), 0U);
        EXPECT_EQ(boundFramebuffer(), target->framebuffer());
        EXPECT_EQ(target->size(), (SizePx{2, 2}));
    }
    EXPECT_EQ(boundFramebuffer(), before);
}

TEST(OffscreenTarget, BringsBackTheOneAroundIt) {
    const auto host = makeHost({4, 4});
    const auto outer = makeTarget({2, 2});
    {
        const auto inner = makeTarget({3, 3});
        EXPECT_EQ(boundFramebuffer(), inner->framebuffer());
    }
    EXPECT_EQ(boundFramebuffer(), outer->framebuffer());
}

TEST(OffscreenTarget, IsReadWhateverIsBound) {
    const auto host = makeHost({4, 4});
    const auto target = makeTarget({2, 2});
    fill(0, 0, 2, 2, 1, 0);
    const auto other = makeTarget({2, 2});
    EXPECT_EQ(colourAt(Image(target->readPixels()), 0, 0)[0], 255);
}

TEST(OffscreenTarget, LeavesTheBoundTextureAlone) {
    const auto host = makeHost({4, 4});
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, texture);
    {
        const auto target = makeTarget({2, 2});
        GLint bound = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        EXPECT_EQ(static_cast<GLuint>(bound), texture);
    }
    glDeleteTextures(1, &texture);
}

TEST(OffscreenTarget, RefusesASideOfNothing) {
    const auto host = makeHost({4, 4});
    for (const SizePx size : {SizePx{0, 1}, SizePx{1, 0}, SizePx{-1, 1}, SizePx{0, 0}}) {
        const auto target = OffscreenTarget::create(size);
        ASSERT_FALSE(target.ok());
        EXPECT_EQ(target.error().code, ErrorCode::TooLarge);
    }
}

TEST(OffscreenTarget, RefusesASideOverTheContextsLimitAndSaysWhich) {
    const auto host = makeHost({4, 4});
    const GLuint before = boundFramebuffer();
    const int limit = GLDevice::main().maxTextureSidePx();
    const auto target = OffscreenTarget::create({2, limit + 1});
    ASSERT_FALSE(target.ok());
    EXPECT_EQ(target.error().code, ErrorCode::TooLarge);
    EXPECT_NE(target.error().detail.find(std::to_string(limit + 1)), std::string::npos);
    EXPECT_EQ(boundFramebuffer(), before);
}

TEST(OffscreenTarget, TakesASideAtTheContextsLimit) {
    const auto host = makeHost({4, 4});
    EXPECT_TRUE(OffscreenTarget::create({GLDevice::main().maxTextureSidePx(), 1}).ok());
}

TEST(OffscreenTarget, DeletesItsNames) {
    const auto host = makeHost({4, 4});
    GLuint framebuffer = 0;
    GLint texture = 0;
    {
        const auto target = makeTarget({2, 2});
        framebuffer = target->framebuffer();
        glGetFramebufferAttachmentParameteriv(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0,
                                              GL_FRAMEBUFFER_ATTACHMENT_OBJECT_NAME, &texture);
        EXPECT_EQ(glIsTexture(static_cast<GLuint>(texture)), GL_TRUE);
    }
    EXPECT_EQ(glIsFramebuffer(framebuffer), GL_FALSE);
    EXPECT_EQ(glIsTexture(static_cast<GLuint>(texture)), GL_FALSE);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
