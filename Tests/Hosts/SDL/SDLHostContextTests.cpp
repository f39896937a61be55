#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

using namespace std::chrono_literals;

namespace {

/// Why no window can be had.
std::string refusal() {
    const auto host = SDLHost::create({.title = "test"});
    EXPECT_FALSE(host.ok());
    if (host.ok())
        return {};
    EXPECT_EQ(host.error().code, platform::ErrorCode::Unavailable);
    return host.error().detail;
}

} // namespace

TEST(SDLHostContext, IsWhatTheLibraryNeedsAndNoMore) {
    const SDLScene scene;
    GLint alphaBits = -1;
    GLint depthBits = -1;
    GLint samples = -1;
    glGetIntegerv(GL_ALPHA_BITS, &alphaBits);
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    glGetIntegerv(GL_SAMPLES, &samples);
    EXPECT_EQ(alphaBits, 0);
    EXPECT_EQ(depthBits, 0);
    EXPECT_EQ(samples, 0);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(glGetString(GL_VERSION))).find("OpenGL ES"),
              0U);
}

TEST(SDLHostContext, LeavesNoErrorBehind) {
    SDLScene scene;
    scene.show(flatPicture(8, 4, 255, 0, 0));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(SDLHostContext, IsOneAProcess) {
    SDLScene scene;
    EXPECT_NE(refusal().find("another host"), std::string::npos);
    const auto headless = HeadlessHost::create({.size = {4, 4}});
    EXPECT_FALSE(headless.ok());
    scene.show(flatPicture(8, 4, 0, 255, 0));
    EXPECT_GT(colourAt(*scene.windowPicture(), 80, 45)[1], 200) << "the first one goes on";
}

TEST(SDLHostContext, ComesAgainAfterTheFirstIsGone) {
    for (int i = 0; i < 3; ++i) {
        SDLScene scene;
        scene.show(flatPicture(8, 4, 0, 255, 0));
        EXPECT_GT(colourAt(*scene.windowPicture(), 80, 45)[1], 200);
    }
}

TEST(SDLHostContext, MayGoBeforeTheController) {
    SDLScene scene;
    scene.show(flatPicture(8, 4, 255, 0, 0));
    scene.endHost();
    EXPECT_TRUE(scene.controller().isReadyForDisplay());
}

TEST(SDLHostContext, MayGoAfterTheController) {
    SDLScene scene;
    scene.show(flatPicture(8, 4, 255, 0, 0));
    scene.releaseController();
    scene.settle();
    scene.endHost();
    EXPECT_FALSE(platform::GLDevice::main().isInstalled());
}

TEST(SDLHostContext, GivesTheSamePictureWhenItIsMadeAnew) {
    SDLScene scene;
    scene.show(directionPanorama(512));
    const auto before = scene.windowPicture();
    ASSERT_FALSE(scene.host().recreateContext().has_value());
    scene.settle();
    EXPECT_TRUE(picturesAreEqual("sdl-context-anew", *scene.windowPicture(), *before));
}

TEST(SDLHostDisplay, IsMissedQuickly) {
    unsetenv("SDL_VIDEODRIVER");
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    ::testing::internal::CaptureStderr();
    EXPECT_NE(refusal().find("DISPLAY"), std::string::npos);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(SDLHostDisplay, IsNamedWhenItDoesNotAnswer) {
    unsetenv("SDL_VIDEODRIVER");
    unsetenv("WAYLAND_DISPLAY");
    setenv("DISPLAY", "nowhere.invalid:1", 1);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(refusal(), "SDL: opening the display failed: x11 not available");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(SDLHostDisplay, NeedsADriverThatExists) {
    setenv("SDL_VIDEODRIVER", "nonexistent", 1);
    EXPECT_EQ(refusal(), "SDL: opening the display failed: nonexistent not available");
}

TEST(SDLHostDisplay, NeedsADriverWithGraphics) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    EXPECT_NE(refusal().find("making the window"), std::string::npos);
}
