#include "Backends/PNG/PNGDecoder.h"
#include "Tests/Support/DecoderChecks.h"
#include "Tests/Support/MemoryPeak.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using platform::DecodeLimits;
using platform::ErrorCode;
using platform::PNGDecoder;
using tests::Alpha;
using tests::Bytes;
using tests::decodedBy;
using tests::expectCutShortIsCorrupt;
using tests::expectMutationsAreHarmless;
using tests::expectOrientationsApplied;
using tests::pngFile;
using tests::PNGOptions;
using tests::pngVariant;
using tests::quadrants;
using tests::refusalBy;
using tests::TestPicture;

const PNGDecoder kDecoder;

constexpr int kGrey = 0;
constexpr int kColour = 2;
constexpr int kPalette = 3;
constexpr int kGreyAlpha = 4;
constexpr int kColourAlpha = 6;

PNGOptions kind(int colourType, int bitDepth, bool isInterlaced = false) {
    PNGOptions options;
    options.colourType = colourType;
    options.bitDepth = bitDepth;
    options.isInterlaced = isInterlaced;
    return options;
}

PNGOptions interlaced() {
    return kind(kColourAlpha, 8, true);
}

/// In one piece and interlaced, at sizes that leave parts of bytes and empty passes.
void expectDecodesExactly(int colourType, int bitDepth, bool hasTransparency) {
    for (const bool isInterlaced : {false, true}) {
        PNGOptions options = kind(colourType, bitDepth, isInterlaced);
        options.hasTransparency = hasTransparency;
        for (const auto& [width, height] : {std::pair{1, 1}, {2, 3}, {29, 13}}) {
            const auto variant = pngVariant(width, height, options);
            EXPECT_EQ(decodedBy(kDecoder, variant.file), variant.expected)
                << "type " << colourType << ", depth " << bitDepth << ", " << width << " x "
                << height << (isInterlaced ? ", interlaced" : "");
        }
    }
}

void setDeclaredSize(Bytes& file, int widthPx, int heightPx) {
    constexpr std::size_t at = 16;
    for (int i = 0; i < 4; ++i) {
        file.at(at + static_cast<std::size_t>(i)) =
            static_cast<std::uint8_t>(widthPx >> (24 - 8 * i));
        file.at(at + 4 + static_cast<std::size_t>(i)) =
            static_cast<std::uint8_t>(heightPx >> (24 - 8 * i));
    }
    tests::repairPNGChecksums(file);
}

TEST(PNGDecoder, DecodesGrey) {
    for (const int depth : {1, 2, 4, 8, 16})
        expectDecodesExactly(kGrey, depth, false);
}

TEST(PNGDecoder, DecodesGreyWithATransparentLevel) {
    for (const int depth : {1, 2, 4, 8, 16})
        expectDecodesExactly(kGrey, depth, true);
}

TEST(PNGDecoder, DecodesColour) {
    for (const int depth : {8, 16}) {
        expectDecodesExactly(kColour, depth, false);
        expectDecodesExactly(kColour, depth, true);
    }
}

TEST(PNGDecoder, DecodesPalettes) {
    for (const int depth : {1, 2, 4, 8}) {
        expectDecodesExactly(kPalette, depth, false);
        expectDecodesExactly(kPalette, depth, true);
    }
}

TEST(PNGDecoder, DecodesAlpha) {
    for (const int depth : {8, 16}) {
        expectDecodesExactly(kGreyAlpha, depth, false);
        expectDecodesExactly(kColourAlpha, depth, false);
    }
}

TEST(PNGDecoder, KeepsColoursUnderTransparentPixels) {
    const TestPicture picture(3, 2, {10, 200, 30, 0});
    EXPECT_EQ(decodedBy(kDecoder, pngFile(picture)), picture);
}

TEST(PNGDecoder, RefusesFilesCutShort) {
    const TestPicture picture = tests::noise(40, 30, 1, Alpha::Random);
    expectCutShortIsCorrupt(kDecoder, pngFile(picture));
    expectCutShortIsCorrupt(kDecoder, pngFile(picture, interlaced()));
    PNGOptions withExif;
    withExif.exif = tests::exifBlock(6);
    withExif.exif.erase(withExif.exif.begin(), withExif.exif.begin() + 6);
    expectCutShortIsCorrupt(kDecoder, pngFile(quadrants(8, 8), withExif));
}

