#pragma once

#include "Platform/Imaging/ImageDecoder.h"

namespace platform {

/// WebP: one still picture, lossy or lossless, with or without alpha.
///
/// A picture over `limits.maxSidePx` is reduced by the library while it decodes.
class WebPDecoder final : public ImageDecoder {
public:
    [[nodiscard]] std::string_view name() const override { return "WebP"; }
    [[nodiscard]] bool sniff(std::span<const std::uint8_t> encoded) const override;
    [[nodiscard]] Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                const DecodeLimits& limits) const override;
};

} // namespace platform
