#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/PictureScaler.h"

#include <png.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace platform {

/// One reading of a PNG file, in the order of the functions below; false means that `error` says
/// why, and that nothing but the destructor may follow.
///
/// The library leaves its functions by a long jump. So every function here that calls it lands the
/// jump itself and holds no object with a destructor meanwhile; what needs one is a member or the
/// caller's.
///
/// Owner:  `encoded` must outlive the reader.
/// Thread: any, one at a time for each reader.
class PNGReader {
public:
    explicit PNGReader(std::span<const std::uint8_t> encoded);
    ~PNGReader();
    PNGReader(const PNGReader&) = delete;
    PNGReader& operator=(const PNGReader&) = delete;

    /// Up to the pixels; `size` and `isInterlaced` are known from then on.
    [[nodiscard]] bool readHeader();
    /// The whole picture, of the header's size.
    [[nodiscard]] bool readPixels(PixelStorage& pixels);
    /// The whole picture into a scaler that takes the header's size; not if interlaced.
    [[nodiscard]] bool readPixels(PictureScaler& scaler);
    /// What follows the pixels; `exif` is complete from then on.
    [[nodiscard]] bool readEnd();

    [[nodiscard]] SizePx size() const { return size_; }
    [[nodiscard]] bool isInterlaced() const { return isInterlaced_; }
    [[nodiscard]] std::span<const std::uint8_t> exif() const;
    [[nodiscard]] Error error() const;

private:
    static void onRead(png_structp png, png_bytep out, std::size_t count);
    static void onError(png_structp png, png_const_charp text);
    static void onWarning(png_structp png, png_const_charp text);

    void skipUnusedChunks();
    void convertToRGBA();
    void readRow(std::uint8_t* row);

    std::span<const std::uint8_t> encoded_;
    std::size_t position_ = 0;
    bool isCutShort_ = false;
    std::array<char, 128> message_{};
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    SizePx size_;
    bool isInterlaced_ = false;
    std::vector<std::uint8_t> row_; // on its way to the scaler
};

} // namespace platform
