#pragma once

#include "Platform/Imaging/ImageDecoder.h"

namespace platform {

/// PNG: every colour type, depth and interlacing; 16 bits are rounded to 8, colour profiles and
/// gamma are left alone.
///
/// A picture over `limits.maxSidePx` is reduced row by row as it is decoded, in memory for the
/// reduced picture; an interlaced one is held whole first, which `limits.maxBytes` must allow.
class PNGDecoder final : public ImageDecoder {
public:
    [[nodiscard]] std::string_view name() const override { return "PNG"; }
    [[nodiscard]] bool sniff(std::span<const std::uint8_t> encoded) const override;
    [[nodiscard]] Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                const DecodeLimits& limits) const override;
};

} // namespace platform
