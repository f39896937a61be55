#pragma once

#include "Platform/Imaging/ImageDecoder.h"

namespace platform {

/// Decodes JPEG: baseline, extended and progressive, grey or three colour components, 8 bits per
/// sample.
///
/// An image larger than `limits.maxSidePx` is decoded at the largest multiple of 1/8 that fits,
/// which also makes decoding cheaper. A file without an end marker counts as truncated even if all
/// of its pixels may be present.
class JPEGDecoder final : public ImageDecoder {
public:
    [[nodiscard]] std::string_view name() const override { return "JPEG"; }
    [[nodiscard]] bool sniff(std::span<const std::uint8_t> encoded) const override;
    [[nodiscard]] Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                const DecodeLimits& limits) const override;
};

} // namespace platform
