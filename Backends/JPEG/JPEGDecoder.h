#pragma once

#include "Platform/Imaging/ImageDecoder.h"

namespace platform {

/// JPEG: baseline, extended and progressive, grey or three colours, 8 bits a sample.
///
/// A picture over `limits.maxSidePx` is decoded at the largest eighth that fits, which also makes
/// it cheaper to decode. A file without its end marker counts as cut short even where all of its
/// pixels may be there.
class JPEGDecoder final : public ImageDecoder {
public:
    [[nodiscard]] std::string_view name() const override { return "JPEG"; }
    [[nodiscard]] bool sniff(std::span<const std::uint8_t> encoded) const override;
    [[nodiscard]] Result<DecodedPicture> decode(std::span<const std::uint8_t> encoded,
                                                const DecodeLimits& limits) const override;
};

} // namespace platform
