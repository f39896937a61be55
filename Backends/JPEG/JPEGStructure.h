#pragma once

#include "Platform/Foundation/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

/// What the markers of a JPEG file say, read without decoding. libjpeg-turbo does not report what
/// decoding a file will cost, nor that a file is truncated if it has met other damage before.
struct JPEGStructure {
    /// The second byte of the frame marker, 0xC0 for baseline; 0 if there is no frame.
    std::uint8_t process = 0;
    int bitsPerSample = 0;
    int componentCount = 0;
    SizePx size;
    /// The number of MCUs, the smallest units of compressed data. Each takes at least one bit,
    /// except with arithmetic coding.
    std::uint64_t unitCount = 0;
    /// The memory that libjpeg-turbo needs to hold all coefficients at once.
    std::uint64_t coefficientBytes = 0;
    /// Whether libjpeg-turbo holds them all at once, because a scan carries only a part of them.
    bool hasPartialScans = false;
    std::uint64_t compressedBytes = 0;
    bool hasEndMarker = false;
    /// The EXIF block, header included; empty if there is none.
    std::span<const std::uint8_t> exif;
};

/// Never reads outside of `encoded`. Stops at the end marker or at the first invalid segment.
///
/// Owner:  `exif` points into `encoded`.
[[nodiscard]] JPEGStructure readJPEGStructure(std::span<const std::uint8_t> encoded);

} // namespace platform
