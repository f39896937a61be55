#include "Backends/JPEG/JPEGDecoder.h"

#include "Backends/EXIF/ExifOrientation.h"
#include "Backends/JPEG/JPEGStructure.h"
#include "Platform/Imaging/PictureScaler.h"

#include <turbojpeg.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {
namespace {

using Bytes = std::span<const std::uint8_t>;

/// The limit of libjpeg-turbo; the format allows slightly more.
constexpr int kMostSidePx = 65'500;

struct HandleCloser {
    void operator()(tjhandle handle) const { tjDestroy(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

Error damaged(tjhandle handle) {
    return {ErrorCode::Corrupt, std::string("damaged (") + tjGetErrorStr2(handle) + ")"};
}

std::string sizeText(SizePx size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height) + " pixels";
}

int longestSide(SizePx size) {
    return std::max(size.width, size.height);
}

std::optional<Error> refusalOfVariant(const JPEGStructure& file) {
    const bool isKnownProcess = file.process == 0xC0 || file.process == 0xC1 ||
                                file.process == 0xC2 || file.process == 0xC9 ||
                                file.process == 0xCA;
    if (!isKnownProcess)
        return Error{ErrorCode::Unsupported,
                     "of a lossless or hierarchical kind, which is not shown"};
    if (file.bitsPerSample != 8) {
        return Error{ErrorCode::Unsupported, "with " + std::to_string(file.bitsPerSample) +
                                                 " bits a sample, which is not shown"};
    }
    if (file.componentCount == 4)
        return Error{ErrorCode::Unsupported,
                     "in CMYK colours, which are not shown; convert it to RGB"};
    if (file.componentCount != 1 && file.componentCount != 3) {
        return Error{ErrorCode::Unsupported, "with " + std::to_string(file.componentCount) +
                                                 " colour components, which is not shown"};
    }
    if (longestSide(file.size) > kMostSidePx)
        return Error{ErrorCode::TooLarge, "too large (" + sizeText(file.size) + ")"};
    return std::nullopt;
}

/// Detects a file that ends early. A few bytes that declare a huge image would otherwise keep
/// libjpeg-turbo busy filling it with grey.
bool isCutShort(const JPEGStructure& file) {
    const bool isArithmetic = file.process >= 0xC9;
    return !file.hasEndMarker || (!isArithmetic && 8 * file.compressedBytes < file.unitCount);
}

std::optional<Error> refusalOfFile(const JPEGStructure& file, std::size_t fileBytes) {
    if (file.process != 0) {
        if (auto refusal = refusalOfVariant(file))
            return refusal;
    }
    if (isCutShort(file))
        return refusalOfCutFile(fileBytes);
    if (file.process == 0 || file.size.width == 0 || file.size.height == 0)
        return Error{ErrorCode::Corrupt, "damaged (it holds no picture)"};
    return std::nullopt;
}

std::optional<Error> refusalOfCoefficients(const JPEGStructure& file, const DecodeLimits& limits) {
    if (!file.hasPartialScans || file.coefficientBytes / 2 <= limits.maxBytes)
        return std::nullopt;
    return Error{ErrorCode::TooLarge, "too large to decode progressively (" + sizeText(file.size) +
                                          " take " + std::to_string(file.coefficientBytes) +
                                          " bytes, the limit is twice " +
                                          std::to_string(limits.maxBytes) + ")"};
}

/// Returns the largest of libjpeg-turbo's scaled sizes that fits, at most the file's own size; if
/// none fits, its smallest one.
SizePx decodedSize(SizePx size, int maxSidePx) {
    if (maxSidePx <= 0 || longestSide(size) <= maxSidePx)
        return size;
    int count = 0;
    const tjscalingfactor* factors = tjGetScalingFactors(&count);
    SizePx largestFit;
    SizePx smallest = size;
    for (const tjscalingfactor factor : std::span(factors, static_cast<std::size_t>(count))) {
        const SizePx scaled{TJSCALED(size.width, factor), TJSCALED(size.height, factor)};
        if (longestSide(scaled) < longestSide(smallest))
            smallest = scaled;
        if (longestSide(scaled) <= maxSidePx && longestSide(scaled) > longestSide(largestFit))
            largestFit = scaled;
    }
    return longestSide(largestFit) > 0 ? largestFit : smallest;
}

/// libjpeg-turbo parses the header itself. If its size differed from ours, it would leave part of
/// the buffer unwritten.
bool agreesOnSize(tjhandle handle, Bytes encoded, SizePx size) {
    SizePx read;
    int sampling = 0;
    int colours = 0;
    // The status is useless here: the function rejects rare chroma subsamplings that decode without
    // a problem.
    (void)tjDecompressHeader3(handle, encoded.data(), encoded.size(), &read.width, &read.height,
                              &sampling, &colours);
    return read == size;
}

enum class Outcome { Whole, Damaged, Failed };

/// After a first warning, libjpeg-turbo also reports a failure as a warning and leaves the
/// remaining pixels unwritten. So the alpha of the last pixel row tells whether decoding finished:
/// it is 0 before and 255 once the row has been written.
Outcome decompress(tjhandle handle, Bytes encoded, PixelStorage& pixels) {
    std::uint8_t& lastAlpha = pixels.row(pixels.heightPx - 1)[3];
    lastAlpha = 0;
    const int status =
        tjDecompress2(handle, encoded.data(), encoded.size(), pixels.bytes.get(), pixels.widthPx, 0,
                      pixels.heightPx, TJPF_RGBA, TJFLAG_LIMITSCANS);
    if (status == 0)
        return Outcome::Whole;
    const bool isWarning = tjGetErrorCode(handle) == TJERR_WARNING;
    return isWarning && lastAlpha == 255 ? Outcome::Damaged : Outcome::Failed;
}

Result<DecodedPicture> decodeChecked(const JPEGStructure& file, Bytes encoded, SizePx decoded,
                                     const DecodeLimits& limits) {
    const Handle handle(tjInitDecompress());
    if (!handle)
        return Error{ErrorCode::Unavailable, "not decodable (no memory)"};
    if (!agreesOnSize(handle.get(), encoded, file.size))
        return damaged(handle.get());

    PixelStorage pixels(decoded.width, decoded.height);
    const Outcome outcome = decompress(handle.get(), encoded, pixels);
    if (outcome == Outcome::Failed)
        return damaged(handle.get());

    if (const SizePx target = targetSizeToFit(decoded, limits.maxSidePx); target != decoded)
        pixels = scaledDown(pixels, target);
    DecodedPicture picture =
        uprightPicture(std::move(pixels), file.size, exifOrientation(file.exif));
    if (outcome == Outcome::Damaged)
        picture.warning = tjGetErrorStr2(handle.get());
    return picture;
}

} // namespace

bool JPEGDecoder::sniff(Bytes encoded) const {
    return encoded.size() >= 3 && encoded[0] == 0xFF && encoded[1] == 0xD8 && encoded[2] == 0xFF;
}

Result<DecodedPicture> JPEGDecoder::decode(Bytes encoded, const DecodeLimits& limits) const {
    const JPEGStructure file = readJPEGStructure(encoded);
    if (auto refusal = refusalOfFile(file, encoded.size()))
        return *std::move(refusal);
    if (auto refusal = refusalOfCoefficients(file, limits))
        return *std::move(refusal);
    const SizePx decoded = decodedSize(file.size, limits.maxSidePx);
    if (auto refusal = refusalOfSize(decoded, limits))
        return *std::move(refusal);
    return decodeChecked(file, encoded, decoded, limits);
}

} // namespace platform
