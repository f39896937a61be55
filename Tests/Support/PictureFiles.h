#pragma once

#include "Platform/Imaging/Image.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <vector>

/// Pictures for tests and the files of every kind that hold them, made on the spot.
namespace tests {

using Bytes = std::vector<std::uint8_t>;
using Colour = std::array<std::uint8_t, 4>; // straight-alpha RGBA

inline constexpr Colour kRed{255, 0, 0, 255};
inline constexpr Colour kGreen{0, 255, 0, 255};
inline constexpr Colour kBlue{0, 0, 255, 255};
inline constexpr Colour kWhite{255, 255, 255, 255};

struct TestPicture {
    TestPicture(int width, int height, Colour colour = kWhite);
    explicit TestPicture(const platform::PixelStorage& pixels);
    explicit TestPicture(const platform::Image& image);

    [[nodiscard]] Colour& at(int x, int y);
    [[nodiscard]] const Colour& at(int x, int y) const;
    [[nodiscard]] platform::PixelStorage storage() const;
    friend bool operator==(const TestPicture&, const TestPicture&) = default;

    int widthPx;
    int heightPx;
    std::vector<Colour> pixels;
};

/// Size and first pixels, for the texts of failed expectations.
void PrintTo(const TestPicture& picture, std::ostream* out);

/// Red at the top left, green at the top right, blue at the bottom left, white at the bottom right.
[[nodiscard]] TestPicture quadrants(int widthPx, int heightPx);

/// Every channel at random; alpha 255 unless asked for.
enum class Alpha { Opaque, Random };
[[nodiscard]] TestPicture noise(int widthPx, int heightPx, std::uint32_t seed, Alpha alpha);

/// The largest difference of any channel; 256 where the sizes differ.
[[nodiscard]] int largestDifference(const TestPicture& one, const TestPicture& other);

/// An EXIF block, header included. `thumbnailOrientation` 0: no thumbnail directory.
enum class ByteOrder { Intel, Motorola };
[[nodiscard]] Bytes exifBlock(int orientation, ByteOrder order = ByteOrder::Intel,
                              int thumbnailOrientation = 0);

enum class JPEGColours { YCbCr, RGB, Grey, CMYK, YCCK };
enum class JPEGCoding { Baseline, Progressive, Arithmetic };

struct JPEGOptions {
    JPEGColours colours = JPEGColours::YCbCr;
    JPEGCoding coding = JPEGCoding::Baseline;
    int quality = 95;
    /// How much finer luma is sampled than the colours.
    int lumaAcross = 1;
    int lumaDown = 1;
    Bytes exif;
};
[[nodiscard]] Bytes jpegFile(const TestPicture& picture, const JPEGOptions& options = {});

/// `colourType` and `bitDepth` are PNG's numbers: 0 grey, 2 colour, 3 palette, 4 and 6 with alpha.
struct PNGOptions {
    int colourType = 6;
    int bitDepth = 8;
    bool isInterlaced = false;
    bool hasTransparency = false; ///< a tRNS chunk
    Bytes exif;                   ///< without its header, as PNG has it
    std::size_t textBytes = 0;    ///< of a zTXt chunk, unpacked
    std::uint32_t seed = 1;
};

struct PNGVariant {
    Bytes file;
    TestPicture expected;
};
/// A picture with random samples of that kind, and what it looks like in RGBA8.
[[nodiscard]] PNGVariant pngVariant(int widthPx, int heightPx, const PNGOptions& options);

/// The picture as 8-bit RGBA.
[[nodiscard]] Bytes pngFile(const TestPicture& picture, const PNGOptions& options = {});

/// A grey PNG of that size and one level, written row by row.
[[nodiscard]] Bytes flatGreyPNG(int widthPx, int heightPx, std::uint8_t level);

/// Makes the checksums of a mutated PNG right again, so that the damage gets past the first chunk.
void repairPNGChecksums(Bytes& file);

enum class WebPCoding { Lossless, Lossy };
struct WebPOptions {
    WebPCoding coding = WebPCoding::Lossless;
    float quality = 90;
    Bytes exif;
};
[[nodiscard]] Bytes webpFile(const TestPicture& picture, const WebPOptions& options = {});

/// An animation of one frame.
[[nodiscard]] Bytes animatedWebPFile(const TestPicture& picture);

} // namespace tests
