#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Graphics/OffscreenTarget.h"
#include "Tests/HVViewer/DisplayController/DisplayView/BackgroundHold.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <utility>

namespace {

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

} // namespace

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
        platform::GLDevice::main().setQuirks({.drawsWholeMeshes = true});
        EXPECT_TRUE(picturesAreEqual("what-shows", *visible, *scene.snapshot()));
        platform::GLDevice::main().setQuirks({});
    }
}
