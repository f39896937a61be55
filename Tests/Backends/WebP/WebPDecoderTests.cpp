#include "Backends/WebP/WebPDecoder.h"
#include "Tests/Support/DecoderChecks.h"

#include <gtest/gtest.h>

namespace {

using platform::DecodeLimits;
using platform::ErrorCode;
using platform::WebPDecoder;
using tests::Alpha;
using tests::Bytes;
using tests::decodedBy;
using tests::expectCutShortIsCorrupt;
using tests::expectMutationsAreHarmless;
using tests::expectOrientationsApplied;
using tests::largestDifference;
using tests::quadrants;
using tests::refusalBy;
using tests::TestPicture;
using tests::WebPCoding;
using tests::webpFile;
using tests::WebPOptions;

const WebPDecoder kDecoder;
constexpr int kLossPerChannel = 8;

WebPOptions lossy() {
    return {WebPCoding::Lossy, 95, {}};
}

TestPicture withAlpha(TestPicture picture, std::uint8_t alpha) {
    for (tests::Colour& colour : picture.pixels)
        colour[3] = alpha;
    return picture;
}

TEST(WebPDecoder, DecodesLossless) {
    const TestPicture picture = tests::noise(37, 21, 1, Alpha::Opaque);
    EXPECT_EQ(decodedBy(kDecoder, webpFile(picture)), picture);
}

TEST(WebPDecoder, DecodesLosslessAlpha) {
    const TestPicture picture = tests::noise(37, 21, 2, Alpha::Random);
    EXPECT_EQ(decodedBy(kDecoder, webpFile(picture)), picture);
}

TEST(WebPDecoder, DecodesLossy) {
    const TestPicture picture(50, 30, {200, 100, 50, 255});
    EXPECT_LE(largestDifference(decodedBy(kDecoder, webpFile(picture, lossy())), picture),
              kLossPerChannel);
}

TEST(WebPDecoder, DecodesLossyAlpha) {
    TestPicture picture(64, 32, {200, 100, 50, 255});
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 64; ++x)
            picture.at(x, y)[3] = static_cast<std::uint8_t>(4 * x);
    }
    const TestPicture decoded = decodedBy(kDecoder, webpFile(picture, lossy()));
    ASSERT_EQ(decoded.pixels.size(), picture.pixels.size());
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        EXPECT_EQ(decoded.pixels[i][3], picture.pixels[i][3]); // alpha alone is kept exactly
}

TEST(WebPDecoder, DecodesOnePixel) {
    EXPECT_EQ(decodedBy(kDecoder, webpFile({1, 1, {1, 2, 3, 4}})),
              (TestPicture{1, 1, {1, 2, 3, 4}}));
}

TEST(WebPDecoder, RefusesAnimations) {
    const auto picture = kDecoder.decode(tests::animatedWebPFile(quadrants(16, 16)), {});
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.error().code, ErrorCode::Unsupported);
    EXPECT_EQ(picture.error().detail, "animated, which is not shown; save one frame of it");
}

TEST(WebPDecoder, RefusesFilesCutShort) {
    const TestPicture picture = tests::noise(40, 30, 3, Alpha::Random);
    expectCutShortIsCorrupt(kDecoder, webpFile(picture));
    expectCutShortIsCorrupt(kDecoder, webpFile(picture, lossy()));
    expectCutShortIsCorrupt(kDecoder,
                            webpFile(picture, {WebPCoding::Lossless, 90, tests::exifBlock(6)}));
}

// The header then still promises what is not there, but the file's own length does not.
TEST(WebPDecoder, RefusesPixelsCutShort) {
    const TestPicture picture = tests::noise(40, 30, 3, Alpha::Random);
    for (const WebPOptions& options : {WebPOptions{}, lossy()}) {
        Bytes file = webpFile(picture, options);
        file.resize(file.size() / 2 / 2 * 2);
        const std::size_t length = file.size() - 8;
        for (std::size_t i = 0; i < 4; ++i)
            file[4 + i] = static_cast<std::uint8_t>(length >> (8 * i));
        EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::Corrupt);
    }
}

TEST(WebPDecoder, TurnsThePictureUpright) {
    expectOrientationsApplied(kDecoder, 0, [](const TestPicture& picture, const Bytes& exif) {
        return webpFile(picture, {WebPCoding::Lossless, 90, exif});
    });
}

TEST(WebPDecoder, TurnsThePictureUprightByABlockWithoutAHeader) {
    expectOrientationsApplied(kDecoder, 0, [](const TestPicture& picture, const Bytes& exif) {
        return webpFile(picture, {WebPCoding::Lossless, 90, Bytes(exif.begin() + 6, exif.end())});
    });
}

TEST(WebPDecoder, ReducesPicturesOverTheSideLimit) {
    for (const auto coding : {WebPCoding::Lossless, WebPCoding::Lossy}) {
        const auto picture = kDecoder.decode(
            webpFile({200, 100, {200, 100, 50, 255}}, {coding, 95, {}}), {50, 1 << 20});
        ASSERT_TRUE(picture);
        EXPECT_LE(
            largestDifference(TestPicture(picture.value().pixels), {50, 25, {200, 100, 50, 255}}),
            kLossPerChannel);
        EXPECT_EQ(picture.value().sourceWidthPx, 200);
        EXPECT_EQ(picture.value().sourceHeightPx, 100);
    }
}

TEST(WebPDecoder, FitsOneLongRow) {
    const TestPicture row(16'383, 1, {50, 100, 150, 255});
    EXPECT_EQ(decodedBy(kDecoder, webpFile(row), {8192, 1 << 20}),
              (TestPicture{8192, 1, {50, 100, 150, 255}}));
}

TEST(WebPDecoder, RefusesPicturesOverTheByteLimit) {
    const Bytes file = webpFile(quadrants(20, 10));
    EXPECT_EQ(refusalBy(kDecoder, file, {0, 799}), ErrorCode::TooLarge);
    EXPECT_EQ(decodedBy(kDecoder, file, {0, 800}), quadrants(20, 10));
}

TEST(WebPDecoder, CountsTheBytesOfAWholeLosslessPicture) {
    EXPECT_EQ(refusalBy(kDecoder, webpFile(quadrants(20, 10)), {10, 799}), ErrorCode::TooLarge);
    EXPECT_EQ(decodedBy(kDecoder, webpFile(quadrants(20, 10), lossy()), {10, 200}).widthPx, 10);
}

TEST(WebPDecoder, SurvivesMutations) {
    const TestPicture picture = withAlpha(tests::noise(40, 30, 4, Alpha::Opaque), 200);
    for (const auto coding : {WebPCoding::Lossless, WebPCoding::Lossy})
        expectMutationsAreHarmless(kDecoder, webpFile(picture, {coding, 5, tests::exifBlock(8)}),
                                   600);
}

} // namespace
