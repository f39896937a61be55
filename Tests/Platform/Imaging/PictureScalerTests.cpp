#include "Platform/Imaging/PictureScaler.h"
#include "Tests/Support/PictureFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using platform::Image;
using platform::PictureScaler;
using platform::scaledDown;
using platform::scaledDownToFit;
using platform::SizePx;
using platform::targetSizeToFit;
using tests::Alpha;
using tests::Colour;
using tests::TestPicture;

TestPicture scaled(const TestPicture& picture, SizePx target) {
    return TestPicture(scaledDown(picture.storage(), target));
}

double overlap(int index, double size, double begin, double end) {
    return std::max(0.0, std::min((index + 1) * size, end) - std::max(index * size, begin));
}

/// The mean of the area under one target pixel, straight from its definition.
Colour meanUnder(const TestPicture& picture, int targetX, int targetY, SizePx target) {
    const double width = double(picture.widthPx) / target.width;
    const double height = double(picture.heightPx) / target.height;
    double area = 0;
    double alpha = 0;
    double colour[3] = {};
    for (int y = 0; y < picture.heightPx; ++y) {
        for (int x = 0; x < picture.widthPx; ++x) {
            const double part = overlap(x, 1, targetX * width, (targetX + 1) * width) *
                                overlap(y, 1, targetY * height, (targetY + 1) * height);
            const Colour& pixel = picture.at(x, y);
            area += part;
            alpha += part * pixel[3];
            for (std::size_t c = 0; c < 3; ++c)
                colour[c] += part * pixel[3] * pixel[c];
        }
    }
    const auto rounded = [](double value) { return static_cast<std::uint8_t>(std::lround(value)); };
    return {rounded(colour[0] / alpha), rounded(colour[1] / alpha), rounded(colour[2] / alpha),
            rounded(alpha / area)};
}

TEST(TargetSizeToFit, KeepsWhatFits) {
    EXPECT_EQ(targetSizeToFit({100, 50}, 100), (SizePx{100, 50}));
    EXPECT_EQ(targetSizeToFit({100, 50}, 0), (SizePx{100, 50}));
    EXPECT_EQ(targetSizeToFit({100, 50}, -1), (SizePx{100, 50}));
}

TEST(TargetSizeToFit, KeepsTheProportions) {
    EXPECT_EQ(targetSizeToFit({20'000, 10'000}, 16'384), (SizePx{16'384, 8'192}));
    EXPECT_EQ(targetSizeToFit({10'000, 20'000}, 16'384), (SizePx{8'192, 16'384}));
    EXPECT_EQ(targetSizeToFit({300, 200}, 100), (SizePx{100, 67}));
}

TEST(TargetSizeToFit, LeavesEachSideAPixel) {
    EXPECT_EQ(targetSizeToFit({20'000, 1}, 16'384), (SizePx{16'384, 1}));
    EXPECT_EQ(targetSizeToFit({1, 20'000}, 100), (SizePx{1, 100}));
    EXPECT_EQ(targetSizeToFit({65'535, 65'535}, 1), (SizePx{1, 1}));
}

TEST(PictureScaler, GivesTheSameSizeBackUnchanged) {
    const TestPicture picture = tests::noise(13, 9, 1, Alpha::Random);
    EXPECT_EQ(scaled(picture, {13, 9}), picture);
}

TEST(PictureScaler, AveragesTheAreaUnderEachPixel) {
    const TestPicture picture = tests::noise(37, 23, 2, Alpha::Random);
    for (const SizePx target : {SizePx{36, 22}, {20, 12}, {19, 23}, {37, 7}, {5, 3}, {1, 1}}) {
        const TestPicture reduced = scaled(picture, target);
        TestPicture expected(target.width, target.height);
        for (int y = 0; y < target.height; ++y) {
            for (int x = 0; x < target.width; ++x)
                expected.at(x, y) = meanUnder(picture, x, y, target);
        }
        EXPECT_LE(tests::largestDifference(reduced, expected), 1)
            << target.width << " x " << target.height;
    }
}

TEST(PictureScaler, KeepsFlatColoursExactly) {
    for (const Colour colour : {Colour{1, 127, 254, 255},
                                {255, 255, 255, 255},
                                {0, 0, 0, 255},
                                {200, 100, 3, 1},
                                {77, 88, 99, 128},
                                {10, 20, 30, 0}}) {
        for (const SizePx target : {SizePx{100, 60}, {99, 7}, {33, 59}, {1, 1}})
            EXPECT_EQ(scaled({101, 61, colour}, target),
                      (TestPicture{target.width, target.height, colour}));
    }
}

TEST(PictureScaler, KeepsFlatColoursExactlyAtTheLargestSides) {
    constexpr int longest = PictureScaler::kMaxSourceSidePx;
    const TestPicture row(longest, 1, {255, 254, 1, 255});
    EXPECT_EQ(scaled(row, {3, 1}), (TestPicture{3, 1, {255, 254, 1, 255}}));
}

TEST(PictureScaler, LetsNoHiddenColourBleed) {
    TestPicture picture(2, 2, {0, 255, 0, 0});
    picture.at(0, 0) = {255, 0, 0, 255};
    EXPECT_EQ(scaled(picture, {1, 1}).at(0, 0), (Colour{255, 0, 0, 64}));
}

TEST(PictureScaler, KeepsTheMeanColourOfTheWhollyTransparent) {
    TestPicture picture(2, 1, {100, 0, 0, 0});
    picture.at(1, 0) = {200, 0, 0, 0};
    EXPECT_EQ(scaled(picture, {1, 1}).at(0, 0), (Colour{150, 0, 0, 0}));
}

TEST(PictureScaler, ReducesOneLongRow) {
    TestPicture row(20'000, 1);
    for (int x = 0; x < row.widthPx; ++x)
        row.at(x, 0) = {std::uint8_t(x * 256 / row.widthPx), 0, 0, 255};
    const TestPicture reduced = scaled(row, {16'384, 1});
    for (int x = 0; x < reduced.widthPx; ++x)
        ASSERT_NEAR(reduced.at(x, 0)[0], x * 256 / reduced.widthPx, 1) << x;
}

TEST(ScaledDownToFit, KeepsTheSizeInPoints) {
    const Image image(tests::quadrants(400, 200).storage(), 2.0);
    const auto reduced = scaledDownToFit(image, 100);
    EXPECT_EQ(TestPicture(*reduced), tests::quadrants(100, 50));
    EXPECT_EQ(reduced->size(), image.size());
}

TEST(ScaledDownToFit, CopiesWhatFits) {
    const Image image(tests::quadrants(40, 20).storage(), 2.0);
    const auto copy = scaledDownToFit(image, 40);
    EXPECT_EQ(TestPicture(*copy), tests::quadrants(40, 20));
    EXPECT_EQ(copy->scale(), 2.0);
}

} // namespace
