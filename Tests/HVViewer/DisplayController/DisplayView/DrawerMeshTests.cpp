#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <gtest/gtest.h>

TEST(Drawer, KeepsNoBuffersOfEarlierShapesOrModes) {
    HeadlessPlayer player({320, 180});
    player.controller().setDisplayMode(DisplayMode::Plane);
    player.show(flatPicture(64, 32, 250, 120, 10));
    const auto resize = [&](int i) {
        player.embedded().resize({320.0 + i, 180}, 1);
        (void)player.snapshot();
    };
    resize(100); // the buffers of the set-up go with the first change
    const auto before = liveGLObjects();
    for (int i = 0; i < 60; ++i)
        resize(i);
    EXPECT_EQ(liveGLObjects(), before);
    for (int i = 0; i < 10; ++i) {
        player.controller().setDisplayMode(i % 2 ? DisplayMode::Plane : DisplayMode::Sphere);
        (void)player.snapshot();
    }
    EXPECT_EQ(liveGLObjects(), before);
}
