#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/Image.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// A decoded image, upright, with the size that the file declares.
struct DecodedPicture {
    PixelStorage pixels;
    /// The upright size of the image in the file, before it was scaled down.
    int sourceWidthPx = 0;
    int sourceHeightPx = 0;
    /// Empty, or one sentence about damage that left the image usable.
    std::string warning;
};

/// Decodes one format of still images to straight-alpha RGBA8, with the EXIF orientation applied.
///
/// Owner:  decoders live as long as the program; `encoded` is read only during a call.
/// Thread: any; thread-safe.
/// Errors: Unsupported (a variant that cannot be shown, such as CMYK), Corrupt (truncated or
///         damaged), TooLarge (over `limits.maxBytes` even when scaled down to `limits.maxSidePx`).
class ImageDecoder {
public:
    virtual ~ImageDecoder() = default;

    /// The format's usual name, for messages: "JPEG".
    [[nodiscard]] virtual std::string_view name() const = 0;

    /// Whether the data begins with this format's signature.
    [[nodiscard]] virtual bool sniff(std::span<const std::uint8_t> encoded) const = 0;

    /// An error's detail is the predicate of a sentence about the format: "cut short (…)".
    [[nodiscard]] virtual Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                        const DecodeLimits& limits) const = 0;
};

/// All decoders of this build, in the order in which they are tried. The backend libraries define
/// this function.
[[nodiscard]] std::span<const ImageDecoder* const> imageDecoders();

/// Decodes an image with the first decoder that recognises its signature.
///
/// Errors: Corrupt (no bytes at all), Unsupported (no decoder recognises the signature), and those
///         of `ImageDecoder::decode`; the detail begins with the format's name where it is known.
///         TooLarge also means that memory ran out.
[[nodiscard]] Result<DecodedPicture> decodePicture(std::span<const std::uint8_t> encoded,
                                                   const DecodeLimits& limits);

/// For decoders: the error for an RGBA buffer over `limits.maxBytes`, to be checked before the
/// buffer is allocated; `nullopt` within the limit.
[[nodiscard]] std::optional<Error> refusalOfSize(SizePx size, const DecodeLimits& limits);

/// For decoders: the error for a truncated file of that many bytes.
[[nodiscard]] Error refusalOfCutFile(std::size_t fileBytes);

/// For decoders: makes stored pixels upright, and the size in the file with them.
[[nodiscard]] DecodedPicture uprightPicture(PixelStorage stored, SizePx source, int orientation);

} // namespace platform
