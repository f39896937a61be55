#include "Backends/JPEG/JPEGDecoder.h"
#include "Tests/Support/DecoderChecks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using platform::DecodeLimits;
using platform::ErrorCode;
using platform::JPEGDecoder;
using tests::Alpha;
using tests::Bytes;
using tests::decodedBy;
using tests::expectCutShortIsCorrupt;
using tests::expectMutationsAreHarmless;
using tests::expectOrientationsApplied;
using tests::JPEGCoding;
using tests::JPEGColours;
using tests::jpegFile;
using tests::JPEGOptions;
using tests::largestDifference;
using tests::quadrants;
using tests::refusalBy;
using tests::TestPicture;

constexpr int kLossPerChannel = 3;
const JPEGDecoder kDecoder;

JPEGOptions coded(JPEGCoding coding) {
    JPEGOptions options;
    options.coding = coding;
    return options;
}

JPEGOptions coloured(JPEGColours colours) {
    JPEGOptions options;
    options.colours = colours;
    return options;
}

void expectDecodes(const TestPicture& picture, const JPEGOptions& options) {
    const TestPicture decoded = decodedBy(kDecoder, jpegFile(picture, options));
    EXPECT_LE(largestDifference(decoded, picture), kLossPerChannel);
}

/// The place of a marker's first byte, the first such if there are several.
std::size_t markerIn(const Bytes& file, std::uint8_t marker) {
    const std::uint8_t wanted[] = {0xFF, marker};
    return static_cast<std::size_t>(
        std::search(file.begin(), file.end(), std::begin(wanted), std::end(wanted)) - file.begin());
}

/// A file that is whole but declares another size.
Bytes declaring(Bytes file, std::uint8_t frameMarker, int widthPx, int heightPx) {
    const std::size_t at = markerIn(file, frameMarker) + 5;
    file.at(at) = static_cast<std::uint8_t>(heightPx >> 8);
    file.at(at + 1) = static_cast<std::uint8_t>(heightPx);
    file.at(at + 2) = static_cast<std::uint8_t>(widthPx >> 8);
    file.at(at + 3) = static_cast<std::uint8_t>(widthPx);
    return file;
}

TEST(JPEGDecoder, DecodesBaseline) {
    expectDecodes(quadrants(64, 32), coded(JPEGCoding::Baseline));
}

TEST(JPEGDecoder, DecodesProgressive) {
    expectDecodes(quadrants(64, 32), coded(JPEGCoding::Progressive));
}

TEST(JPEGDecoder, DecodesArithmeticCoding) {
    expectDecodes(quadrants(64, 32), coded(JPEGCoding::Arithmetic));
}

TEST(JPEGDecoder, DecodesRGBThatIsNotConverted) {
    expectDecodes(quadrants(64, 32), coloured(JPEGColours::RGB));
}

TEST(JPEGDecoder, DecodesGrey) {
    TestPicture picture(32, 16, {0, 0, 0, 255});
    for (int x = 16; x < 32; ++x) {
        for (int y = 0; y < 16; ++y)
            picture.at(x, y) = {200, 200, 200, 255};
    }
    expectDecodes(picture, coloured(JPEGColours::Grey));
}

// 3 x 1 is one for which the library has no name.
TEST(JPEGDecoder, DecodesEverySampling) {
    for (const auto& [across, down] :
         {std::pair{1, 1}, {2, 1}, {1, 2}, {2, 2}, {4, 1}, {1, 4}, {3, 1}}) {
        JPEGOptions options;
        options.lumaAcross = across;
        options.lumaDown = down;
        expectDecodes({96, 64, {200, 100, 50, 255}}, options);
    }
}

TEST(JPEGDecoder, DecodesSizesThatAreNoMultipleOfABlock) {
    for (const auto& [width, height] : {std::pair{1, 1}, {17, 3}, {3, 17}, {8, 9}}) {
        JPEGOptions options;
        options.lumaAcross = 2;
        options.lumaDown = 2;
        expectDecodes({width, height, {10, 200, 90, 255}}, options);
    }
}

// Next to no data is not too little.
TEST(JPEGDecoder, DecodesLargeFlatPictures) {
    for (const auto colours : {JPEGColours::Grey, JPEGColours::YCbCr}) {
        for (const auto coding :
             {JPEGCoding::Baseline, JPEGCoding::Progressive, JPEGCoding::Arithmetic}) {
            JPEGOptions options;
            options.colours = colours;
            options.coding = coding;
            expectDecodes({2000, 1000, {128, 128, 128, 255}}, options);
        }
    }
}

TEST(JPEGDecoder, RefusesCMYK) {
    for (const auto colours : {JPEGColours::CMYK, JPEGColours::YCCK}) {
        const auto picture = kDecoder.decode(jpegFile(quadrants(16, 16), coloured(colours)), {});
        ASSERT_FALSE(picture);
        EXPECT_EQ(picture.error().code, ErrorCode::Unsupported);
        EXPECT_EQ(picture.error().detail,
                  "in CMYK colours, which are not shown; convert it to RGB");
    }
}

