#include "Backends/PNG/PNGDecoder.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Tests/Support/DecoderChecks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace {

using platform::encodePng;
using platform::Image;
using tests::Bytes;
using tests::TestPicture;

Bytes encoded(const TestPicture& picture) {
    const auto file = encodePng(Image(picture.storage()));
    EXPECT_TRUE(file);
    return file ? file.value() : Bytes{};
}

TEST(PNGEncoder, KeepsEveryPixel) {
    const TestPicture picture = tests::noise(37, 21, 11, tests::Alpha::Random);
    EXPECT_EQ(tests::decodedBy(platform::PNGDecoder(), encoded(picture)), picture);
}

TEST(PNGEncoder, WritesTheSameBytesForTheSamePixels) {
    const TestPicture picture = tests::quadrants(100, 50);
    EXPECT_EQ(encoded(picture), encoded(picture));
}

TEST(PNGEncoder, WritesNothingButThePicture) {
    const Bytes file = encoded(tests::quadrants(4, 4));
    for (const std::string_view name : {"tIME", "gAMA", "sRGB", "pHYs", "tEXt"})
        EXPECT_EQ(std::search(file.begin(), file.end(), name.begin(), name.end()), file.end())
            << name;
}

TEST(PNGEncoder, RefusesAnImageWithoutPixels) {
    const auto file = encodePng(Image(platform::PixelStorage{}));
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().code, platform::ErrorCode::Unavailable);
}

} // namespace
