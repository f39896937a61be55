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

/// Reads one PNG file. Call the functions in the order below. If one returns false, `error` gives
/// the reason, and no other function but the destructor may be called.
///
/// libpng reports errors by longjmp. So every function that calls libpng has its own setjmp and
/// holds no local object with a destructor meanwhile; such objects are members or belong to the
/// caller.
///
/// Owner:  `encoded` must outlive the reader.
/// Thread: any; not thread-safe, one thread at a time.
class PNGReader {
public:
    explicit PNGReader(std::span<const std::uint8_t> encoded);
    ~PNGReader();
    PNGReader(const PNGReader&) = delete;
    PNGReader& operator=(const PNGReader&) = delete;

    /// Reads up to the pixels; `size` and `isInterlaced` are valid afterwards.
    [[nodiscard]] bool readHeader();
    /// Reads the whole image; `pixels` must have the size in the header.
    [[nodiscard]] bool readPixels(PixelStorage& pixels);
    /// Reads the whole image into a scaler whose source has the size in the header. Not for
    /// interlaced images.
    [[nodiscard]] bool readPixels(PictureScaler& scaler);
    /// Reads what follows the pixels; `exif` is complete afterwards.
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
    std::vector<std::uint8_t> row_; // buffer for the scaler's input
};

} // namespace platform