TEST(PNGDecoder, RefusesDamagedPixels) {
    Bytes file = pngFile(tests::noise(40, 30, 1, Alpha::Random));
    file.at(file.size() / 2) ^= 1;
    const auto picture = kDecoder.decode(file, {});
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.error().code, ErrorCode::Corrupt);
    EXPECT_EQ(picture.error().detail.rfind("damaged (", 0), 0U) << picture.error().detail;
}

TEST(PNGDecoder, RefusesTheVariantThatOnlyOneVendorReads) {
    Bytes file = pngFile(quadrants(8, 8));
    const Bytes chunk{0, 0, 0, 4, 'C', 'g', 'B', 'I', 0x50, 0, 0x20, 6, 0, 0, 0, 0};
    file.insert(file.begin() + 8, chunk.begin(), chunk.end());
    tests::repairPNGChecksums(file);
    EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::Unsupported);
}

TEST(PNGDecoder, TurnsThePictureUpright) {
    expectOrientationsApplied(kDecoder, 0, [](const TestPicture& picture, const Bytes& exif) {
        PNGOptions options;
        options.exif.assign(exif.begin() + 6, exif.end());
        return pngFile(picture, options);
    });
}

TEST(PNGDecoder, TurnsThePictureUprightByAChunkAfterThePixels) {
    expectOrientationsApplied(kDecoder, 0, [](const TestPicture& picture, const Bytes& exif) {
        PNGOptions options;
        options.exif.assign(exif.begin() + 6, exif.end());
        Bytes file = pngFile(picture, options);
        constexpr std::size_t chunkBegin = 33; // after the signature and the header
        const std::size_t chunkEnd = chunkBegin + 12 + options.exif.size();
        const auto begin = file.begin();
        std::rotate(begin + chunkBegin, begin + static_cast<std::ptrdiff_t>(chunkEnd),
                    file.end() - 12);
        return file;
    });
}

TEST(PNGDecoder, ReducesPicturesOverTheSideLimit) {
    for (const PNGOptions& options : {PNGOptions{}, interlaced()}) {
        const auto picture =
            kDecoder.decode(pngFile(quadrants(200, 100), options), {40, std::size_t{1} << 20});
        ASSERT_TRUE(picture);
        EXPECT_EQ(TestPicture(picture.value().pixels), quadrants(40, 20));
        EXPECT_EQ(picture.value().sourceWidthPx, 200);
        EXPECT_EQ(picture.value().sourceHeightPx, 100);
    }
}

TEST(PNGDecoder, ReducesInterlacedPicturesJustAsOthers) {
    const TestPicture picture = tests::noise(111, 57, 9, Alpha::Random);
    const DecodeLimits limits{64, std::size_t{1} << 20};
    EXPECT_EQ(decodedBy(kDecoder, pngFile(picture), limits),
              decodedBy(kDecoder, pngFile(picture, interlaced()), limits));
}

