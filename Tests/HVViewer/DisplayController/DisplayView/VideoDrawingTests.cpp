#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLDevice.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

/// Another colour in each quarter: the left is orange, the right blue, the lower half darker.
YCbCr quarters(int x, int y) {
    YCbCr colour = x < kFrameSize.width / 2 ? kOrange : kBlue;
    if (y >= kFrameSize.height / 2)
        colour[0] = static_cast<std::uint8_t>(colour[0] - 40);
    return colour;
}

} // namespace

TEST(VideoDrawing, ShowsTheColoursOfTheMatrixInEveryMode) {
    VideoScene scene;
    for (const DisplayMode mode : kModes) {
        scene.controller().setDisplayMode(mode);
        scene.host().advanceTo(scene.host().now() + platform::fromSeconds(1));
        // Side by side the middle is the gap.
        const int x = mode == DisplayMode::SideBySide ? kClearX / 2 : kClearX;
        for (const YCbCr colour : {kOrange, kBlue, kGrey, kBlack, YCbCr{235, 128, 128},
                                   YCbCr{81, 90, 240}, YCbCr{5, 128, 128}}) {
            scene.give(flatFrame(kFrameSize, colour));
            EXPECT_LE(distance(colourAt(*scene.snapshot(), x, kClearY), shownColour(colour)), 1)
                << "luma " << int{colour[0]} << " in mode " << static_cast<int>(mode);
        }
    }
}

TEST(VideoDrawing, StandsUprightAndIsNotMirrored) {
    VideoScene scene;
    for (const DisplayMode mode : {DisplayMode::Plane, DisplayMode::Sphere}) {
        scene.controller().setDisplayMode(mode);
        scene.give(videoFrame(kFrameSize, quarters));
        const auto picture = scene.snapshot();
        for (const auto& [x, y] : {std::array{120, 75}, {200, 75}, {120, 100}, {200, 100}}) {
            const YCbCr expected =
                quarters(x < 160 ? 0 : kFrameSize.width - 1, y < 90 ? 0 : kFrameSize.height - 1);
            EXPECT_LE(distance(colourAt(*picture, x, y), shownColour(expected)), 1)
                << x << ", " << y << " in mode " << static_cast<int>(mode);
        }
    }
}

TEST(VideoDrawing, ShowsTheSameWhateverLiesBetweenRows) {
    VideoScene scene;
    const auto gradient = [](int x, int y) {
        return YCbCr{static_cast<std::uint8_t>(40 + 2 * x + 2 * y),
                     static_cast<std::uint8_t>(100 + x), static_cast<std::uint8_t>(150 - 2 * y)};
    };
    scene.give(videoFrame({63, 31}, gradient));
    const auto expected = scene.snapshot();
    for (const int padding : {1, 2, 65}) {
        scene.give(videoFrame({63, 31}, gradient, padding));
        EXPECT_TRUE(
            picturesAreEqual("padding-" + std::to_string(padding), *scene.snapshot(), *expected));
    }
}

TEST(VideoDrawing, ShowsFramesOfAnySize) {
    VideoScene scene;
    for (const platform::SizePx size :
         {platform::SizePx{1, 1}, {2, 2}, {1, 5}, {3, 1}, {7, 5}, {1023, 511}}) {
        scene.give(flatFrame(size, kOrange));
        EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1)
            << size.width << " x " << size.height;
    }
}

TEST(VideoDrawing, TakesWholeHalvesOfAnOddSizeForChroma) {
    VideoScene scene;
    scene.controller().setDisplayMode(DisplayMode::Plane);
    scene.give(flatFrame(kFrameSize, kGrey));
    const auto plane = scene.snapshot();
    const auto isPlane = [&](int x, int y) { return colourAt(*plane, x, y)[0] != 0; };
    int right = 160;
    while (right < 319 && isPlane(right + 1, kClearY))
        ++right;
    int bottom = kClearY;
    while (bottom < 179 && isPlane(right, bottom + 1))
        ++bottom;

    // The last column and the last row of a 5 x 3 frame have a block of their own in its plane.
    const YCbCr left{120, 90, 170};
    const YCbCr inner{120, 160, 110};
    scene.give(videoFrame({5, 3}, [&](int x, int y) {
        if (x >= 4 || y >= 2)
            return YCbCr{120, 128, 128};
        return x < 2 ? left : inner;
    }));
    const auto picture = scene.snapshot();
    // Two columns of chroma over the whole width, and one row.
    EXPECT_LE(distance(colourAt(*picture, 320 - right + 4, kClearY), shownColour(left)), 2);
    EXPECT_LE(distance(colourAt(*picture, right - 4, kClearY), shownColour(inner)), 2);
    EXPECT_LE(distance(colourAt(*picture, right - 4, bottom - 1), shownColour(inner)), 2);
}

TEST(VideoDrawing, ShowsAVideoOfOneFrame) {
    VideoScene scene;
    scene.give(flatFrame(kFrameSize, kOrange));
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
}

