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

/// A picture as a decoder hands it over, upright, with the size that the file declares.
struct DecodedPicture {
    PixelStorage pixels;
    /// The upright size of the picture in the file, before any scaling down.
    int sourceWidthPx = 0;
    int sourceHeightPx = 0;
    /// Empty, or one sentence about damage that left the picture usable.
    std::string warning;
};

/// Decodes one still-picture format to straight-alpha RGBA8, EXIF orientation applied.
///
/// Owner:  decoders live as long as the program; `encoded` is read only during a call.
/// Thread: any, reentrant.
/// Errors: Unsupported (a variant that is not shown, such as CMYK), Corrupt (cut short, damaged),
///         TooLarge (over `limits.maxBytes` even when scaled down to `limits.maxSidePx`).
class ImageDecoder {
public:
    virtual ~ImageDecoder() = default;

    /// The format's usual name, for messages: "JPEG".
    [[nodiscard]] virtual std::string_view name() const = 0;

    /// Whether the first bytes are this format's.
    [[nodiscard]] virtual bool sniff(std::span<const std::uint8_t> encoded) const = 0;

    /// A failure's detail reads on from the format's name: "cut short (…)".
    [[nodiscard]] virtual Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                        const DecodeLimits& limits) const = 0;
};

/// Every decoder that this build has, in the order in which they are asked. The definition is the
/// backends', chosen by linking.
[[nodiscard]] std::span<const ImageDecoder* const> imageDecoders();

/// Asks the decoders in turn.
///
/// Errors: Corrupt (no bytes at all), Unsupported (no decoder knows the first bytes), and those of
///         `ImageDecoder::decode`; the detail begins with the format's name where one is known.
///         A machine out of memory is TooLarge.
[[nodiscard]] Result<DecodedPicture> decodePicture(std::span<const std::uint8_t> encoded,
                                                   const DecodeLimits& limits);

/// For decoders: the refusal of an RGBA buffer over `limits.maxBytes`, to be asked for before it is
/// allocated; nothing when the buffer may be had.
[[nodiscard]] std::optional<Error> refusalOfSize(SizePx size, const DecodeLimits& limits);

/// For decoders: the refusal of a file of that many bytes which ends too early.
[[nodiscard]] Error refusalOfCutFile(std::size_t fileBytes);

/// For decoders: turns pixels as the file stores them upright, and the file's size with them.
[[nodiscard]] DecodedPicture uprightPicture(PixelStorage stored, SizePx source, int orientation);

} // namespace platform