TEST(PNGDecoder, FitsLongRowsAndColumns) {
    constexpr tests::Colour grey{9, 9, 9, 255};
    const DecodeLimits limits{16'384, std::size_t{1} << 20};
    EXPECT_EQ(decodedBy(kDecoder, tests::flatGreyPNG(20'000, 1, 9), limits),
              (TestPicture{16'384, 1, grey}));
    EXPECT_EQ(decodedBy(kDecoder, tests::flatGreyPNG(65'535, 2, 9), limits),
              (TestPicture{16'384, 1, grey}));
    EXPECT_EQ(decodedBy(kDecoder, tests::flatGreyPNG(2, 65'535, 9), limits),
              (TestPicture{1, 16'384, grey}));
    EXPECT_EQ(decodedBy(kDecoder, tests::flatGreyPNG(65'535, 2, 9)),
              (TestPicture{65'535, 2, grey}));
}

TEST(PNGDecoder, RefusesPicturesOverTheByteLimit) {
    const Bytes file = pngFile(quadrants(20, 10));
    EXPECT_EQ(refusalBy(kDecoder, file, {0, 799}), ErrorCode::TooLarge);
    EXPECT_EQ(decodedBy(kDecoder, file, {0, 800}), quadrants(20, 10));
}

TEST(PNGDecoder, CountsTheBytesOfTheReducedPicture) {
    EXPECT_EQ(decodedBy(kDecoder, pngFile(quadrants(20, 12)), {10, 240}), quadrants(10, 6));
}

TEST(PNGDecoder, CountsTheBytesOfAWholeInterlacedPicture) {
    const Bytes file = pngFile(quadrants(20, 12), interlaced());
    EXPECT_EQ(refusalBy(kDecoder, file, {10, 959}), ErrorCode::TooLarge);
    EXPECT_EQ(decodedBy(kDecoder, file, {10, 960}), quadrants(10, 6));
}

TEST(PNGDecoder, RefusesHugeDeclaredSizes) {
    Bytes file = pngFile(quadrants(20, 10));
    setDeclaredSize(file, 65'535, 65'535);
    EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::TooLarge);
    setDeclaredSize(file, 0x7FFFFFFF, 1);
    EXPECT_EQ(refusalBy(kDecoder, file, {16'384, std::size_t{1} << 30}), ErrorCode::TooLarge);
    setDeclaredSize(file, 1, 0x7FFFFFFF);
    EXPECT_EQ(refusalBy(kDecoder, file, {16'384, std::size_t{1} << 30}), ErrorCode::TooLarge);
    setDeclaredSize(file, 0, 10);
    EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::Corrupt);
}

TEST(PNGDecoder, ReducesALargePictureInLittleMemory) {
    const Bytes file = tests::flatGreyPNG(6000, 6000, 77); // 144 MB as a whole
    if (tests::resetMemoryPeak() < 0)
        GTEST_SKIP() << "this system does not let a process reset its peak of memory";
    const long before = tests::resetMemoryPeak();
    const TestPicture decoded = decodedBy(kDecoder, file, {512, std::size_t{1} << 30});
    EXPECT_EQ(decoded, (TestPicture{512, 512, {77, 77, 77, 255}}));
    EXPECT_LT(tests::resetMemoryPeak() - before, 16 * 1024);
}

TEST(PNGDecoder, UnpacksNoTexts) {
    PNGOptions options;
    options.textBytes = 6'000'000;
    Bytes file = pngFile(quadrants(8, 8), options);
    constexpr std::string_view name = "zTXt";
    const auto at = std::search(file.begin(), file.end(), name.begin(), name.end()) - 4;
    const Bytes chunk(at, at + 12 + (at[2] << 8) + at[3]);
    for (int i = 0; i < 20; ++i)
        file.insert(file.end() - 12, chunk.begin(), chunk.end());
    if (tests::resetMemoryPeak() < 0)
        GTEST_SKIP() << "this system does not let a process reset its peak of memory";
    const long before = tests::resetMemoryPeak();
    EXPECT_EQ(decodedBy(kDecoder, file), quadrants(8, 8));
    EXPECT_LT(tests::resetMemoryPeak() - before, 16 * 1024);
}

TEST(PNGDecoder, SetsNoMemoryAsideForWhatAChunkOnlyClaims) {
    constexpr std::array<std::uint8_t, 10> claim{0x7F, 0xFF, 0xFF, 0xF0, 'p',
                                                 'C',  'A',  'L',  'a',  0};
    constexpr std::ptrdiff_t headerEnd = 33;
    Bytes file = pngFile(quadrants(8, 8));
    file.insert(file.begin() + headerEnd, claim.begin(), claim.end());
    if (tests::resetMemoryPeak() < 0)
        GTEST_SKIP() << "this system does not let a process reset its peak of memory";
    const long before = tests::resetMemoryPeak();
    EXPECT_EQ(refusalBy(kDecoder, file), ErrorCode::Corrupt);
    EXPECT_LT(tests::resetMemoryPeak() - before, 16 * 1024);
}

TEST(PNGDecoder, SurvivesMutations) {
    for (const int colourType : {kPalette, kColourAlpha}) {
        for (const bool isInterlaced : {false, true}) {
            PNGOptions options = kind(colourType, 8, isInterlaced);
            options.hasTransparency = colourType == kPalette;
            const Bytes exif = tests::exifBlock(7);
            options.exif.assign(exif.begin() + 6, exif.end());
            const Bytes file = pngVariant(21, 17, options).file;
            expectMutationsAreHarmless(kDecoder, file, 200);
            expectMutationsAreHarmless(kDecoder, file, 400, tests::repairPNGChecksums);
        }
    }
}

} // namespace
