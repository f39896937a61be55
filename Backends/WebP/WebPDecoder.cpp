#include "Backends/WebP/WebPDecoder.h"

#include "Backends/EXIF/ExifOrientation.h"
#include "Platform/Imaging/PictureScaler.h"

#include <webp/decode.h>
#include <webp/demux.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace platform {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kFileHeaderBytes = 12; // "RIFF", the size of the rest, "WEBP"

struct DemuxerCloser {
    void operator()(::WebPDemuxer* demuxer) const { WebPDemuxDelete(demuxer); }
};

bool hasText(Bytes encoded, std::size_t at, std::string_view text) {
    return encoded.size() >= at + text.size() &&
           std::equal(text.begin(), text.end(), encoded.begin() + static_cast<std::ptrdiff_t>(at));
}

Error errorOf(VP8StatusCode status, std::size_t fileBytes) {
    switch (status) {
    case VP8_STATUS_NOT_ENOUGH_DATA:
    case VP8_STATUS_SUSPENDED:
        return refusalOfCutFile(fileBytes);
    case VP8_STATUS_OUT_OF_MEMORY:
        return {ErrorCode::TooLarge, "too large for the memory"};
    case VP8_STATUS_UNSUPPORTED_FEATURE:
        return {ErrorCode::Unsupported, "of a kind that is not shown"};
    default:
        return {ErrorCode::Corrupt, "damaged"};
    }
}

std::optional<Error> refusalOfPicture(const WebPBitstreamFeatures& features, SizePx target,
                                      const DecodeLimits& limits) {
    if (features.has_animation != 0)
        return Error{ErrorCode::Unsupported, "animated, which is not shown; save one frame of it"};
    constexpr int lossless = 2;
    const SizePx held{features.width, features.height};
    return refusalOfSize(features.format == lossless ? held : target, limits);
}

int orientationOf(Bytes encoded) {
    const WebPData file{encoded.data(), encoded.size()};
    const std::unique_ptr<::WebPDemuxer, DemuxerCloser> demuxer(WebPDemux(&file));
    WebPChunkIterator chunk{};
    if (!demuxer || WebPDemuxGetChunk(demuxer.get(), "EXIF", 1, &chunk) == 0)
        return 1;
    // The chunk points into the file, so it stays valid after the iterator is released.
    WebPDemuxReleaseChunkIterator(&chunk);
    return exifOrientation({chunk.chunk.bytes, chunk.chunk.size});
}

VP8StatusCode decodeInto(PixelStorage& pixels, WebPDecoderConfig& config, Bytes encoded) {
    const bool smaller =
        pixels.widthPx != config.input.width || pixels.heightPx != config.input.height;
    config.options.use_scaling = smaller ? 1 : 0;
    config.options.scaled_width = pixels.widthPx;
    config.options.scaled_height = pixels.heightPx;
    config.output.colorspace = MODE_RGBA;
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = pixels.bytes.get();
    config.output.u.RGBA.stride = static_cast<int>(pixels.rowBytes());
    config.output.u.RGBA.size = pixels.size();
    return WebPDecode(encoded.data(), encoded.size(), &config);
}

} // namespace

bool WebPDecoder::sniff(Bytes encoded) const {
    return encoded.size() >= kFileHeaderBytes && hasText(encoded, 0, "RIFF") &&
           hasText(encoded, 8, "WEBP");
}

Result<DecodedPicture> WebPDecoder::decode(Bytes encoded, const DecodeLimits& limits) const {
    WebPDecoderConfig config;
    if (WebPInitDecoderConfig(&config) == 0)
        return Error{ErrorCode::Unavailable, "not decodable (another version of the library)"};
    if (const auto status = WebPGetFeatures(encoded.data(), encoded.size(), &config.input);
        status != VP8_STATUS_OK)
        return errorOf(status, encoded.size());

    const SizePx source{config.input.width, config.input.height};
    const SizePx target = targetSizeToFit(source, limits.maxSidePx);
    if (auto refusal = refusalOfPicture(config.input, target, limits))
        return *std::move(refusal);
    PixelStorage pixels(target.width, target.height);
    if (const auto status = decodeInto(pixels, config, encoded); status != VP8_STATUS_OK)
        return errorOf(status, encoded.size());
    return uprightPicture(std::move(pixels), source, orientationOf(encoded));
}

} // namespace platform
