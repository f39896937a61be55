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

/// The limits of the decoders.
struct DecodeLimits {
    /// The longest side in pixels; a larger image is scaled down to fit. 0: no limit.
    int maxSidePx = 0;
    /// The size of the decoded image in bytes, after scaling; a larger image is refused. The limit
    /// also applies to any RGBA buffer that a format needs in between (an interlaced PNG or a
    /// lossless WebP is held whole before it is scaled); the coefficients of a progressive JPEG may
    /// take twice as much.
    std::size_t maxBytes = std::size_t{1} << 30;
};

/// Pixels that are being filled in. They are not initialised: a decoder writes every byte, and
/// zeroing 128 MiB first would add half of the decoding time to a large panorama.
struct PixelStorage {
    PixelStorage() = default;
    PixelStorage(int widthPx, int heightPx);

    [[nodiscard]] std::size_t rowBytes() const { return static_cast<std::size_t>(widthPx) * 4; }
    [[nodiscard]] std::size_t size() const {
        return rowBytes() * static_cast<std::size_t>(heightPx);
    }
    // NOLINTNEXTLINE(readability-make-member-function-const): the pixels belong to it.
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

/// Decodes an image again; `nullopt` and a log line when that is not possible any longer.
using PixelSource = std::function<std::optional<PixelStorage>()>;

/// One still image, straight-alpha RGBA8. It is immutable.
///
/// Its pixels may be freed while they are not needed, for instance because a texture holds a copy.
/// They are decoded from their source again on demand.
///
/// Shape:  `heightPx` rows from the top, `4 * widthPx` bytes each, no padding.
/// Units:  pixels, except `size()`, which is in points (pixels / `scale`).
/// Owner:  the image owns its pixels; it is shared and never copied.
/// Thread: main, except an image without a source, which is any; thread-safe, because it keeps its
///         pixels.
class ZANTO_EXPORT Image {
public:
    explicit Image(PixelStorage pixels, double scale = 1.0);
    /// `source` decodes the same pixels again.
    Image(PixelStorage pixels, PixelSource source);

    /// Reads and decodes a file, within `decodeLimits()`.
    ///
    /// Errors: null, and one log line that names the file and the cause.
    [[nodiscard]] static ImagePtr imageWithContentsOfFile(const std::string& path);

    /// Decodes an image in memory, within `decodeLimits()`.
    ///
    /// Errors: null, and one log line that names the cause.
    [[nodiscard]] static ImagePtr imageWithData(std::span<const std::uint8_t> encoded);

    /// The environment's limits for the two functions above. The host lowers `maxSidePx` to the
    /// limit of its GL context; an application may change either limit.
    ///
    /// Thread: main, also for the two functions; other threads call `decodePicture`.
    [[nodiscard]] static DecodeLimits decodeLimits();
    static void setDecodeLimits(DecodeLimits limits);

    [[nodiscard]] int widthPx() const { return size_.width; }
    [[nodiscard]] int heightPx() const { return size_.height; }
    [[nodiscard]] double scale() const { return scale_; }
    [[nodiscard]] Size size() const { return {widthPx() / scale_, heightPx() / scale_}; }

    /// All bytes; they stay in place until `giveBackPixels()`. Pixels that have been freed are
    /// decoded again; the result is empty if that fails.
    [[nodiscard]] std::span<const std::uint8_t> pixels() const;
    /// Frees the pixels if they can be decoded again.
    void giveBackPixels() const;

private:
    mutable PixelStorage pixels_;
    SizePx size_;
    double scale_ = 1.0;
    PixelSource source_;
};

} // namespace platform
