#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"

#include "Platform/Foundation/Base64.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <utility>

/// Built in from Resources/watermark.png.
extern const std::string_view watermarkStr;

platform::ImagePtr decodeWatermark(std::string_view base64) {
    const auto encoded = platform::decodeBase64(base64);
    if (!encoded)
        return nullptr;
    // The context's limit counts, but not the one that a host sets for its own pictures.
    platform::DecodeLimits limits;
    limits.maxSidePx = platform::Image::decodeLimits().maxSidePx;
    auto picture = platform::decodePicture(*encoded, limits);
    if (!picture)
        return nullptr;
    return std::make_shared<platform::Image>(std::move(picture.value().pixels));
}

platform::ImagePtr watermarkPicture() {
    static const platform::ImagePtr picture = decodeWatermark(watermarkStr);
    return picture;
}
