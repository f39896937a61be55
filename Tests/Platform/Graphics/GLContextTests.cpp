#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLDevice.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <memory>

using namespace platform;

TEST(GLContext, IsNullWithALogLineWhileThereIsNoHost) {
    const LogRecorder log;
    EXPECT_EQ(GLContext::create(), nullptr);
    EXPECT_EQ(log.lines().size(), 1U);
    EXPECT_EQ(log.count("no host has brought a GL context"), 1);
}

TEST(GLContext, IsMadeCurrent) {
    const auto host = makeHost({4, 4});
    const auto context = GLContext::create();
    ASSERT_NE(context, nullptr);
    EXPECT_TRUE(GLContext::setCurrentContext(context));
    EXPECT_EQ(GLContext::currentContext(), context);
    EXPECT_NE(glGetString(GL_VERSION), nullptr);
}

TEST(GLContext, IsNotMadeCurrentByNull) {
    const auto host = makeHost({4, 4});
    const auto context = GLContext::create();
    ASSERT_TRUE(GLContext::setCurrentContext(context));
    EXPECT_FALSE(GLContext::setCurrentContext(nullptr));
    EXPECT_EQ(GLContext::currentContext(), context);
}

TEST(GLContext, IsCurrentNoMoreOnceItIsGone) {
    const auto host = makeHost({4, 4});
    auto context = GLContext::create();
    ASSERT_TRUE(GLContext::setCurrentContext(context));
    context.reset();
    EXPECT_EQ(GLContext::currentContext(), nullptr);
}

TEST(GLContext, SharesNamesWithEveryOther) {
    const auto host = makeHost({4, 4});
    auto one = GLContext::create();
    const auto other = GLContext::create();
    ASSERT_TRUE(GLContext::setCurrentContext(one));
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    one.reset();
    ASSERT_TRUE(GLContext::setCurrentContext(other));
    EXPECT_EQ(glIsTexture(texture), GL_TRUE);
    glDeleteTextures(1, &texture);
}

TEST(GLContext, IsRefusedOnceItsHostIsGone) {
    auto host = makeHost({4, 4});
    const auto context = GLContext::create();
    host.reset();
    EXPECT_FALSE(GLContext::setCurrentContext(context));
}

TEST(GLContext, IsRefusedByTheHostAfterItsOwn) {
    auto host = makeHost({4, 4});
    const auto old = GLContext::create();
    host.reset();
    host = makeHost({4, 4});
    EXPECT_FALSE(GLContext::setCurrentContext(old));
    EXPECT_TRUE(GLContext::setCurrentContext(GLContext::create()));
}

TEST(GLDevice, KnowsTheLongestSideOfATexture) {
    const auto host = makeHost({4, 4});
    GLint longest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &longest);
    EXPECT_EQ(GLDevice::main().maxTextureSidePx(), longest);
    EXPECT_GE(longest, 64); // the least that OpenGL ES 2.0 promises
}

TEST(GLDevice, HasAnotherGenerationForEveryContext) {
    auto host = makeHost({4, 4});
    EXPECT_TRUE(GLDevice::main().isInstalled());
    const auto first = GLDevice::main().generation();
    EXPECT_NE(first, 0U);
    host.reset();
    EXPECT_FALSE(GLDevice::main().isInstalled());
    host = makeHost({4, 4});
    EXPECT_NE(GLDevice::main().generation(), first);
}

TEST(GLDevice, MakesBindsAndDeletesVertexArrays) {
    const auto host = makeHost({4, 4});
    const GLDevice& device = GLDevice::main();
    GLuint name = 0;
    device.genVertexArrays(1, &name);
    EXPECT_NE(name, 0U);
    device.bindVertexArray(name);
    glEnableVertexAttribArray(3);
    GLint enabled = 0;
    device.bindVertexArray(0);
    glGetVertexAttribiv(3, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &enabled);
    EXPECT_EQ(enabled, GL_FALSE) << "the array belongs to the object";
    device.deleteVertexArrays(1, &name);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