TEST(JPEGDecoder, RefusesOtherKinds) {
    Bytes lossless = jpegFile(quadrants(16, 16));
    lossless.at(markerIn(lossless, 0xC0) + 1) = 0xC3;
    EXPECT_EQ(refusalBy(kDecoder, lossless), ErrorCode::Unsupported);
    Bytes deep = jpegFile(quadrants(16, 16));
    deep.at(markerIn(deep, 0xC0) + 4) = 12;
    EXPECT_EQ(refusalBy(kDecoder, deep), ErrorCode::Unsupported);
}

TEST(JPEGDecoder, RefusesFilesWithoutAPicture) {
    EXPECT_EQ(refusalBy(kDecoder, {0xFF, 0xD8, 0xFF}), ErrorCode::Corrupt);
    EXPECT_EQ(refusalBy(kDecoder, {0xFF, 0xD8, 0xFF, 0xD9}), ErrorCode::Corrupt);
    EXPECT_EQ(refusalBy(kDecoder, declaring(jpegFile(quadrants(16, 16)), 0xC0, 16, 0)),
              ErrorCode::Corrupt);
}

TEST(JPEGDecoder, RefusesFilesCutShort) {
    const TestPicture picture = tests::noise(48, 40, 5, Alpha::Opaque);
    JPEGOptions withExif;
    withExif.exif = tests::exifBlock(6);
    expectCutShortIsCorrupt(kDecoder, jpegFile(picture, withExif));
    expectCutShortIsCorrupt(kDecoder, jpegFile(picture, coded(JPEGCoding::Progressive)));
    expectCutShortIsCorrupt(kDecoder, jpegFile(picture, coloured(JPEGColours::Grey)));
}

TEST(JPEGDecoder, FindsAFileCutShortBehindOtherDamage) {
    Bytes file = jpegFile(tests::noise(256, 256, 6, Alpha::Opaque));
    const std::size_t data = markerIn(file, 0xDA) + 14;
    // A restart that nothing announced, early: the library remembers its first complaint only.
    file.at(data + 50) = 0xFF;
    file.at(data + 51) = 0xD0;
    file.resize(file.size() / 2);
    EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::Corrupt);
}

TEST(JPEGDecoder, ShowsADamagedPictureWithAWarning) {
    const TestPicture source = tests::noise(64, 64, 7, Alpha::Opaque);
    Bytes file = jpegFile(source);
    file.insert(file.begin() + 20, {1, 2, 3}); // between the first two segments
    const auto picture = kDecoder.decode(file, {});
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture.value().warning, "Corrupt JPEG data: 3 extraneous bytes before marker 0xdb");
    EXPECT_EQ(TestPicture(picture.value().pixels), decodedBy(kDecoder, jpegFile(source)));
}

// The library reports both as a warning, with the pixels as they were before.
TEST(JPEGDecoder, TakesAFailureAfterAWarningForAFailure) {
    Bytes file = jpegFile(quadrants(64, 32), coloured(JPEGColours::Grey));
    const std::size_t tables = markerIn(file, 0xDA) + 6;
    file.at(tables) = 0x33; // numbers of tables that the file does not have
    file.insert(file.begin() + 20, {1, 2, 3});
    EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::Corrupt);
}

TEST(JPEGDecoder, AllowsPaddingBeforeMarkers) {
    const TestPicture source = quadrants(64, 32);
    Bytes file = jpegFile(source);
    file.insert(file.end() - 2, 3, 0xFF);
    file.insert(file.begin() + 20, 2, 0xFF);
    const auto picture = kDecoder.decode(file, {});
    ASSERT_TRUE(picture) << picture.error().detail;
    EXPECT_EQ(picture.value().warning, "");
}

TEST(JPEGDecoder, IgnoresWhatFollowsThePicture) {
    const TestPicture source = quadrants(64, 32);
    Bytes file = jpegFile(source);
    file.insert(file.end(), 1000, 0xFF);
    const auto picture = kDecoder.decode(file, {});
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture.value().warning, "");
    EXPECT_LE(largestDifference(TestPicture(picture.value().pixels), source), kLossPerChannel);
}

TEST(JPEGDecoder, TurnsThePictureUpright) {
    expectOrientationsApplied(kDecoder, kLossPerChannel,
                              [](const TestPicture& picture, const Bytes& exif) {
                                  JPEGOptions options;
                                  options.exif = exif;
                                  return jpegFile(picture, options);
                              });
}

TEST(JPEGDecoder, TakesOtherApplicationSegmentsForNoExif) {
    JPEGOptions options;
    options.exif = tests::exifBlock(6);
    options.exif[0] = 'X';
    expectDecodes(quadrants(64, 32), options);
}

