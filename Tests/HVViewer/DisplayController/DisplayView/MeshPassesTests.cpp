#include "HVViewer/DisplayController/DisplayView/MeshPasses.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "HVViewer/Model/ZNTSphericalVO.h"
#include "Platform/Graphics/GLDevice.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/PictureCompare.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace {

constexpr float kPi = 3.14159265F;

/// A panorama of loud noise, on which a pixel from the wrong place shows.
platform::ImagePtr noise() {
    platform::PixelStorage pixels(512, 256);
    std::mt19937 random(3);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels.bytes[i] = static_cast<std::uint8_t>(i % 4 == 3 ? 255 : random());
    return std::make_shared<platform::Image>(std::move(pixels));
}

/// Points the camera of a view anywhere, over the poles too, at any zoom that a mode allows.
void aimAtRandom(ZNTDisplayView& view, std::mt19937& random) {
    std::uniform_real_distribution<float> angle(-kPi, kPi);
    std::uniform_real_distribution<double> zoom(0.5, 4.5);
    ZNTInterractor& camera = *view.interractor();
    camera.setViewMatrix(GLKMatrix4MakeRotation(angle(random), 1, 0, 0));
    camera.setRotationMatrix(GLKMatrix4MakeRotation(angle(random), 0, 0, 1));
    camera.setScale(zoom(random));
    view.setInitialRotationOffset(random() % 2 ? angle(random) : 0);
}

struct Screen {
    platform::Size size;
    int cameras;
};

class WhatShows : public ::testing::TestWithParam<Screen> {
protected:
    void TearDown() override { platform::GLDevice::main().setQuirks({}); }
};

} // namespace

TEST_P(WhatShows, IsTheSameToTheLastBitAsTheWholeMesh) {
    HeadlessPlayer player(GetParam().size);
    player.show(noise());
    std::mt19937 random(static_cast<unsigned>(GetParam().size.width));
    for (int i = 0; i < GetParam().cameras; ++i) {
        player.view().startRenderVO(static_cast<DisplayMode>(i % 4));
        aimAtRandom(player.view(), random);
        platform::GLDevice::main().setQuirks({.drawsWholeMeshes = true});
        const auto whole = player.view().snapshot();
        platform::GLDevice::main().setQuirks({});
        const auto part = player.view().snapshot();
        ASSERT_TRUE(picturesAreEqual("what-shows-" + std::to_string(i), *part, *whole));
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, WhatShows,
                         ::testing::Values(Screen{{96, 54}, 1200}, Screen{{54, 96}, 1200},
                                           Screen{{64, 64}, 600}, Screen{{150, 30}, 600},
                                           Screen{{31, 149}, 600}),
                         [](const auto& screen) {
                             return std::to_string(std::lround(screen.param.size.width)) + "x" +
                                    std::to_string(std::lround(screen.param.size.height));
                         });

TEST(MeshPasses, NeverTakeMoreDrawCallsThanTheyMay) {
    const ZNTSphericalVO sphere;
    std::mt19937 random(5);
    std::uniform_real_distribution<float> angle(-kPi, kPi);
    std::uniform_real_distribution<float> fov(0.3F, 2.6F);
    std::uniform_real_distribution<float> aspect(0.3F, 4);
    for (int i = 0; i < 20000; ++i) {
        GLKMatrix4 mvp = GLKMatrix4MakePerspective(fov(random), aspect(random), 0.01F, 2.4806F);
        mvp = GLKMatrix4Translate(mvp, 0, 0, i % 2 ? -0.9F : 0.40312F);
        mvp = GLKMatrix4Rotate(mvp, angle(random), 1, 0, 0);
        mvp = GLKMatrix4Rotate(mvp, angle(random), 0, 0, 1);
        const MeshPasses passes = planPasses(sphere.model(), mvp, &builtInWatermark()->coverage);
        ASSERT_LE(passes.content.size() + passes.watermark.size(), kMostDrawCalls);
        ASSERT_FALSE(passes.content.empty());
    }
}

TEST(MeshPasses, LeaveMostOfTheSphereOut) {
    HeadlessPlayer player({320, 180});
    player.show(noise());
    (void)player.snapshot();
    const MeshPasses passes =
        planPasses(ZNTSphericalVO().model(), player.view().camera().modelViewProjection,
                   &builtInWatermark()->coverage);
    std::int32_t content = 0;
    for (const VertexRun& run : passes.content)
        content += run.count;
    EXPECT_LT(content, 64800 / 4);
    std::int32_t watermark = 0;
    for (const VertexRun& run : passes.watermark)
        watermark += run.count;
    EXPECT_LT(watermark, content / 8);
}

TEST(MeshPasses, DrawAPlaneWhole) {
    const VisualObjectModel plane{nullptr, nullptr, 6};
    const MeshPasses passes = planPasses(plane, GLKMatrix4Identity, nullptr);
    ASSERT_EQ(passes.content.size(), 1U);
    EXPECT_EQ(passes.content[0].count, 6);
    ASSERT_EQ(passes.watermark.size(), 1U);
    EXPECT_EQ(passes.watermark[0].count, 6);
}

TEST(MeshPasses, DrawTheWholeSphereForAMatrixOfNaNs) {
    GLKMatrix4 matrix = GLKMatrix4Identity;
    matrix.m[3] = std::numeric_limits<float>::quiet_NaN();
    const MeshPasses passes = planPasses(ZNTSphericalVO().model(), matrix, nullptr);
    ASSERT_EQ(passes.content.size(), 1U);
    EXPECT_EQ(passes.content[0].count, 64800);
}

TEST(OpaqueQuads, AreThoseThatFilteringCanReach) {
    // One opaque texel in the corner of the quad to the right of the seam, just below the zenith.
    platform::PixelStorage pixels(720, 360);
    std::fill_n(pixels.bytes.get(), pixels.size(), std::uint8_t{0});
    pixels.row(3)[4 * 4 + 3] = 255;
    const QuadMask mask = opaqueQuads(platform::Image(std::move(pixels)));
    // A quad is 4 texels wide and high: texel 4 is the second quad's first, row 3 the top ring's
    // last.
    int marked = 0;
    for (int ring = 0; ring < QuadMask::kRings; ++ring) {
        for (int segment = 0; segment < RingMask::kSegments; ++segment)
            marked += mask.ring(ring).test(segment) ? 1 : 0;
    }
    EXPECT_EQ(marked, 4);
    for (const int ring : {88, 89}) {
        for (const int segment : {0, 1})
            EXPECT_TRUE(mask.ring(ring).test(segment)) << ring << ", " << segment;
    }
}
