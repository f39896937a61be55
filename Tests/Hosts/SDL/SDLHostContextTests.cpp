#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"
#include "Tests/Support/ScopedVariable.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

using namespace std::chrono_literals;

namespace {

/// Why no window can be had.
std::string refusal() {
    const auto host = zanto::SDLHost::create({.title = "test"});
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

TEST(SDLHostContext, IsTheOnlyOneOfSDL) {
    SDLScene scene;
    EXPECT_NE(refusal().find("another host of this kind"), std::string::npos);
    scene.show(flatPicture(8, 4, 0, 255, 0));
    EXPECT_GT(colourAt(*scene.windowPicture(), 80, 45)[1], 200) << "the first one goes on";
}

TEST(SDLHostContext, IsCurrentAgainAfterAHostWithAnotherContext) {
    SDLScene scene;
    const auto headless = zanto::HeadlessHost::create({.size = {4, 4}});
    ASSERT_TRUE(headless.ok());
    headless.value()->settle();
    scene.show(flatPicture(8, 4, 0, 255, 0));
    EXPECT_GT(colourAt(*scene.windowPicture(), 80, 45)[1], 200);
    headless.value()->settle();
    EXPECT_GT(colourAt(*scene.windowPicture(), 80, 45)[1], 200);
}

TEST(SDLHostContext, MayBeMadeWhileAnotherHostIsAlive) {
    const auto headless = zanto::HeadlessHost::create({.size = {4, 4}});
    ASSERT_TRUE(headless.ok());
    SDLScene scene;
    scene.host().embedded().perform([&] {
        scene.show(flatPicture(8, 4, 0, 255, 0));
        EXPECT_GT(colourAt(*scene.windowPicture(), 80, 45)[1], 200);
        scene.releaseController();
    });
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
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", std::nullopt);
    const tests::ScopedVariable display("DISPLAY", std::nullopt);
    const tests::ScopedVariable wayland("WAYLAND_DISPLAY", std::nullopt);
    ::testing::internal::CaptureStderr();
    EXPECT_NE(refusal().find("DISPLAY"), std::string::npos);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(SDLHostDisplay, IsNamedWhenItDoesNotAnswer) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", std::nullopt);
    const tests::ScopedVariable wayland("WAYLAND_DISPLAY", std::nullopt);
    const tests::ScopedVariable display("DISPLAY", "nowhere.invalid:1");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(refusal(), "SDL: opening the display failed: x11 not available");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(SDLHostDisplay, NeedsADriverThatExists) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", "nonexistent");
    EXPECT_EQ(refusal(), "SDL: opening the display failed: nonexistent not available");
}

TEST(SDLHostDisplay, NeedsADriverWithGraphics) {
    const tests::ScopedVariable driver("SDL_VIDEODRIVER", "dummy");
    EXPECT_NE(refusal().find("making the window"), std::string::npos);
}
