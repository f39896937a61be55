#include "Tests/Support/DecoderChecks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tests {
namespace {

using platform::DecodeLimits;
using platform::ErrorCode;
using platform::ImageDecoder;

// A copy of its own size, so that a sanitizer sees a read beyond it.
Bytes firstBytes(const Bytes& file, std::size_t count) {
    Bytes part(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(count));
    part.shrink_to_fit();
    return part;
}

/// The corners of `quadrants` once they are stored as given, clockwise from the top left, for the
/// picture to come out as `quadrants` again: where EXIF says that first row and column belong.
std::array<Colour, 4> storedCorners(int orientation) {
    switch (orientation) {
    case 2: // top, right
        return {kGreen, kRed, kBlue, kWhite};
    case 3: // bottom, right
        return {kWhite, kBlue, kRed, kGreen};
    case 4: // bottom, left
        return {kBlue, kWhite, kGreen, kRed};
    case 5: // left, top
        return {kRed, kBlue, kWhite, kGreen};
    case 6: // right, top
        return {kGreen, kWhite, kBlue, kRed};
    case 7: // right, bottom
        return {kWhite, kGreen, kRed, kBlue};
    case 8: // left, bottom
        return {kBlue, kRed, kGreen, kWhite};
    default: // top, left
        return {kRed, kGreen, kWhite, kBlue};
    }
}

TestPicture storedQuadrants(int uprightWidth, int uprightHeight, int orientation) {
    const bool isTurned = orientation >= 5;
    TestPicture picture(isTurned ? uprightHeight : uprightWidth,
                        isTurned ? uprightWidth : uprightHeight);
    const auto corners = storedCorners(orientation);
    for (int y = 0; y < picture.heightPx; ++y) {
        for (int x = 0; x < picture.widthPx; ++x) {
            const bool isRight = 2 * x >= picture.widthPx;
            const bool isBelow = 2 * y >= picture.heightPx;
            picture.at(x, y) =
                isBelow ? (isRight ? corners[2] : corners[3]) : (isRight ? corners[1] : corners[0]);
        }
    }
    return picture;
}

Bytes mutated(Bytes file, std::mt19937& random) {
    const auto below = [&](std::size_t end) { return random() % end; };
    for (std::size_t flips = 1 + below(8); flips > 0; --flips)
        file[below(file.size())] = static_cast<std::uint8_t>(random());
    return below(8) == 0 ? firstBytes(file, below(file.size())) : file;
}

} // namespace

TestPicture decodedBy(const ImageDecoder& decoder, const Bytes& file, const DecodeLimits& limits) {
    EXPECT_TRUE(decoder.sniff(file));
    const auto picture = decoder.decode(file, limits);
    if (picture)
        return TestPicture(picture.value().pixels);
    ADD_FAILURE() << decoder.name() << " " << picture.error().detail;
    return {1, 1};
}

ErrorCode refusalBy(const ImageDecoder& decoder, const Bytes& file, const DecodeLimits& limits) {
    EXPECT_TRUE(decoder.sniff(file));
    const auto picture = decoder.decode(file, limits);
    if (!picture)
        return picture.error().code;
    ADD_FAILURE() << "decoded to " << picture.value().pixels.widthPx << " x "
                  << picture.value().pixels.heightPx;
    return ErrorCode::Missing;
}

void expectCutShortIsCorrupt(const ImageDecoder& decoder, const Bytes& file) {
    constexpr std::size_t mostLengths = 400;
    const std::size_t step = std::max<std::size_t>(1, file.size() / mostLengths);
    for (std::size_t length = 0;
         length<file.size(); length += file.size() - length> 32 ? step : 1) {
        const Bytes part = firstBytes(file, length);
        if (!decoder.sniff(part)) {
            EXPECT_LE(length, 12U);
            continue;
        }
        const auto picture = decoder.decode(part, {});
        ASSERT_FALSE(picture) << length << " bytes of " << file.size();
        EXPECT_EQ(picture.error().code, ErrorCode::Corrupt)
            << length << " bytes of " << file.size() << ": " << picture.error().detail;
    }
}

void expectOrientationsApplied(
    const ImageDecoder& decoder, int tolerance,
    const std::function<Bytes(const TestPicture& picture, const Bytes& exif)>& fileWith) {
    constexpr int width = 64;
    constexpr int height = 32;
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const Bytes file =
            fileWith(storedQuadrants(width, height, orientation), exifBlock(orientation));
        const auto picture = decoder.decode(file, {});
        ASSERT_TRUE(picture) << picture.error().detail;
        EXPECT_LE(largestDifference(TestPicture(picture.value().pixels), quadrants(width, height)),
                  tolerance)
            << "orientation " << orientation;
        EXPECT_EQ(picture.value().sourceWidthPx, width) << "orientation " << orientation;
        EXPECT_EQ(picture.value().sourceHeightPx, height) << "orientation " << orientation;
    }
}

void expectMutationsAreHarmless(const ImageDecoder& decoder, const Bytes& file, int count,
                                const std::function<void(Bytes&)>& repair) {
    std::mt19937 random(20'240'601);
    const DecodeLimits limits{256, std::size_t{1} << 22};
    for (int i = 0; i < count; ++i) {
        Bytes victim = mutated(file, random);
        if (repair)
            repair(victim);
        if (!decoder.sniff(victim))
            continue;
        const auto picture = decoder.decode(victim, limits);
        if (!picture) {
            EXPECT_FALSE(picture.error().detail.empty());
            continue;
        }
        const platform::PixelStorage& pixels = picture.value().pixels;
        ASSERT_NE(pixels.bytes, nullptr);
        EXPECT_GE(std::min(pixels.widthPx, pixels.heightPx), 1);
        EXPECT_LE(std::max(pixels.widthPx, pixels.heightPx), limits.maxSidePx);
    }
}

} // namespace tests
