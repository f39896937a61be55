#pragma once

#include "Platform/Imaging/ImageDecoder.h"

namespace platform {

/// Decodes PNG: every colour type, depth and interlacing. 16-bit samples are rounded to 8 bits;
/// colour profiles and gamma are ignored.
///
/// An image larger than `limits.maxSidePx` is scaled down row by row while it is decoded, so that
/// only the scaled image is held in memory. An interlaced image is held whole first, which
/// `limits.maxBytes` must allow.
class PNGDecoder final : public ImageDecoder {
public:
    [[nodiscard]] std::string_view name() const override { return "PNG"; }
    [[nodiscard]] bool sniff(std::span<const std::uint8_t> encoded) const override;
    [[nodiscard]] Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                const DecodeLimits& limits) const override;
};

} // namespace platform
