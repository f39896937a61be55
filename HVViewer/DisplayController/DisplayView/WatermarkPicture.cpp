#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"

#include "HVViewer/DisplayController/DisplayView/WatermarkStore.h"
#include "Platform/Foundation/Base64.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <algorithm>
#include <cstdint>
#include <utility>

/// Generated at build time from Resources/watermark.png.
extern const std::string_view watermarkStr;

namespace {

std::string_view replacementText;

} // namespace

std::string_view watermarkText() {
    return replacementText.empty() ? watermarkStr : replacementText;
}

void setWatermarkText(std::string_view base64) {
    replacementText = base64;
}

platform::ImagePtr decodeWatermark(std::string_view base64, int maxSidePx) {
    const auto encoded = platform::decodeBase64(base64);
    if (!encoded)
        return nullptr;
    // The decode limits that a host sets for its own images do not apply here.
    auto picture = platform::decodePicture(*encoded, {.maxSidePx = maxSidePx});
    if (!picture)
        return nullptr;
    return std::make_shared<platform::Image>(std::move(picture.value().pixels));
}

platform::ImagePtr decodeBuiltInWatermark(int maxSidePx) {
    return decodeWatermark(watermarkText(), maxSidePx);
}

namespace {

/// Divides a side of `whole` texels into parts, and returns the first and the last part that a
/// range of texels overlaps.
std::pair<int, int> partsUnder(int firstTexel, int lastTexel, int whole, int parts) {
    const auto partOf = [&](int texel) { return std::clamp(texel, 0, whole - 1) * parts / whole; };
    // Uses the end of the last texel, because a texel that is wider than a quad covers several
    // quads.
    const int end = std::clamp(lastTexel + 1, 1, whole) * parts;
    return {partOf(firstTexel), (end - 1) / whole};
}

} // namespace

void markQuadsAround(QuadMask& mask, platform::SizePx size, int x, int y) {
    // Filtering spreads a texel over half of each neighbour. The other half allows for rounding.
    const auto [left, right] = partsUnder(x - 1, x + 1, size.width, RingMask::kSegments);
    // The first row of the image is the zenith, but the first ring of the mesh is the nadir.
    const int upward = size.height - 1 - y;
    const auto [lower, upper] = partsUnder(upward - 1, upward + 1, size.height, QuadMask::kRings);
    for (int ring = lower; ring <= upper; ++ring) {
        for (int segment = left; segment <= right; ++segment)
            mask.ring(ring).set(segment);
    }
}

QuadMask opaqueQuads(const platform::Image& picture) {
    QuadMask mask;
    const platform::SizePx size{picture.widthPx(), picture.heightPx()};
    const std::uint8_t* alpha = picture.pixels().data() + 3;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x, alpha += 4) {
            if (*alpha != 0)
                markQuadsAround(mask, size, x, y);
        }
    }
    return mask;
}

namespace {

const Watermark* keptWatermark(std::string_view text, int maxSidePx) {
    // Never destroyed: the worker may still use it while the process exits.
    static auto& store = *new WatermarkStore<Watermark>;
    const int side = std::min(maxSidePx, kWatermarkSidePx);
    return store.findOrMake(text, side, [&]() -> std::unique_ptr<Watermark> {
        platform::ImagePtr picture = decodeWatermark(text, side);
        if (!picture)
            return nullptr;
        const QuadMask coverage = opaqueQuads(*picture);
        return std::make_unique<Watermark>(Watermark{std::move(picture), coverage});
    });
}

} // namespace

const Watermark* builtInWatermark(int maxSidePx) {
    return keptWatermark(watermarkText(), maxSidePx);
}

void requestBuiltInWatermark(int maxSidePx, std::function<void(const Watermark*)> completion) {
    platform::DispatchQueue::background().async([completion = std::move(completion), maxSidePx,
                                                 text = watermarkText(),
                                                 work = platform::MainQueue::main().beginWork()] {
        const Watermark* watermark = keptWatermark(text, maxSidePx);
        platform::MainQueue::main().async([completion, watermark, work] { completion(watermark); });
    });
}
