#include "HVViewer/Utilities/Categories/ImageDrawWithFillColor.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/Screen.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

using platform::BlendMode;
using platform::Screen;

namespace {

using Pixel = std::array<int, 4>;

constexpr platform::Color kOrange{1, 0.6F, 0.2F, 1};

/// The screen's scale for one test.
class Tint : public testing::Test {
protected:
    ~Tint() override { Screen::mainScreen().setSize({}, 1); }
    static void setScale(double scale) { Screen::mainScreen().setSize({100, 100}, scale); }
};

} // namespace

TEST(ImageWithColor, IsOnePointAtScaleOne) {
    Screen::mainScreen().setSize({100, 100}, 3);
    const auto image = imageWithColor(kOrange);
    Screen::mainScreen().setSize({}, 1);
    EXPECT_EQ(image->size(), (platform::Size{1, 1}));
    EXPECT_EQ(image->scale(), 1);
    EXPECT_EQ(colourAt(*image, 0, 0), (Pixel{255, 153, 51, 255}));
}

TEST(ImageWithColor, IsOfThatSizeAndColour) {
    const auto image = imageWithColor(kOrange, {3, 2});
    EXPECT_EQ(image->widthPx(), 3);
    EXPECT_EQ(image->heightPx(), 2);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(colourAt(*image, x, y), (Pixel{255, 153, 51, 255})) << x << ", " << y;
    }
}

TEST(ImageWithColor, KeepsTheColoursAlpha) {
    EXPECT_EQ(colourAt(*imageWithColor(platform::Color{1, 1, 1, 0.4F}), 0, 0),
              (Pixel{255, 255, 255, 102}));
    EXPECT_EQ(colourAt(*imageWithColor(platform::kClearColor), 0, 0), (Pixel{0, 0, 0, 0}));
}

TEST(ImageWithColor, RequiresAColour) {
    const LogRecorder log;
    for (const platform::Size size : {platform::Size{1, 1}, {0, 0}}) {
        try {
            (void)imageWithColor(std::nullopt, size);
            ADD_FAILURE() << "no assertion";
        } catch (const platform::AssertionFailure& failure) {
            EXPECT_EQ(failure.file(), "UIImage+DrawWithFillColor");
            EXPECT_EQ(failure.line(), 42);
            EXPECT_EQ(failure.description(), "Invalid parameter not satisfying: fillColor");
        }
    }
    EXPECT_THROW((void)imageWithColor(std::nullopt), platform::AssertionFailure);
}

TEST(ImageWithColor, IsNoneOfASizeThatNoPictureHas) {
    const LogRecorder log;
    EXPECT_FALSE(imageWithColor(kOrange, {0, 5}));
    EXPECT_FALSE(imageWithColor(kOrange, {5, -1}));
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST_F(Tint, DrawsOnceWithModeTwentyTwo) {
    const auto image =
        tintedImageWithColor(*flatPicture(2, 2, 9, 9, 9, 102), kOrange, BlendMode::DestinationIn);
    const Pixel pixel = colourAt(*image, 0, 0);
    EXPECT_EQ(pixel[3], 102);
    EXPECT_NEAR(pixel[1], 153, 2);
}

TEST_F(Tint, DrawsTwiceWithEveryOtherMode) {
    const auto faint = flatPicture(2, 2, 200, 100, 50, 128);
    const auto alphaWith = [&](BlendMode mode) {
        return colourAt(*tintedImageWithColor(*faint, kOrange, mode), 0, 0)[3];
    };
    EXPECT_EQ(alphaWith(BlendMode::Normal), 128) << "opaque, then clipped";
    EXPECT_EQ(alphaWith(BlendMode::Multiply), 128);
    EXPECT_NEAR(alphaWith(BlendMode::Copy), 64, 1) << "as it is, then clipped";
    EXPECT_EQ(alphaWith(BlendMode::Clear), 0);
}

TEST_F(Tint, DrawsThePictureOverTheColour) {
    const auto picture = flatPicture(1, 1, 128, 128, 128);
    const auto tinted = [&](BlendMode mode) {
        return colourAt(*tintedImageWithColor(*picture, kOrange, mode), 0, 0);
    };
    EXPECT_EQ(tinted(BlendMode::Normal), (Pixel{128, 128, 128, 255}));
    EXPECT_EQ(tinted(BlendMode::DestinationOver), (Pixel{255, 153, 51, 255}));
    const Pixel multiplied = tinted(BlendMode::Multiply);
    EXPECT_NEAR(multiplied[0], 128, 1);
    EXPECT_NEAR(multiplied[1], 77, 1);
    EXPECT_NEAR(multiplied[2], 26, 1);
}

TEST_F(Tint, LeavesNothingWhereThePictureIsTransparent) {
    const auto image =
        tintedImageWithColor(*flatPicture(1, 1, 9, 9, 9, 0), kOrange, BlendMode::Normal);
    EXPECT_EQ(colourAt(*image, 0, 0), (Pixel{0, 0, 0, 0}));
}

TEST_F(Tint, IsAsLargeInPointsAtTheScreensScale) {
    setScale(3);
    const auto image =
        tintedImageWithColor(*flatPicture(4, 2, 200, 100, 50), kOrange, BlendMode::Normal);
    EXPECT_EQ(image->size(), (platform::Size{4, 2}));
    EXPECT_EQ(image->scale(), 3);
    EXPECT_EQ(image->widthPx(), 12);
    EXPECT_EQ(colourAt(*image, 11, 5), (Pixel{200, 100, 50, 255}));
}

TEST_F(Tint, MixesNeighbouringPixelsWhereItIsEnlarged) {
    setScale(8);
    platform::PixelStorage pixels(2, 1);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels.bytes[i] = i < 4 ? 255 : 0;
    pixels.bytes[7] = 255; // white beside opaque black
    const auto image =
        tintedImageWithColor(platform::Image(std::move(pixels)), kOrange, BlendMode::Normal);
    ASSERT_EQ(image->widthPx(), 16);
    EXPECT_LT(colourAt(*image, 7, 4)[0], 255) << "the last column of the white pixel";
    EXPECT_GT(colourAt(*image, 8, 4)[0], 0) << "the first column of the black one";
}

TEST_F(Tint, CountsTheAlphaOfTheColour) {
    const auto image =
        tintedImageWithColor(*flatPicture(2, 2, 9, 9, 9), platform::Color{1, 0.6F, 0.2F, 0.4F},
                             BlendMode::DestinationIn);
    EXPECT_EQ(colourAt(*image, 0, 0)[3], 102);
}

TEST_F(Tint, OfAPictureThatIsTooLargeIsNone) {
    const LogRecorder log;
    EXPECT_FALSE(tintedImageWithColor(*flatPicture(40000, 1, 1, 2, 3), kOrange, BlendMode::Normal));
    EXPECT_EQ(log.lines().size(), 1U);
}
