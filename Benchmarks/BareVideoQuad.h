#pragma once

#include "Benchmarks/BareProgram.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <array>
#include <cstdint>

/// The cheapest way to show a video frame: two uploads into existing storage, one quad, two samples
/// per pixel with colour conversion, no clear.
///
/// The GL context must be current.
class BareVideoQuad {
public:
    /// All frames must have this size.
    explicit BareVideoQuad(platform::SizePx frameSize);
    ~BareVideoQuad();
    BareVideoQuad(const BareVideoQuad&) = delete;
    BareVideoQuad& operator=(const BareVideoQuad&) = delete;

    /// The frame's rows must have no padding.
    void upload(const platform::PixelBuffer& frame) const;
    /// Fills the bound framebuffer with a rectangle of the frame: left, top, right, bottom, from 0
    /// to 1.
    void draw(const std::array<float, 4>& part) const;

private:
    platform::SizePx size_;
    BareProgram program_;
    std::uint32_t corners_ = 0;
    std::array<std::uint32_t, 2> textures_{};
};
