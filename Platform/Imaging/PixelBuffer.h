#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"

#include <array>
#include <cstdint>
#include <memory>

namespace platform {

/// One frame of a video, bi-planar 4:2:0 in video range: a luma plane, and a plane of interleaved
/// Cb and Cr at half the size. It refers to the decoder's output without a copy where that is
/// possible.
///
/// Shape:  rows from the top; a row may have padding at its end.
/// Owner:  shared by its holders; it is immutable once it has been passed on.
/// Thread: any; thread-safe.
class ZANTO_EXPORT PixelBuffer {
public:
    /// The four-character code '420v'.
    static constexpr std::uint32_t kBiPlanarVideoRange = 0x34323076;

    struct Plane {
        const std::uint8_t* bytes = nullptr;
        int strideBytes = 0;
    };

    /// Wraps pixels that another object owns. `memory` keeps them alive, and is released with the
    /// last reference, on whichever thread that is.
    ///
    /// Shape:  plane 0 has `size.height` rows of `size.width` bytes; plane 1 has half as many rows,
    ///         rounded up, of as many bytes, rounded up to an even number.
    [[nodiscard]] static std::shared_ptr<const PixelBuffer>
    wrap(SizePx size, Plane luma, Plane chroma, std::shared_ptr<const void> memory);

    [[nodiscard]] SizePx size() const { return size_; }
    /// `index`: 0 luma, 1 chroma.
    [[nodiscard]] const Plane& plane(int index) const {
        return planes_.at(static_cast<std::size_t>(index));
    }
    /// Identifies the buffer among all buffers of the process, including those that are destroyed.
    [[nodiscard]] std::uint64_t identity() const { return identity_; }

private:
    PixelBuffer(SizePx size, std::array<Plane, 2> planes, std::shared_ptr<const void> memory);
    SizePx size_;
    std::array<Plane, 2> planes_;
    std::shared_ptr<const void> memory_;
    std::uint64_t identity_;
};

using PixelBufferPtr = std::shared_ptr<const PixelBuffer>;

} // namespace platform
