#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPlanes.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "Platform/Graphics/GLDevice.h"
#include "Tests/HVViewer/DisplayController/DisplayView/TextureLimit.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

const platform::Size kSize{320, 180};
/// Within every limit, because frames are drawn into textures too.
const platform::Size kSmallSize{64, 36};

platform::ImagePtr black() {
    return flatPicture(64, 32, 0, 0, 0);
}

int brightestOf(const platform::Image& picture) {
    int brightest = 0;
    for (int y = 0; y < picture.heightPx(); ++y) {
        for (int x = 0; x < picture.widthPx(); ++x)
            brightest = std::max(brightest, colourAt(picture, x, y)[0]);
    }
    return brightest;
}

/// Points the camera anywhere, and compares what it shows with the whole mesh drawn.
void expectTheSameAsWholeMeshes(HeadlessPlayer& player, int cameras) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> angle(-3.14F, 3.14F);
    for (int i = 0; i < cameras; ++i) {
        player.view().interractor()->setViewMatrix(GLKMatrix4MakeRotation(angle(random), 1, 0, 0));
        player.view().interractor()->setRotationMatrix(
            GLKMatrix4MakeRotation(angle(random), 0, 0, 1));
        const auto visible = player.view().snapshot();
        platform::GLDevice::main().setQuirks({.drawsWholeMeshes = true});
        const auto whole = player.view().snapshot();
        platform::GLDevice::main().setQuirks({});
        ASSERT_TRUE(picturesAreEqual("scaled-watermark-" + std::to_string(i), *visible, *whole));
    }
}

class SmallTextures : public ::testing::TestWithParam<int> {};

} // namespace

TEST(TextureLimits, ShowTheVideosWatermarkScaledDownWithoutALogLine) {
    const TextureLimit limit(2048);
    VideoScene scene;
    ASSERT_EQ(platform::GLDevice::main().maxTextureSidePx(), 2048);
    const LogRecorder log;
    for (int i = 0; i < 3; ++i) {
        scene.give(flatFrame(kFrameSize, kBlack));
        (void)scene.snapshot();
    }
    EXPECT_EQ(log.lines(), std::vector<std::string>());
    EXPECT_GT(brightestOf(*scene.snapshot()), 80);
}

TEST(TextureLimits, ShowThePicturesWatermarkScaledDownWithoutALogLine) {
    const TextureLimit limit(2048);
    HeadlessPlayer player(kSize);
    const LogRecorder log;
    player.show(black());
    EXPECT_EQ(log.lines(), std::vector<std::string>());
    EXPECT_GT(brightestOf(*player.snapshot()), 80);
}

TEST(TextureLimits, StillWarnOfAPersonsPictureThatIsScaledDown) {
    const TextureLimit limit(512);
    HeadlessPlayer player(kSize);
    const LogRecorder log;
    player.show(flatPicture(1024, 512, 10, 20, 30));
    EXPECT_EQ(log.lines(), std::vector<std::string>{
                               "texture: the picture is scaled down from 1024 x 512 to 512 x 256 "
                               "pixels to fit the graphics limit"});
}

TEST(TextureLimits, AreNotAppliedToTheFullWatermarkElsewhere) {
    EXPECT_EQ(builtInWatermark(512)->picture->widthPx(), 512);
    EXPECT_EQ(builtInWatermark(512), builtInWatermark(512)) << "it is decoded once";
    EXPECT_EQ(builtInWatermarkPlanes(512)->buffer->size(), (platform::SizePx{512, 256}));
    EXPECT_EQ(builtInWatermark()->picture->widthPx(), 4096);
    EXPECT_EQ(builtInWatermark(16384), builtInWatermark());
    EXPECT_EQ(builtInWatermarkPlanes(16384), builtInWatermarkPlanes());
}

TEST_P(SmallTextures, DrawThePicturesWatermarkToTheLastBitWhereOnlyWhatShowsIsDrawn) {
    const TextureLimit limit(GetParam());
    HeadlessPlayer player(kSmallSize);
    player.show(black());
    expectTheSameAsWholeMeshes(player, 40);
}

TEST_P(SmallTextures, DrawTheVideosWatermarkToTheLastBitWhereOnlyWhatShowsIsDrawn) {
    const TextureLimit limit(GetParam());
    VideoScene scene(kSmallSize);
    scene.give(flatFrame(kFrameSize, kBlack));
    scene.host().settle();
    expectTheSameAsWholeMeshes(scene, 40);
}

INSTANTIATE_TEST_SUITE_P(Limits, SmallTextures, ::testing::Values(2048, 512, 256, 64),
                         [](const auto& limit) { return std::to_string(limit.param); });
