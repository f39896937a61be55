#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkPlanes.h"
#include "Tests/HVViewer/DisplayController/DisplayView/VideoScene.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

using Pixel = std::array<int, 4>;

/// Luma, Cb and Cr of a pixel.
YCbCr valuesAt(const platform::PixelBuffer& frame, int x, int y) {
    const auto& luma = frame.plane(0);
    const auto& chroma = frame.plane(1);
    const std::uint8_t* pair = chroma.bytes + (y / 2) * chroma.strideBytes + (x / 2) * 2;
    return {luma.bytes[y * luma.strideBytes + x], pair[0], pair[1]};
}

/// The colours of a picture over black.
Pixel overBlack(const Pixel& pixel) {
    Pixel result{0, 0, 0, 255};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = static_cast<int>(std::lround(pixel[i] * pixel[3] / 255.0));
    return result;
}

} // namespace

TEST(WatermarkPlanes, GiveTheColoursOverBlackBack) {
    for (const Pixel& colour : {Pixel{255, 255, 255, 102},
                                {255, 255, 255, 255},
                                {0, 0, 0, 255},
                                {200, 120, 60, 255},
                                {200, 120, 60, 128},
                                {60, 140, 90, 200},
                                {120, 120, 200, 255},
                                {90, 20, 20, 255}}) {
        const auto channel = [&](std::size_t i) { return static_cast<std::uint8_t>(colour[i]); };
        const auto frame =
            planesOverBlack(*flatPicture(4, 2, channel(0), channel(1), channel(2), channel(3)));
        // Half a step of each of the two that a channel is made of, times its weight.
        EXPECT_LE(distance(shownColour(valuesAt(*frame, 1, 1)), overBlack(colour)), 2)
            << colour[0] << " " << colour[1] << " " << colour[2] << " at " << colour[3];
    }
}

TEST(WatermarkPlanes, AreBlackWhereThePictureIsTransparentWhateverItsColour) {
    const auto frame = planesOverBlack(*flatPicture(4, 2, 255, 200, 10, 0));
    for (int x = 0; x < 4; ++x)
        EXPECT_EQ(valuesAt(*frame, x, 0), kBlack);
}

TEST(WatermarkPlanes, TakeTheMeanColourOfFourPixels) {
    platform::PixelStorage pixels(2, 2);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels.bytes[i] = 0;
    pixels.bytes[0] = 160;
    pixels.bytes[3] = 255;
    const auto frame = planesOverBlack(platform::Image(std::move(pixels)));
    const auto alone = planesOverBlack(*flatPicture(2, 2, 40, 0, 0));
    EXPECT_EQ(valuesAt(*frame, 0, 0)[1], valuesAt(*alone, 0, 0)[1]);
    EXPECT_EQ(valuesAt(*frame, 0, 0)[2], valuesAt(*alone, 0, 0)[2]);
    EXPECT_GT(valuesAt(*frame, 0, 0)[0], 16);
    EXPECT_EQ(valuesAt(*frame, 1, 1)[0], 16);
}

TEST(WatermarkPlanes, HaveEveryPixelOfAnOddPicture) {
    const auto frame = planesOverBlack(*flatPicture(5, 3, 120, 120, 200));
    EXPECT_EQ(frame->size(), (platform::SizePx{5, 3}));
    for (const auto& [x, y] : {std::pair(0, 0), {4, 0}, {0, 2}, {4, 2}})
        EXPECT_EQ(valuesAt(*frame, x, y), valuesAt(*frame, 1, 1)) << x << ", " << y;
}

TEST(WatermarkPlanes, AreMadeOnceOfTheBuiltInPicture) {
    const WatermarkPlanes* planes = builtInWatermarkPlanes();
    ASSERT_TRUE(planes);
    EXPECT_EQ(planes->buffer->size(), (platform::SizePx{4096, 2048}));
    EXPECT_EQ(builtInWatermarkPlanes(), planes);
}

TEST(WatermarkPlanes, ShowTheBuiltInPictureOverBlack) {
    const auto picture = decodeBuiltInWatermark();
    const WatermarkPlanes* planes = builtInWatermarkPlanes();
    for (int y = 0; y < 2048; y += 3) {
        for (int x = 0; x < 4096; x += 5)
            ASSERT_LE(distance(shownColour(valuesAt(*planes->buffer, x, y)),
                               overBlack(colourAt(*picture, x, y))),
                      2)
                << x << ", " << y;
    }
}

TEST(WatermarkCoverage, HoldsTheQuadsAroundWhateverIsNotBlack) {
    const auto at = [](int luma, int chromaRed) {
        return quadsThatShow(*videoFrame({720, 360}, [&](int x, int y) {
            const bool isThere = x == 360 && y == 180;
            return YCbCr{static_cast<std::uint8_t>(isThere ? luma : 16), 128,
                         static_cast<std::uint8_t>(isThere ? chromaRed : 128)};
        }));
    };
    // Column 360 of 720 lies in segments 89 and 90 of 180, row 180 of 360 in rings 44 and 45.
    for (const QuadMask& mask : {at(17, 128), at(16, 129)}) {
        for (const int ring : {44, 45}) {
            EXPECT_TRUE(mask.ring(ring).test(89));
            EXPECT_TRUE(mask.ring(ring).test(90));
            EXPECT_FALSE(mask.ring(ring).test(87));
            EXPECT_FALSE(mask.ring(ring).test(92));
        }
        EXPECT_TRUE(mask.ring(42).isEmpty());
        EXPECT_TRUE(mask.ring(47).isEmpty());
    }
    EXPECT_TRUE(at(16, 128).runs(4).empty());
}
