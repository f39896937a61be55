#include "Platform/Imaging/ImageDecoder.h"

#include "Platform/Imaging/PictureOrientation.h"

#include <new>
#include <utility>

namespace platform {
namespace {

/// "JPEG, PNG or WebP", in the order of the table.
std::string knownFormats() {
    const auto decoders = imageDecoders();
    std::string names;
    for (std::size_t i = 0; i < decoders.size(); ++i) {
        if (i > 0)
            names += i + 1 == decoders.size() ? " or " : ", ";
        names += decoders[i]->name();
    }
    return names;
}

Result<DecodedPicture> decodeWith(const ImageDecoder& decoder,
                                  std::span<const std::uint8_t> encoded,
                                  const DecodeLimits& limits) try {
    Result<DecodedPicture> picture = decoder.decode(encoded, limits);
    if (picture)
        return picture;
    const Error& error = picture.error();
    return Error{error.code, std::string(decoder.name()) + " " + error.detail};
} catch (const std::bad_alloc&) {
    return Error{ErrorCode::TooLarge, std::string(decoder.name()) + " too large for the memory"};
}

} // namespace

Result<DecodedPicture> decodePicture(std::span<const std::uint8_t> encoded,
                                     const DecodeLimits& limits) {
    if (encoded.empty())
        return Error{ErrorCode::Corrupt, "it is empty"};
    for (const ImageDecoder* decoder : imageDecoders()) {
        if (decoder->sniff(encoded))
            return decodeWith(*decoder, encoded, limits);
    }
    return Error{ErrorCode::Unsupported, "not a " + knownFormats() + " picture"};
}

std::optional<Error> refusalOfSize(SizePx size, const DecodeLimits& limits) {
    // The product of two ints and 4 still fits into 64 bits.
    const std::uint64_t bytes =
        std::uint64_t{4} * static_cast<unsigned>(size.width) * static_cast<unsigned>(size.height);
    if (bytes <= limits.maxBytes)
        return std::nullopt;
    return Error{ErrorCode::TooLarge, "too large (" + std::to_string(size.width) + " x " +
                                          std::to_string(size.height) + " pixels take " +
                                          std::to_string(bytes) + " bytes, the limit is " +
                                          std::to_string(limits.maxBytes) + ")"};
}

Error refusalOfCutFile(std::size_t fileBytes) {
    return {ErrorCode::Corrupt,
            "cut short (" + std::to_string(fileBytes) + " bytes are not all of it)"};
}

DecodedPicture uprightPicture(PixelStorage stored, SizePx source, int orientation) {
    if (swapsSides(orientation))
        std::swap(source.width, source.height);
    return {turnedUpright(std::move(stored), orientation), source.width, source.height, {}};
}

} // namespace platform