TEST(JPEGDecoder, DecodesAtTheLargestEighthThatFits) {
    const Bytes file = jpegFile(quadrants(1600, 800));
    for (const auto& [limit, width] :
         {std::pair{1600, 1600}, {1599, 1400}, {1400, 1400}, {800, 800}, {799, 600}, {200, 200}}) {
        const auto picture = kDecoder.decode(file, {limit, std::size_t{1} << 30});
        ASSERT_TRUE(picture);
        EXPECT_LE(
            largestDifference(TestPicture(picture.value().pixels), quadrants(width, width / 2)),
            kLossPerChannel)
            << limit;
        EXPECT_EQ(picture.value().sourceWidthPx, 1600);
        EXPECT_EQ(picture.value().sourceHeightPx, 800);
    }
}

TEST(JPEGDecoder, ReducesFurtherThanAnEighth) {
    const TestPicture decoded = decodedBy(kDecoder, jpegFile(quadrants(1600, 800)), {40, 1 << 20});
    EXPECT_LE(largestDifference(decoded, quadrants(40, 20)), kLossPerChannel);
}

TEST(JPEGDecoder, FitsOneLongRow) {
    const Bytes file = jpegFile({20'000, 1, {50, 100, 150, 255}});
    const TestPicture decoded = decodedBy(kDecoder, file, {16'384, 1 << 20});
    EXPECT_LE(largestDifference(decoded, {15'000, 1, {50, 100, 150, 255}}), kLossPerChannel);
    EXPECT_EQ(decodedBy(kDecoder, file, {100, 1 << 20}).widthPx, 100);
}

TEST(JPEGDecoder, RefusesPicturesOverTheByteLimit) {
    const Bytes file = jpegFile(quadrants(64, 32));
    EXPECT_EQ(refusalBy(kDecoder, file, {0, 64 * 32 * 4 - 1}), ErrorCode::TooLarge);
    EXPECT_EQ(decodedBy(kDecoder, file, {0, 64 * 32 * 4}).widthPx, 64);
}

TEST(JPEGDecoder, CountsTheBytesAfterScaling) {
    const Bytes file = jpegFile(quadrants(64, 32));
    EXPECT_EQ(decodedBy(kDecoder, file, {32, 32 * 16 * 4}).widthPx, 32);
    EXPECT_EQ(refusalBy(kDecoder, file, {32, 32 * 16 * 4 - 1}), ErrorCode::TooLarge);
}

TEST(JPEGDecoder, RefusesACoefficientBufferOverTwiceTheByteLimit) {
    const Bytes file = jpegFile(quadrants(256, 256), coded(JPEGCoding::Progressive));
    constexpr std::size_t coefficients = 256 * 256 * 3 * 2;
    EXPECT_EQ(refusalBy(kDecoder, file, {32, coefficients / 2 - 1}), ErrorCode::TooLarge);
    EXPECT_EQ(decodedBy(kDecoder, file, {32, coefficients / 2}).widthPx, 32);
}

TEST(JPEGDecoder, RefusesHugeSizesWithHardlyAnyData) {
    const Bytes file = jpegFile(quadrants(64, 32));
    EXPECT_EQ(refusalBy(kDecoder, declaring(file, 0xC0, 65'500, 65'500), {8192, 1U << 30}),
              ErrorCode::Corrupt);
    EXPECT_EQ(refusalBy(kDecoder, declaring(file, 0xC0, 65'535, 64)), ErrorCode::TooLarge);
}

TEST(JPEGDecoder, RefusesScansWithoutEnd) {
    Bytes file = jpegFile(quadrants(16, 16), coded(JPEGCoding::Progressive));
    file.erase(file.end() - 2, file.end());
    const std::size_t firstScan = markerIn(file, 0xDA);
    const std::size_t secondScan =
        firstScan + 2 +
        markerIn(Bytes(file.begin() + static_cast<std::ptrdiff_t>(firstScan) + 2, file.end()),
                 0xDA);
    const Bytes scan(file.begin() + static_cast<std::ptrdiff_t>(firstScan),
                     file.begin() + static_cast<std::ptrdiff_t>(secondScan));
    for (int i = 0; i < 1000; ++i)
        file.insert(file.end(), scan.begin(), scan.end());
    file.insert(file.end(), {0xFF, 0xD9});
    EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::Corrupt);
}

TEST(JPEGDecoder, SurvivesMutations) {
    const TestPicture picture = tests::noise(60, 44, 8, Alpha::Opaque);
    JPEGOptions options;
    options.exif = tests::exifBlock(5);
    options.lumaAcross = 2;
    options.lumaDown = 2;
    for (const auto coding :
         {JPEGCoding::Baseline, JPEGCoding::Progressive, JPEGCoding::Arithmetic}) {
        options.coding = coding;
        // Little data, so that the header is hit often.
        options.quality = 5;
        expectMutationsAreHarmless(kDecoder, jpegFile(picture, options), 400);
    }
}

} // namespace
