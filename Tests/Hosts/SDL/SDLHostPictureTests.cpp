#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/DirectionPanorama.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

namespace {

constexpr platform::Size kSize{160, 90};
constexpr int kPanoramaWidthPx = 512;

/// What the host without a window shows.
platform::ImagePtr headlessPicture(DisplayMode mode, platform::Size size = kSize) {
    HeadlessPlayer player(size);
    player.controller().setDisplayMode(mode);
    player.show(directionPanorama(kPanoramaWidthPx));
    return player.snapshot();
}

} // namespace

TEST(SDLHostPicture, IsTheHeadlessHosts) {
    const auto expected = headlessPicture(DisplayMode::Sphere);
    SDLScene scene(kSize);
    scene.show(directionPanorama(kPanoramaWidthPx));
    EXPECT_TRUE(picturesMatch("sdl-sphere", *scene.windowPicture(), *expected));
}

TEST(SDLHostPicture, ChangesWithTheMode) {
    const auto plane = headlessPicture(DisplayMode::Plane);
    const auto planet = headlessPicture(DisplayMode::LittlePlanet);
    SDLScene scene(kSize);
    scene.show(directionPanorama(kPanoramaWidthPx));
    scene.controller().setDisplayMode(DisplayMode::Plane);
    scene.settle();
    EXPECT_TRUE(picturesMatch("sdl-plane", *scene.windowPicture(), *plane));
    scene.controller().setDisplayMode(DisplayMode::LittlePlanet);
    scene.settle();
    EXPECT_TRUE(picturesMatch("sdl-planet", *scene.windowPicture(), *planet));
}

TEST(SDLHostPicture, FollowsTheWindowsSize) {
    // This driver's surface keeps its first size, so the window can only become smaller.
    const auto smaller = headlessPicture(DisplayMode::Sphere, {120, 80});
    const auto portrait = headlessPicture(DisplayMode::Sphere, {60, 84});
    SDLScene scene(kSize);
    scene.show(directionPanorama(kPanoramaWidthPx));
    SDL_SetWindowSize(scene.window(), 120, 80);
    scene.settle();
    EXPECT_TRUE(picturesMatch("sdl-smaller", *scene.windowPicture(), *smaller));
    SDL_SetWindowSize(scene.window(), 60, 84);
    scene.settle();
    EXPECT_TRUE(picturesMatch("sdl-portrait", *scene.windowPicture(), *portrait));
}

TEST(SDLHostPicture, IsBlackWithoutAView) {
    SDLScene scene(kSize);
    scene.settle();
    EXPECT_EQ(scene.host().framesPresented(), 1);
    EXPECT_EQ(colourAt(*scene.windowPicture(), 80, 45)[0], 0);
    glClearColor(1, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    scene.push(SDL_WINDOWEVENT_EXPOSED);
    scene.settle();
    EXPECT_EQ(colourAt(*scene.windowPicture(), 80, 45)[0], 0);
}

TEST(SDLHostPicture, GoesBlackWhenTheControllerIsReleased) {
    SDLScene scene(kSize);
    scene.show(flatPicture(64, 32, 0, 255, 0));
    EXPECT_GT(colourAt(*scene.windowPicture(), 80, 45)[1], 200);
    scene.releaseController();
    scene.push(SDL_WINDOWEVENT_EXPOSED);
    scene.settle();
    EXPECT_EQ(colourAt(*scene.windowPicture(), 80, 45)[1], 0);
}
