#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/Support/GLObjects.h"

#include <gtest/gtest.h>

#include <utility>

TEST(VideoUploads, AreTwoPlanesAFrameAndTheWatermarksOnce) {
    VideoScene scene;
    EXPECT_EQ(scene.uploadsDuring([&] {
        for (int i = 0; i < 10; ++i) {
            scene.give(flatFrame(kFrameSize, kOrange));
            (void)scene.snapshot();
        }
    }),
              22U);
}

TEST(VideoUploads, ServeBothViewsOfSideBySide) {
    VideoScene scene;
    scene.controller().setDisplayMode(DisplayMode::SideBySide);
    scene.give(flatFrame(kFrameSize, kBlue));
    (void)scene.snapshot();
    EXPECT_EQ(scene.uploadsDuring([&] {
        for (int i = 0; i < 10; ++i) {
            scene.give(flatFrame(kFrameSize, kOrange));
            (void)scene.snapshot();
        }
    }),
              20U);
    scene.host().advanceTo(platform::fromSeconds(1));
    const auto picture = scene.snapshot();
    EXPECT_LE(distance(colourAt(*picture, 80, kClearY), shownColour(kOrange)), 1);
    EXPECT_LE(distance(colourAt(*picture, 240, kClearY), shownColour(kOrange)), 1);
}

TEST(VideoUploads, AreNoneForAFrameThatIsShownAgain) {
    VideoScene scene;
    const auto frame = flatFrame(kFrameSize, kOrange);
    scene.give(frame);
    (void)scene.snapshot();
    EXPECT_EQ(scene.uploadsDuring([&] {
        scene.give(frame);
        scene.controller().setDisplayMode(DisplayMode::SideBySide);
        scene.give(frame);
    }),
              0U);
}

TEST(VideoUploads, MakeNoObjectsBeyondTwoSetsOfTextures) {
    VideoScene scene;
    platform::PixelBufferPtr kept; // as a player keeps the last frame
    const auto play = [&](int frames) {
        for (int i = 0; i < frames; ++i) {
            auto frame = flatFrame(kFrameSize, kOrange);
            scene.give(frame);
            (void)scene.snapshot();
            kept = std::move(frame);
        }
    };
    play(3);
    const auto before = liveGLObjects();
    play(50);
    EXPECT_EQ(liveGLObjects(), before);
}

TEST(VideoUploads, FreeTheStorageOfAnEarlierSize) {
    VideoScene scene;
    const auto play = [&](platform::SizePx size, int frames) {
        for (int i = 0; i < frames; ++i)
            scene.view().glDrawer()->drawCVPixelBuffer(flatFrame(size, kOrange), {});
    };
    scene.give(flatFrame(kFrameSize, kOrange));
    play(kFrameSize, 20);
    scene.host().settle();
    const auto before = liveGLObjects();
    play({16, 8}, 2);
    EXPECT_NE(liveGLObjects(), before);
    play(kFrameSize, 40);
    EXPECT_EQ(liveGLObjects(), before);
}

TEST(VideoUploads, LeaveNoObjectBehindWithTheView) {
    VideoScene scene;
    (void)scene.snapshot();
    const auto before = liveGLObjects();
    for (int cycle = 0; cycle < 3; ++cycle) {
        auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
        for (const DisplayMode mode : kModes) {
            view->startRenderVO(mode);
            view->displayCVPixelBuffer(flatFrame(kFrameSize, kOrange));
            (void)view->snapshot();
        }
        scene.host().settle();
        EXPECT_GT(liveGLObjects(), before);
        view.reset();
        scene.host().settle();
        EXPECT_EQ(liveGLObjects(), before) << "cycle " << cycle;
    }
}
