#include "Platform/Imaging/BitmapContext.h"
#include "Tests/Support/HeadlessPlayer.h"
#include "Tests/Support/LogRecorder.h"
#include "Tests/Support/PictureFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

using platform::BlendMode;
using platform::makeBitmapContext;
using tests::TestPicture;

namespace {

using Pixel = std::array<int, 4>;

constexpr Pixel kNothing{0, 0, 0, 0};
constexpr platform::Color kRedFill{1, 0, 0, 1};

} // namespace

TEST(BitmapContext, IsTransparentAtFirst) {
    const auto image = makeBitmapContext({2, 1}, 1)->image();
    EXPECT_EQ(image->widthPx(), 2);
    EXPECT_EQ(image->heightPx(), 1);
    EXPECT_EQ(colourAt(*image, 1, 0), kNothing);
}

TEST(BitmapContext, IsAsManyPixelsAsItsScaleSays) {
    const auto image = makeBitmapContext({2, 1.5}, 3)->image();
    EXPECT_EQ(image->widthPx(), 6);
    EXPECT_EQ(image->heightPx(), 5) << "a broken pixel counts whole";
    EXPECT_EQ(image->scale(), 3);
}

TEST(BitmapContext, FillsInPointsFromTheTopLeft) {
    const auto context = makeBitmapContext({4, 4}, 2);
    context->fillRect({{1, 0}, {2, 1}}, kRedFill);
    const auto image = context->image();
    const Pixel red{255, 0, 0, 255};
    EXPECT_EQ(colourAt(*image, 1, 0), kNothing);
    EXPECT_EQ(colourAt(*image, 2, 0), red);
    EXPECT_EQ(colourAt(*image, 5, 1), red);
    EXPECT_EQ(colourAt(*image, 6, 1), kNothing);
    EXPECT_EQ(colourAt(*image, 5, 2), kNothing);
}

TEST(BitmapContext, FillsAPartOfAPixelInPart) {
    const auto context = makeBitmapContext({1, 1}, 1);
    context->fillRect({{}, {0.5, 1}}, kRedFill);
    const Pixel pixel = colourAt(*context->image(), 0, 0);
    EXPECT_EQ(pixel[0], 255);
    EXPECT_NEAR(pixel[3], 128, 1);
}

TEST(BitmapContext, FillsWithStraightColours) {
    const auto context = makeBitmapContext({1, 1}, 1);
    context->fillRect({{}, {1, 1}}, {1.0F, 0.5F, 0.0F, 0.6F});
    const Pixel pixel = colourAt(*context->image(), 0, 0);
    EXPECT_EQ(pixel[3], 153);
    EXPECT_EQ(pixel[0], 255);
    EXPECT_NEAR(pixel[1], 128, 1);
    EXPECT_EQ(pixel[2], 0);
}

TEST(BitmapContext, DrawsOpaquePicturesToTheLastBit) {
    const TestPicture picture = tests::noise(37, 23, 7, tests::Alpha::Opaque);
    const auto context = makeBitmapContext({37, 23}, 1);
    context->drawImage(platform::Image(picture.storage()), {{}, {37, 23}}, BlendMode::Normal);
    EXPECT_EQ(TestPicture(*context->image()), picture);
}

TEST(BitmapContext, EnlargesAPictureWithoutMixingInWhatLiesAroundIt) {
    const auto context = makeBitmapContext({8, 8}, 1);
    context->drawImage(*flatPicture(2, 2, 200, 100, 50), {{}, {8, 8}}, BlendMode::Normal);
    EXPECT_EQ(TestPicture(*context->image()), TestPicture(8, 8, {200, 100, 50, 255}));
}

TEST(BitmapContext, ReducesAPictureToItsMean) {
    const auto context = makeBitmapContext({1, 1}, 1);
    const TestPicture columns = [] {
        TestPicture picture(64, 64, tests::kRed);
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; x += 2)
                picture.at(x, y) = tests::kBlue;
        }
        return picture;
    }();
    context->drawImage(platform::Image(columns.storage()), {{}, {1, 1}}, BlendMode::Normal);
    const Pixel pixel = colourAt(*context->image(), 0, 0);
    EXPECT_NEAR(pixel[0], 128, 4);
    EXPECT_NEAR(pixel[2], 128, 4);
}

TEST(BitmapContext, LeavesWhatLiesOutsideThePictureInEveryMode) {
    for (int mode = 0; mode < 27; ++mode) {
        const auto context = makeBitmapContext({4, 1}, 1);
        context->fillRect({{}, {4, 1}}, {0.2F, 0.4F, 0.6F, 1});
        context->drawImage(*flatPicture(1, 1, 200, 100, 50, 100), {{1, 0}, {2, 1}},
                           static_cast<BlendMode>(mode));
        const auto image = context->image();
        const Pixel before{51, 102, 153, 255};
        EXPECT_EQ(colourAt(*image, 0, 0), before) << mode;
        EXPECT_EQ(colourAt(*image, 3, 0), before) << mode;
    }
}

TEST(BitmapContext, DrawsNormallyInAModeThatThereIsNot) {
    for (const int mode : {-1, 27}) {
        const auto context = makeBitmapContext({1, 1}, 1);
        context->drawImage(*flatPicture(1, 1, 1, 2, 3), {{}, {1, 1}}, static_cast<BlendMode>(mode));
        EXPECT_EQ(colourAt(*context->image(), 0, 0), (Pixel{1, 2, 3, 255})) << mode;
    }
}

TEST(BitmapContext, GivesWhatHasBeenDrawnSoFar) {
    const auto context = makeBitmapContext({1, 1}, 1);
    const auto before = context->image();
    context->fillRect({{}, {1, 1}}, kRedFill);
    EXPECT_EQ(colourAt(*before, 0, 0), kNothing);
    EXPECT_EQ(colourAt(*context->image(), 0, 0), (Pixel{255, 0, 0, 255}));
}

TEST(BitmapContext, HasNoSizeThatNoPictureCanHave) {
    const LogRecorder log;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const platform::Size size :
         {platform::Size{0, 1}, {1, 0}, {-1, 1}, {nan, 1}, {infinity, 1}, {1, 32768}, {1e300, 1}})
        EXPECT_FALSE(makeBitmapContext(size, 1)) << size.width << " x " << size.height;
    EXPECT_EQ(log.count("pixels can be drawn"), 7);
    EXPECT_TRUE(makeBitmapContext({1, 32767}, 1));
}

TEST(BitmapContext, HasNoPictureOnceOneCouldNotBeDrawn) {
    for (const BlendMode mode : {BlendMode::Normal, BlendMode::PlusDarker}) {
        const auto context = makeBitmapContext({1, 1}, 1);
        const LogRecorder log;
        context->drawImage(*flatPicture(40000, 1, 1, 2, 3), {{}, {1, 1}}, mode);
        EXPECT_FALSE(context->image());
        EXPECT_EQ(log.count("a picture could not be drawn: "), 1);
    }
}
