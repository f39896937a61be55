#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform {

class Image;
using ImagePtr = std::shared_ptr<const Image>;

/// What the decoders may produce.
struct DecodeLimits {
    /// Longest side in pixels; a longer picture is decoded scaled down to fit. 0: no limit.
    int maxSidePx = 0;
    /// Bytes of the decoded picture after scaling; a picture over it is refused. It bounds as well
    /// any RGBA buffer that a format needs on the way (an interlaced PNG or a lossless WebP is
    /// held whole before it is scaled); the coefficients of a progressive JPEG may take twice it.
    std::size_t maxBytes = std::size_t{1} << 30;
};

/// Pixels that are still being filled in. Not initialised: a decoder writes every byte, and
/// zeroing 128 MiB first would cost a large panorama half as much time again as decoding it.
struct PixelStorage {
    PixelStorage() = default;
    PixelStorage(int widthPx, int heightPx);

    [[nodiscard]] std::size_t rowBytes() const { return static_cast<std::size_t>(widthPx) * 4; }
    [[nodiscard]] std::size_t size() const {
        return rowBytes() * static_cast<std::size_t>(heightPx);
    }
    // NOLINTNEXTLINE(readability-make-member-function-const): the pixels count as its own.
    [[nodiscard]] std::uint8_t* row(int y) {
        return bytes.get() + rowBytes() * static_cast<std::size_t>(y);
    }
    [[nodiscard]] const std::uint8_t* row(int y) const {
        return bytes.get() + rowBytes() * static_cast<std::size_t>(y);
    }

    int widthPx = 0;
    int heightPx = 0;
    std::unique_ptr<std::uint8_t[]> bytes;
};

/// Decodes a picture once more; nothing when that is not possible any longer, after a log line.
using PixelSource = std::function<std::optional<PixelStorage>()>;

/// One still picture, straight-alpha RGBA8, that never changes.
///
/// Its pixels may be given back while nobody needs them, a graphics card having a copy, and are
/// decoded again from where they came when somebody does.
///
/// Shape:  `heightPx` rows from the top, `4 * widthPx` bytes each, no padding.
/// Units:  pixels, but for `size()`, which is in points (pixels / `scale`).
/// Owner:  the image owns its pixels; it is shared and never copied.
/// Thread: any for a picture without a source, which never gives anything back; else main.
class ZANTO_EXPORT Image {
public:
    explicit Image(PixelStorage pixels, double scale = 1.0);
    /// `source` gives the same pixels once more.
    Image(PixelStorage pixels, PixelSource source);

    /// Reads and decodes a file, within the process's `decodeLimits()`.
    ///
    /// Errors: null, and one log line that names the file and the cause.
    [[nodiscard]] static ImagePtr imageWithContentsOfFile(const std::string& path);

    /// Decodes a picture held in memory, within the process's `decodeLimits()`.
    ///
    /// Errors: null, and one log line that names the cause.
    [[nodiscard]] static ImagePtr imageWithData(std::span<const std::uint8_t> encoded);

    /// The limits that the two calls above use. The host lowers `maxSidePx` to what its GL context
    /// can hold; an application may change either.
    ///
    /// Thread: main, and so are the two calls; other threads call `decodePicture`.
    [[nodiscard]] static DecodeLimits decodeLimits();
    static void setDecodeLimits(DecodeLimits limits);

    [[nodiscard]] int widthPx() const { return size_.width; }
    [[nodiscard]] int heightPx() const { return size_.height; }
    [[nodiscard]] double scale() const { return scale_; }
    [[nodiscard]] Size size() const { return {widthPx() / scale_, heightPx() / scale_}; }

    /// Every byte; they stay where they are until they are given back. Empty when they were given
    /// back and cannot be had again.
    [[nodiscard]] std::span<const std::uint8_t> pixels() const;
    /// Frees the pixels if they can be had again.
    void giveBackPixels() const;

private:
    mutable PixelStorage pixels_;
    SizePx size_;
    double scale_ = 1.0;
    PixelSource source_;
};

} // namespace platform
