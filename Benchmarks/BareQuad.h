#pragma once

#include "Benchmarks/BareProgram.h"

#include <array>
#include <cstdint>

/// The cheapest way to fill a framebuffer from a texture: one quad, one sample per pixel, no clear.
///
/// The GL context must be current.
class BareQuad {
public:
    BareQuad();
    ~BareQuad();
    BareQuad(const BareQuad&) = delete;
    BareQuad& operator=(const BareQuad&) = delete;

    /// Fills the bound framebuffer with a rectangle of the texture: left, top, right, bottom, from
    /// 0 to 1.
    void draw(std::uint32_t texture, const std::array<float, 4>& part) const;

private:
    BareProgram program_;
    std::int32_t part_;
    std::uint32_t corners_ = 0;
};
