#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/Support/GLObjects.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <GLES2/gl2.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <future>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr platform::SizePx kFrameSize{64, 32};
constexpr std::array kModes{DisplayMode::Plane, DisplayMode::Sphere, DisplayMode::LittlePlanet,
                            DisplayMode::SideBySide};

std::array<int, 4> middleOf(HeadlessPlayer& player) {
    return colourAt(*player.snapshot(), kClearX, kClearY);
}

/// Another colour in each quarter: the left is orange, the right blue, the lower half darker.
YCbCr quarters(int x, int y) {
    YCbCr colour = x < kFrameSize.width / 2 ? kOrange : kBlue;
    if (y >= kFrameSize.height / 2)
        colour[0] = static_cast<std::uint8_t>(colour[0] - 40);
    return colour;
}

/// Luma and chroma from anywhere in their range.
platform::PixelBufferPtr noise() {
    std::mt19937 random(5);
    return videoFrame(kFrameSize, [&random](int, int) {
        return YCbCr{static_cast<std::uint8_t>(16 + random() % 220),
                     static_cast<std::uint8_t>(16 + random() % 225),
                     static_cast<std::uint8_t>(16 + random() % 225)};
    });
}

bool isFlat(const platform::Image& picture) {
    for (int y = 0; y < picture.heightPx(); ++y) {
        for (int x = 0; x < picture.widthPx(); ++x) {
            if (colourAt(picture, x, y) != colourAt(picture, 0, 0))
                return false;
        }
    }
    return true;
}

platform::ImagePtr watermarkOverBlack() {
    const auto picture = decodeBuiltInWatermark();
    platform::PixelStorage pixels(picture->widthPx(), picture->heightPx());
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const int alpha = picture->pixels()[i | 3U];
        pixels.bytes[i] =
            static_cast<std::uint8_t>(i % 4 == 3 ? 255 : picture->pixels()[i] * alpha / 255);
    }
    return std::make_shared<platform::Image>(std::move(pixels));
}

/// Keeps what is made away from the main thread from being made yet: the watermark.
class BackgroundHold {
public:
    BackgroundHold() {
        platform::DispatchQueue::background().async(
            [held = promise_.get_future().share()] { held.wait(); });
    }
    ~BackgroundHold() { release(); }
    BackgroundHold(const BackgroundHold&) = delete;
    BackgroundHold& operator=(const BackgroundHold&) = delete;

    void release() {
        if (!std::exchange(isReleased_, true))
            promise_.set_value();
    }

private:
    std::promise<void> promise_;
    bool isReleased_ = false;
};

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

// The watermark

TEST(VideoWatermark, LooksOverBlackLikeAPictureOfIt) {
    for (const DisplayMode mode : {DisplayMode::Sphere, DisplayMode::LittlePlanet}) {
        platform::ImagePtr expected;
        {
            HeadlessPlayer player({320, 180});
            const BackgroundHold hold; // its own watermark is not to come over it
            player.controller().setDisplayMode(mode);
            player.controller().prepareImage(watermarkOverBlack());
            player.embedded().appear();
            player.embedded().runDueWork();
            expected = player.embedded().snapshot(1).value();
        }
        VideoScene scene;
        scene.controller().setDisplayMode(mode);
        scene.give(flatFrame(kFrameSize, kBlack));
        EXPECT_TRUE(picturesMatch("watermark-over-black", *scene.snapshot(), *expected, {2, 0}));
    }
}

TEST(VideoWatermark, IsAddedToTheContent) {
    VideoScene scene({180, 320});
    scene.give(flatFrame(kFrameSize, kBlack));
    const auto alone = scene.snapshot();
    scene.give(flatFrame(kFrameSize, kOrange));
    const auto added = scene.snapshot();
    const auto content = shownColour(kOrange);
    int marked = 0;
    for (int y = 0; y < 320; ++y) {
        for (int x = 0; x < 180; ++x) {
            auto expected = colourAt(*alone, x, y);
            marked += expected[0] > 80 ? 1 : 0;
            for (std::size_t i = 0; i < 3; ++i)
                expected[i] = std::min(expected[i] + content[i], 255);
            ASSERT_LE(distance(colourAt(*added, x, y), expected), 1) << x << ", " << y;
        }
    }
    EXPECT_GT(marked, 100);
}

TEST(VideoWatermark, IsAddedTwiceOnThePlane) {
    VideoScene scene({1280, 720});
    scene.controller().setDisplayMode(DisplayMode::Plane);
    scene.give(flatFrame(kFrameSize, kBlack));
    const auto picture = scene.snapshot();
    int brightest = 0;
    for (int y = 0; y < 720; ++y) {
        for (int x = 0; x < 1280; ++x)
            brightest = std::max(brightest, colourAt(*picture, x, y)[0]);
    }
    // White at alpha 0.4, once for each time that the plane is covered.
    EXPECT_GT(brightest, 150);
    EXPECT_LE(brightest, 206);
}

TEST(VideoWatermark, IsDrawnOnceItHasArrivedAlsoOverAVideoThatIsPaused) {
    VideoScene scene({180, 320});
    BackgroundHold hold;
    scene.give(flatFrame(kFrameSize, kOrange));
    const auto target = platform::OffscreenTarget::create({180, 320});
    scene.embedded().draw(target.value()->framebuffer(), {0, 0, 180, 320});
    const platform::Image without(target.value()->readPixels());
    EXPECT_TRUE(isFlat(without));
    EXPECT_LE(distance(colourAt(without, 0, 0), shownColour(kOrange)), 1);
    ASSERT_FALSE(scene.view().needsDisplay());
    hold.release();
    scene.host().settle();
    EXPECT_TRUE(scene.view().needsDisplay());
    EXPECT_FALSE(isFlat(*scene.snapshot()));
}

TEST(VideoWatermark, ChangesNoPixelByItsTransparentParts) {
    VideoScene scene;
    BackgroundHold hold;
    const auto frame = noise();
    scene.give(frame);
    const auto without = scene.embedded().snapshot(1).value();
    hold.release();
    const auto with = scene.snapshot();
    scene.give(flatFrame(kFrameSize, kBlack));
    const auto alone = scene.snapshot();
    int transparent = 0;
    for (int y = 0; y < 180; ++y) {
        for (int x = 0; x < 320; ++x) {
            if (colourAt(*alone, x, y) != std::array{0, 0, 0, 255})
                continue;
            ++transparent;
            ASSERT_EQ(colourAt(*with, x, y), colourAt(*without, x, y)) << x << ", " << y;
        }
    }
    EXPECT_GT(transparent, 320 * 180 / 2);
}

TEST(VideoWatermark, IsTheSameToTheLastBitWhenOnlyWhatShowsIsDrawn) {
    VideoScene scene;
    scene.give(noise());
    scene.host().settle();
    std::mt19937 random(7);
    std::uniform_real_distribution<float> angle(-3.14F, 3.14F);
    for (int i = 0; i < 12; ++i) {
        scene.view().interractor()->setViewMatrix(GLKMatrix4MakeRotation(angle(random), 1, 0, 0));
        scene.view().interractor()->setRotationMatrix(
            GLKMatrix4MakeRotation(angle(random), 0, 0, 1));
        const auto visible = scene.snapshot();
        setMeshExtent(MeshExtent::Whole);
        EXPECT_TRUE(picturesAreEqual("what-shows", *visible, *scene.snapshot()));
        setMeshExtent(MeshExtent::WhatShows);
    }
}

// Uploads and objects

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

// Picking

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
