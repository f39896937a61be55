#pragma once

#include "Platform/Foundation/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

/// What the markers of a JPEG file say, read without decoding anything: the library tells neither
/// what a file will cost before it is decoded nor, once it has met other damage, that it was cut.
struct JPEGStructure {
    /// The frame marker's second byte, 0xC0 for baseline; 0 when there is no frame.
    std::uint8_t process = 0;
    int bitsPerSample = 0;
    int componentCount = 0;
    SizePx size;
    /// The smallest units of compressed data; each takes a bit at least unless coded
    /// arithmetically.
    std::uint64_t unitCount = 0;
    /// What the library needs to hold all coefficients at once.
    std::uint64_t coefficientBytes = 0;
    /// Whether it does hold them all, because a scan carries only a part of each.
    bool hasPartialScans = false;
    std::uint64_t compressedBytes = 0;
    bool hasEndMarker = false;
    /// The EXIF block, header included; empty when there is none.
    std::span<const std::uint8_t> exif;
};

/// Never reads outside `encoded`; stops at the end marker or where the file makes no sense.
///
/// Owner:  `exif` points into `encoded`.
[[nodiscard]] JPEGStructure readJPEGStructure(std::span<const std::uint8_t> encoded);

} // namespace platform
