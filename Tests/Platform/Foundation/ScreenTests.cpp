#include "Platform/Foundation/Screen.h"

#include <gtest/gtest.h>

using platform::Rect;
using platform::Screen;

TEST(Screen, HasItsBoundsAsHeld) {
    Screen screen;
    screen.setSize({640, 360}, 2);
    EXPECT_EQ(screen.bounds(), (Rect{{0, 0}, {640, 360}}));
    screen.setSize({360, 640}, 2);
    EXPECT_EQ(screen.bounds(), (Rect{{0, 0}, {360, 640}}));
}

TEST(Screen, HasItsNativeBoundsPortraitUpInPixels) {
    Screen screen;
    screen.setSize({640, 360}, 2);
    EXPECT_EQ(screen.nativeBounds(), (Rect{{0, 0}, {720, 1280}}));
    screen.setSize({360, 640}, 2);
    EXPECT_EQ(screen.nativeBounds(), (Rect{{0, 0}, {720, 1280}}));
}

TEST(Screen, HasNativeBoundsInWholePixels) {
    Screen screen;
    screen.setSize({100.2, 33.4}, 1.5);
    EXPECT_EQ(screen.nativeBounds(), (Rect{{0, 0}, {50, 150}}));
}

TEST(Screen, TellsThePixelsOfAPoint) {
    Screen screen;
    EXPECT_EQ(screen.scale(), 1.0);
    screen.setSize({10, 10}, 3);
    EXPECT_EQ(screen.scale(), 3.0);
}

TEST(Screen, IsOneForTheProcess) {
    EXPECT_EQ(&Screen::mainScreen(), &Screen::mainScreen());
}
