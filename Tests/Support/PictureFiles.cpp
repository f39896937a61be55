#include "Tests/Support/PictureFiles.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <random>

namespace tests {
namespace {

/// A TIFF directory, byte by byte.
class ExifWriter {
public:
    explicit ExifWriter(ByteOrder order) : order_(order) {
        bytes_ = {'E', 'x', 'i', 'f', 0, 0};
        const char letter = order == ByteOrder::Intel ? 'I' : 'M';
        bytes_.insert(bytes_.end(), 2, static_cast<std::uint8_t>(letter));
        number(42, 2);
        number(8, 4);
    }

    /// One directory with one orientation.
    void directory(int orientation, std::uint32_t nextOffset) {
        constexpr std::uint32_t orientationTag = 0x0112;
        constexpr std::uint32_t shortType = 3;
        number(1, 2);
        number(orientationTag, 2);
        number(shortType, 2);
        number(1, 4);
        number(static_cast<std::uint32_t>(orientation), 2);
        number(0, 2);
        number(nextOffset, 4);
    }

    [[nodiscard]] Bytes take() { return std::move(bytes_); }

private:
    void number(std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i) {
            const int shift = order_ == ByteOrder::Intel ? 8 * i : 8 * (count - 1 - i);
            bytes_.push_back(static_cast<std::uint8_t>(value >> shift));
        }
    }

    ByteOrder order_;
    Bytes bytes_;
};

} // namespace

TestPicture::TestPicture(int width, int height, Colour colour)
    : widthPx(width), heightPx(height),
      pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), colour) {}

TestPicture::TestPicture(const platform::PixelStorage& storage)
    : TestPicture(storage.widthPx, storage.heightPx) {
    std::memcpy(pixels.data(), storage.bytes.get(), storage.size());
}

TestPicture::TestPicture(const platform::Image& image)
    : TestPicture(image.widthPx(), image.heightPx()) {
    std::memcpy(pixels.data(), image.pixels().data(), image.pixels().size());
}

Colour& TestPicture::at(int x, int y) {
    return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(widthPx) +
                     static_cast<std::size_t>(x));
}

const Colour& TestPicture::at(int x, int y) const {
    return const_cast<TestPicture*>(this)->at(x, y);
}

platform::PixelStorage TestPicture::storage() const {
    platform::PixelStorage storage(widthPx, heightPx);
    std::memcpy(storage.bytes.get(), pixels.data(), storage.size());
    return storage;
}

void PrintTo(const TestPicture& picture, std::ostream* out) {
    constexpr std::size_t shown = 8;
    *out << picture.widthPx << " x " << picture.heightPx << ":";
    for (std::size_t i = 0; i < std::min(shown, picture.pixels.size()); ++i) {
        const Colour& colour = picture.pixels[i];
        *out << " (" << +colour[0] << ", " << +colour[1] << ", " << +colour[2] << ", " << +colour[3]
             << ")";
    }
}

TestPicture quadrants(int widthPx, int heightPx) {
    TestPicture picture(widthPx, heightPx);
    for (int y = 0; y < heightPx; ++y) {
        for (int x = 0; x < widthPx; ++x) {
            const bool isRight = 2 * x >= widthPx;
            const bool isBelow = 2 * y >= heightPx;
            picture.at(x, y) = isBelow ? (isRight ? kWhite : kBlue) : (isRight ? kGreen : kRed);
        }
    }
    return picture;
}

TestPicture noise(int widthPx, int heightPx, std::uint32_t seed, Alpha alpha) {
    std::mt19937 random(seed);
    TestPicture picture(widthPx, heightPx);
    for (Colour& colour : picture.pixels) {
        for (std::uint8_t& channel : colour)
            channel = static_cast<std::uint8_t>(random());
        if (alpha == Alpha::Opaque)
            colour[3] = 255;
    }
    return picture;
}

int largestDifference(const TestPicture& one, const TestPicture& other) {
    if (one.widthPx != other.widthPx || one.heightPx != other.heightPx)
        return 256;
    int largest = 0;
    for (std::size_t i = 0; i < one.pixels.size(); ++i) {
        for (std::size_t c = 0; c < 4; ++c)
            largest = std::max(largest, std::abs(one.pixels[i][c] - other.pixels[i][c]));
    }
    return largest;
}

Bytes exifBlock(int orientation, ByteOrder order, int thumbnailOrientation) {
    constexpr std::uint32_t secondDirectory = 26; // after the 8-byte header and one directory of 18
    ExifWriter writer(order);
    writer.directory(orientation, thumbnailOrientation == 0 ? 0 : secondDirectory);
    if (thumbnailOrientation != 0)
        writer.directory(thumbnailOrientation, 0);
    return writer.take();
}

} // namespace tests
