#pragma once

#include "Platform/Imaging/ImageDecoder.h"

namespace platform {

/// Decodes WebP: one still image, lossy or lossless, with or without alpha.
///
/// libwebp scales an image larger than `limits.maxSidePx` down while it decodes.
class WebPDecoder final : public ImageDecoder {
public:
    [[nodiscard]] std::string_view name() const override { return "WebP"; }
    [[nodiscard]] bool sniff(std::span<const std::uint8_t> encoded) const override;
    [[nodiscard]] Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                const DecodeLimits& limits) const override;
};

} // namespace platform
