#include "Backends/EXIF/ExifOrientation.h"
#include "Tests/Support/PictureFiles.h"

#include <gtest/gtest.h>

#include <random>
#include <string_view>

namespace {

using platform::exifOrientation;
using tests::ByteOrder;
using tests::Bytes;
using tests::exifBlock;

TEST(ExifOrientation, ReadsAllEightInBothByteOrders) {
    for (int orientation = 1; orientation <= 8; ++orientation) {
        EXPECT_EQ(exifOrientation(exifBlock(orientation, ByteOrder::Intel)), orientation);
        EXPECT_EQ(exifOrientation(exifBlock(orientation, ByteOrder::Motorola)), orientation);
    }
}

TEST(ExifOrientation, NeedsNoHeader) {
    const Bytes block = exifBlock(6);
    EXPECT_EQ(exifOrientation(std::span(block).subspan(6)), 6);
}

TEST(ExifOrientation, TakesALongForAShort) {
    Bytes block = exifBlock(6);
    block.at(6 + 8 + 2 + 2) = 4; // the entry's type
    EXPECT_EQ(exifOrientation(block), 6);
}

TEST(ExifOrientation, IsNotTheThumbnails) {
    EXPECT_EQ(exifOrientation(exifBlock(3, ByteOrder::Intel, 6)), 3);
    Bytes block = exifBlock(3, ByteOrder::Intel, 6);
    block.at(6 + 8 + 2) = 0x13; // the picture's own entry becomes another
    EXPECT_EQ(exifOrientation(block), 1);
}

TEST(ExifOrientation, IsUprightWhereNoneIsGiven) {
    EXPECT_EQ(exifOrientation({}), 1);
    EXPECT_EQ(exifOrientation(exifBlock(0)), 1);
    EXPECT_EQ(exifOrientation(exifBlock(9)), 1);
    EXPECT_EQ(exifOrientation(exifBlock(0xFFFF)), 1);
    constexpr std::string_view text = "a few words instead of a block";
    EXPECT_EQ(exifOrientation(Bytes(text.begin(), text.end())), 1);
}

TEST(ExifOrientation, IsUprightWhereTheBlockIsCutShort) {
    const Bytes block = exifBlock(6);
    for (std::size_t length = 0; length < 6 + 8 + 2 + 10; ++length)
        EXPECT_EQ(exifOrientation(
                      Bytes(block.begin(), block.begin() + static_cast<std::ptrdiff_t>(length))),
                  1)
            << length;
}

TEST(ExifOrientation, SurvivesMutations) {
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        Bytes block = exifBlock(6, ByteOrder::Motorola, 8);
        for (int flips = 0; flips < 3; ++flips)
            block[random() % block.size()] = static_cast<std::uint8_t>(random());
        const int orientation = exifOrientation(block);
        EXPECT_GE(orientation, 1);
        EXPECT_LE(orientation, 8);
    }
}

} // namespace
