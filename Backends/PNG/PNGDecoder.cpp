#include "Backends/PNG/PNGDecoder.h"

#include "Backends/EXIF/ExifOrientation.h"
#include "Backends/PNG/PNGReader.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace platform {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kSignatureBytes = 8;

/// A variant of PNG that one vendor's build tools write: premultiplied BGRA without checksums.
/// libpng reports it as damaged.
bool isVendorVariant(Bytes encoded) {
    constexpr std::string_view chunk = "CgBI";
    constexpr std::size_t at = kSignatureBytes + 4;
    return encoded.size() >= at + chunk.size() &&
           std::equal(chunk.begin(), chunk.end(), encoded.begin() + at);
}

std::optional<Error> refusalOfPicture(const PNGReader& reader, SizePx target,
                                      const DecodeLimits& limits) {
    const SizePx size = reader.size();
    if (std::max(size.width, size.height) > PictureScaler::kMaxSourceSidePx) {
        return Error{ErrorCode::TooLarge,
                     "too large (" + std::to_string(size.width) + " x " +
                         std::to_string(size.height) + " pixels, no side may be over " +
                         std::to_string(PictureScaler::kMaxSourceSidePx) + ")"};
    }
    return refusalOfSize(reader.isInterlaced() ? size : target, limits);
}

/// The storage is empty if the reader failed.
PixelStorage pixelsOf(PNGReader& reader, SizePx target) {
    const SizePx size = reader.size();
    if (target != size && !reader.isInterlaced()) {
        PictureScaler scaler(size, target);
        return reader.readPixels(scaler) ? scaler.take() : PixelStorage();
    }
    PixelStorage pixels(size.width, size.height);
    if (!reader.readPixels(pixels))
        return {};
    return target == size ? std::move(pixels) : scaledDown(pixels, target);
}

} // namespace

bool PNGDecoder::sniff(Bytes encoded) const {
    constexpr std::uint8_t signature[kSignatureBytes] = {0x89, 'P',  'N',  'G',
                                                         '\r', '\n', 0x1A, '\n'};
    return encoded.size() >= kSignatureBytes &&
           std::equal(std::begin(signature), std::end(signature), encoded.begin());
}

Result<DecodedPicture> PNGDecoder::decode(Bytes encoded, const DecodeLimits& limits) const {
    if (isVendorVariant(encoded))
        return Error{ErrorCode::Unsupported, "of the CgBI kind, which is not shown"};
    PNGReader reader(encoded);
    if (!reader.readHeader())
        return reader.error();
    const SizePx target = targetSizeToFit(reader.size(), limits.maxSidePx);
    if (auto refusal = refusalOfPicture(reader, target, limits))
        return *std::move(refusal);
    PixelStorage pixels = pixelsOf(reader, target);
    if (pixels.bytes == nullptr || !reader.readEnd())
        return reader.error();
    return uprightPicture(std::move(pixels), reader.size(), exifOrientation(reader.exif()));
}

} // namespace platform
