#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"

#include "Platform/Foundation/Base64.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <algorithm>
#include <cstdint>
#include <utility>

/// Built in from Resources/watermark.png.
extern const std::string_view watermarkStr;

platform::ImagePtr decodeWatermark(std::string_view base64) {
    const auto encoded = platform::decodeBase64(base64);
    if (!encoded)
        return nullptr;
    // Not the limits that a host sets for its own pictures: the loader fits it to the context.
    auto picture = platform::decodePicture(*encoded, {});
    if (!picture)
        return nullptr;
    return std::make_shared<platform::Image>(std::move(picture.value().pixels));
}

platform::ImagePtr decodeBuiltInWatermark() {
    return decodeWatermark(watermarkStr);
}

void markQuadsAround(QuadMask& mask, platform::SizePx size, int x, int y) {
    for (const int column : {x - 1, x + 1}) {
        for (const int row : {y - 1, y + 1}) {
            const int across = std::clamp(column, 0, size.width - 1);
            // The picture's first row is the zenith, the mesh's first ring the nadir.
            const int upward = size.height - 1 - std::clamp(row, 0, size.height - 1);
            mask.ring(upward * QuadMask::kRings / size.height)
                .set(across * RingMask::kSegments / size.width);
        }
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

const Watermark* builtInWatermark() {
    static const std::unique_ptr<Watermark> watermark = [] {
        platform::ImagePtr picture = decodeBuiltInWatermark();
        if (!picture)
            return std::unique_ptr<Watermark>();
        const QuadMask coverage = opaqueQuads(*picture);
        return std::make_unique<Watermark>(Watermark{std::move(picture), coverage});
    }();
    return watermark.get();
}

void requestBuiltInWatermark(std::function<void(const Watermark*)> completion) {
    platform::DispatchQueue::background().async([completion = std::move(completion),
                                                 work = platform::MainQueue::main().beginWork()] {
        const Watermark* watermark = builtInWatermark();
        platform::MainQueue::main().async([completion, watermark, work] { completion(watermark); });
    });
}
