#include "Platform/Imaging/ImageDecoder.h"
#include "Tests/Support/PictureFiles.h"

#include <gtest/gtest.h>

#include <limits>
#include <string_view>

namespace {

using platform::DecodeLimits;
using platform::decodePicture;
using platform::ErrorCode;
using platform::imageDecoders;
using platform::refusalOfSize;
using platform::uprightPicture;
using tests::Bytes;
using tests::TestPicture;

Bytes textBytes(std::string_view text) {
    return {text.begin(), text.end()};
}

void expectRefused(const Bytes& file, ErrorCode code, std::string_view detail) {
    const auto picture = decodePicture(file, {});
    ASSERT_FALSE(picture);
    EXPECT_EQ(picture.error().code, code);
    EXPECT_EQ(picture.error().detail, detail);
}

TEST(ImageDecoders, AreAskedInOrder) {
    ASSERT_EQ(imageDecoders().size(), 3U);
    EXPECT_EQ(imageDecoders()[0]->name(), "JPEG");
    EXPECT_EQ(imageDecoders()[1]->name(), "PNG");
    EXPECT_EQ(imageDecoders()[2]->name(), "WebP");
}

TEST(ImageDecoders, KnowOnlyTheirOwnFormat) {
    const TestPicture picture = tests::quadrants(8, 8);
    const Bytes files[] = {tests::jpegFile(picture), tests::pngFile(picture),
                           tests::webpFile(picture)};
    for (std::size_t decoder = 0; decoder < 3; ++decoder) {
        for (std::size_t file = 0; file < 3; ++file)
            EXPECT_EQ(imageDecoders()[decoder]->sniff(files[file]), decoder == file);
    }
}

TEST(ImageDecoders, KnowNothingByTooFewBytes) {
    for (const auto* decoder : imageDecoders()) {
        EXPECT_FALSE(decoder->sniff({})) << decoder->name();
        EXPECT_FALSE(decoder->sniff(textBytes("RI"))) << decoder->name();
        EXPECT_FALSE(decoder->sniff(textBytes("RIFF....WAVE"))) << decoder->name();
    }
}

TEST(DecodePicture, DecodesEachFormatByItsFirstBytes) {
    const TestPicture picture = tests::quadrants(32, 16);
    for (const Bytes& file :
         {tests::jpegFile(picture), tests::pngFile(picture), tests::webpFile(picture)}) {
        const auto decoded = decodePicture(file, {});
        ASSERT_TRUE(decoded);
        EXPECT_LE(tests::largestDifference(TestPicture(decoded.value().pixels), picture), 3);
        EXPECT_TRUE(decoded.value().warning.empty());
    }
}

TEST(DecodePicture, RefusesNoBytes) {
    expectRefused({}, ErrorCode::Corrupt, "it is empty");
}

TEST(DecodePicture, RefusesOtherFormats) {
    expectRefused(textBytes("Dear reader"), ErrorCode::Unsupported,
                  "not a JPEG, PNG or WebP picture");
    expectRefused(textBytes("GIF89a\1\0\1\0"), ErrorCode::Unsupported,
                  "not a JPEG, PNG or WebP picture");
}

TEST(DecodePicture, NamesTheFormatBeforeTheCause) {
    Bytes file = tests::pngFile(tests::quadrants(8, 8));
    file.resize(40);
    expectRefused(file, ErrorCode::Corrupt, "PNG cut short (40 bytes are not all of it)");
}

TEST(RefusalOfSize, CountsFourBytesAPixel) {
    const DecodeLimits limits{0, 4 * 100 * 50};
    EXPECT_FALSE(refusalOfSize({100, 50}, limits));
    const auto refusal = refusalOfSize({101, 50}, limits);
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->code, ErrorCode::TooLarge);
    EXPECT_EQ(refusal->detail, "too large (101 x 50 pixels take 20200 bytes, the limit is 20000)");
}

TEST(RefusalOfSize, DoesNotOverflow) {
    constexpr int most = std::numeric_limits<int>::max();
    EXPECT_TRUE(refusalOfSize({most, most}, {}));
    EXPECT_TRUE(refusalOfSize({65'536, 65'536}, {}));
    EXPECT_TRUE(refusalOfSize({16'385, 16'384}, {}));
    EXPECT_FALSE(refusalOfSize({16'384, 16'384}, {}));
}

TEST(UprightPicture, TurnsTheSourceSizeToo) {
    const auto picture = uprightPicture(tests::quadrants(4, 2).storage(), {400, 200}, 6);
    EXPECT_EQ(picture.pixels.widthPx, 2);
    EXPECT_EQ(picture.pixels.heightPx, 4);
    EXPECT_EQ(picture.sourceWidthPx, 200);
    EXPECT_EQ(picture.sourceHeightPx, 400);
}

} // namespace