TEST(VideoDrawing, DrawsTheEarlierFrameAgainWithoutABuffer) {
    VideoScene scene;
    scene.give(flatFrame(kFrameSize, kOrange));
    scene.host().advanceTo(platform::fromSeconds(0.5));
    const int presented = scene.host().framesPresented();
    EXPECT_EQ(scene.uploadsDuring([&] { scene.give(nullptr); }), 0U);
    scene.host().advanceTo(platform::fromSeconds(1));
    EXPECT_EQ(scene.host().framesPresented(), presented + 1);
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
}

TEST(VideoDrawing, NeedsNoBufferOnceItIsUploaded) {
    VideoScene scene;
    auto frame = flatFrame(kFrameSize, kOrange);
    scene.give(frame);
    const std::weak_ptr<const platform::PixelBuffer> watched = frame;
    frame.reset();
    EXPECT_TRUE(watched.expired());
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
}

TEST(VideoDrawing, RefusesFramesWhileItIsSetUpForAPicture) {
    HeadlessPlayer player({320, 180});
    player.show(flatPicture(8, 4, 0, 200, 0));
    const LogRecorder log;
    player.view().glDrawer()->drawCVPixelBuffer(flatFrame(kFrameSize, kOrange), {});
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"Empty video texture cache provided"}));
    EXPECT_EQ(middleOf(player), (std::array{0, 200, 0, 255}));
}

TEST(VideoDrawing, SaysThatNoCacheCanBeMadeInAContextThatIsGone) {
    VideoScene scene;
    scene.give(flatFrame(kFrameSize, kOrange));
    const auto drawer = platform::make<ZNTDrawer>();
    const auto view = platform::make<ZNTDisplayView>(platform::Rect{{}, {320, 180}});
    view->displayCVPixelBuffer(flatFrame(kFrameSize, kOrange)); // for a context
    drawer->setupDrawerWithType(ContentType::Video, view);
    ASSERT_TRUE(scene.host().replaceContext());
    const LogRecorder log;
    drawer->drawCVPixelBuffer(flatFrame(kFrameSize, kOrange), {});
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"Error at CVOpenGLESTextureCacheCreate -1",
                                                     "Empty video texture cache provided"}));
}

TEST(VideoDrawing, SaysWhichPlaneCannotBeUploadedAndDrawsOn) {
    VideoScene scene;
    scene.give(flatFrame(kFrameSize, kOrange));
    (void)scene.snapshot();
    const int tooWide = platform::GLDevice::main().maxTextureSidePx() + 1;
    const LogRecorder log;
    scene.give(flatFrame({tooWide, 2}, kOrange));
    EXPECT_EQ(log.lines(),
              (std::vector<std::string>{
                  "Error at _lumaTexture CVOpenGLESTextureCacheCreateTextureFromImage 1281"}));
    EXPECT_EQ(middleOf(scene), (std::array{0, 0, 0, 255})) << "half a frame is none";
    scene.give(flatFrame(kFrameSize, kOrange));
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
}

TEST(VideoDrawing, NamesAChromaPlaneThatCannotBeUploaded) {
    VideoScene scene;
    const int tooWide = 2 * (platform::GLDevice::main().maxTextureSidePx() + 1);
    const LogRecorder log;
    scene.give(flatFrame({tooWide, 2}, kOrange));
    EXPECT_EQ(log.count("Error at _lumaTexture CVOpenGLESTextureCacheCreateTextureFromImage "), 1);
    EXPECT_EQ(log.count("Error at _chromaTexture CVOpenGLESTextureCacheCreateTextureFromImage "),
              1);
}

TEST(VideoDrawing, BindsItsTexturesAgainAfterSomebodyElseUsedTheUnits) {
    VideoScene scene;
    scene.give(noise());
    const auto expected = scene.snapshot();
    platform::GLDevice::main().makeCurrent();
    for (GLenum unit = GL_TEXTURE0 + 4; unit-- > GL_TEXTURE0;) {
        glActiveTexture(unit);
        glBindTexture(GL_TEXTURE_2D, 0);
    }
    EXPECT_TRUE(picturesAreEqual("units", *scene.snapshot(), *expected));
}

TEST(VideoDrawing, LeavesNoErrorAndUnitZeroActive) {
    VideoScene scene;
    platform::GLDevice::main().makeCurrent();
    ASSERT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    for (int i = 0; i < 3; ++i) {
        scene.view().displayCVPixelBuffer(flatFrame(kFrameSize, kOrange));
        GLint unit = 0;
        glGetIntegerv(GL_ACTIVE_TEXTURE, &unit);
        EXPECT_EQ(unit, GL_TEXTURE0);
        (void)scene.snapshot();
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(VideoPicking, DrawsBlackWhileMarkersArePicked) {
    VideoScene scene;
    scene.give(noise());
    (void)scene.snapshot();
    auto& center = platform::NotificationCenter::defaultCenter();
    center.post(ZNTHotSpotDrawerDisableDrawing);
    EXPECT_TRUE(
        picturesAreEqual("picking-video", *scene.snapshot(), *flatPicture(320, 180, 0, 0, 0)));
    center.post(ZNTHotSpotDrawerEnableDrawing);
    scene.give(flatFrame(kFrameSize, kOrange));
    EXPECT_LE(distance(middleOf(scene), shownColour(kOrange)), 1);
}
