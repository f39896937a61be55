#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "Platform/Foundation/MainQueue.h"
#include "Tests/Hosts/EmbeddedScene.h"
#include "Tests/Support/GLPrograms.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <GLES2/gl2.h>
#include <GLES2/gl2ext.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <utility>

using namespace platform;

namespace {

using Pixel = std::array<int, 4>;
constexpr Pixel kRed{255, 0, 0, 255};
constexpr Pixel kBlack{0, 0, 0, 255};
constexpr Pixel kMagenta{255, 0, 255, 255};

/// State as the library's own drawing may leave it, and worse.
void disturbState() {
    GLuint name = 0;
    GLDevice::main().genVertexArrays(1, &name);
    GLDevice::main().bindVertexArray(name);
    glUseProgram(tests::makeWhiteProgram());
    glEnable(GL_BLEND);
    glEnable(GL_SCISSOR_TEST);
    glGenBuffers(1, &name);
    glBindBuffer(GL_ARRAY_BUFFER, name);
    glGenTextures(1, &name);
    for (const GLenum unit : {GLenum{GL_TEXTURE0}, GLenum{GL_TEXTURE3}}) {
        glActiveTexture(unit);
        glBindTexture(GL_TEXTURE_2D, name);
    }
    ASSERT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

GLint integer(GLenum name) {
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

void expectStateLeft() {
    EXPECT_EQ(integer(GL_VERTEX_ARRAY_BINDING_OES), 0);
    EXPECT_EQ(integer(GL_CURRENT_PROGRAM), 0);
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_FALSE);
    EXPECT_EQ(glIsEnabled(GL_SCISSOR_TEST), GL_FALSE);
    EXPECT_EQ(integer(GL_ARRAY_BUFFER_BINDING), 0);
    EXPECT_EQ(integer(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_EQ(integer(GL_TEXTURE_BINDING_2D), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

/// An application's framebuffer, magenta all over.
std::unique_ptr<OffscreenTarget> magentaTarget(SizePx size) {
    auto target = OffscreenTarget::create(size);
    glClearColor(1, 0, 1, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    return std::move(target).value();
}

} // namespace

TEST(DrawnHost, FillsItsRectangleOfTheFramebufferAndNoPixelBesides) {
    EmbeddedScene scene;
    scene.host().appear();
    scene.ask();
    const auto target = magentaTarget({40, 30});
    ASSERT_NE(target->framebuffer(), 0U);
    scene.host().draw(target->framebuffer(), {10, 8, 16, 12});
    const Image picture(target->readPixels());
    const int top = 30 - 8 - 12;
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 40; ++x) {
            const bool window = x >= 10 && x < 26 && y >= top && y < top + 12;
            const bool view = x >= 12 && x < 16 && y >= top + 3 && y < top + 8;
            ASSERT_EQ(colourAt(picture, x, y), view     ? kRed
                                               : window ? kBlack
                                                        : kMagenta)
                << x << ", " << y;
        }
    }
}

TEST(DrawnHost, IgnoresTheFramebufferThatIsBound) {
    EmbeddedScene scene;
    scene.host().appear();
    scene.ask();
    const auto target = magentaTarget({16, 12});
    const auto bound = magentaTarget({16, 12});
    scene.host().draw(target->framebuffer(), {0, 0, 16, 12});
    EXPECT_EQ(colourAt(Image(target->readPixels()), 0, 0), kBlack);
    EXPECT_EQ(colourAt(Image(bound->readPixels()), 0, 0), kMagenta);
}

TEST(DrawnHost, IgnoresTheStateThatTheApplicationLeft) {
    EmbeddedScene scene;
    scene.host().appear();
    scene.ask();
    const auto target = magentaTarget({16, 12});
    disturbState();
    glScissor(1, 1, 1, 1);
    glViewport(3, 3, 1, 1);
    scene.host().draw(target->framebuffer(), {0, 0, 16, 12});
    const Image picture(target->readPixels());
    EXPECT_EQ(colourAt(picture, 0, 0), kBlack);
    EXPECT_EQ(colourAt(picture, 15, 11), kBlack);
    EXPECT_EQ(colourAt(picture, 2, 3), kRed);
}

TEST(DrawnHost, LeavesTheAgreedStateAfterEveryCallThatMayUpload) {
    // With hot spots, whose quad and textures are uploaded inside these calls.
    HeadlessPlayer player({320, 180});
    player.show(flatPicture(8, 4, 0, 255, 0));
    player.controller().addHotSpots(
        {ZNTHotSpot::hotSpotWithTextureImage(flatPicture(2, 2, 255, 0, 0), 0, 0)}, nullptr);
    zanto::EmbeddedHost& host = player.embedded();
    const auto leavesIt = [](const char* name, const auto& call) {
        SCOPED_TRACE(name);
        disturbState();
        call();
        expectStateLeft();
    };
    leavesIt("disappear", [&] { host.disappear(); });
    leavesIt("appear", [&] { host.appear(); });
    leavesIt("resize", [&] { host.resize({200, 200}, 1); });
    leavesIt("setOrientation",
             [&] { host.setOrientation(platform::InterfaceOrientation::LandscapeLeft); });
    leavesIt("cancelTouches", [&] { host.cancelTouches(); });
    leavesIt("setRootViewController", [&] { host.setRootViewController(nullptr); });
}

TEST(DrawnHost, LeavesTheAgreedState) {
    EmbeddedScene scene;
    scene.host().appear();
    scene.ask();
    scene.painter().during = [](GLView&) { disturbState(); };
    scene.draw();
    expectStateLeft();
}

TEST(DrawnHost, LeavesTheAgreedStateAfterASnapshot) {
    EmbeddedScene scene;
    scene.painter().during = [](GLView&) { disturbState(); };
    ASSERT_TRUE(scene.host().snapshot(1).ok());
    expectStateLeft();
}

TEST(DrawnHost, LeavesTheAgreedStateAfterDueWork) {
    EmbeddedScene scene;
    MainQueue::main().async(disturbState);
    scene.ask();
    expectStateLeft();
}

TEST(DrawnHost, MakesItsContextCurrentForAPass) {
    EmbeddedScene scene;
    scene.host().appear();
    EXPECT_TRUE(scene.ask().drawNow);
    const auto created = zanto::SurfacelessContext::create(); // and that is current now
    ASSERT_TRUE(created.ok());
    scene.draw();
    EXPECT_EQ(scene.painter().drawings, 1);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(DrawnHost, LeavesTheStateOfAnotherContextAlone) {
    EmbeddedScene scene;
    const auto created = zanto::SurfacelessContext::create();
    ASSERT_TRUE(created.ok());
    glEnable(GL_BLEND);
    scene.ask();
    scene.draw();
    ASSERT_TRUE(scene.host().snapshot(1).ok());
    created.value()->makeCurrent();
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_TRUE);
}
