#pragma once

#include "Benchmarks/BareProgram.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <array>
#include <cstdint>

/// The cheapest way to show a frame of a video: two uploads into storage that is there, one quad,
/// two samples a pixel and the conversion, no clear.
///
/// The GL context is current.
class BareVideoQuad {
public:
    /// For frames of one size.
    explicit BareVideoQuad(platform::SizePx frameSize);
    ~BareVideoQuad();
    BareVideoQuad(const BareVideoQuad&) = delete;
    BareVideoQuad& operator=(const BareVideoQuad&) = delete;

    /// Takes a frame without padding between its rows.
    void upload(const platform::PixelBuffer& frame) const;
    /// Fills what is bound with a rectangle of the frame: left, top, right, bottom from 0 to 1.
    void draw(const std::array<float, 4>& part) const;

private:
    platform::SizePx size_;
    BareProgram program_;
    std::uint32_t corners_ = 0;
    std::array<std::uint32_t, 2> textures_{};
};
