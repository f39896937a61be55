#pragma once

#include "Platform/Imaging/PixelBuffer.h"

#include <array>
#include <cstdint>
#include <functional>

/// Luma, Cb and Cr as a video holds them, in video range.
using YCbCr = std::array<std::uint8_t, 3>;

/// A frame of a video; the colour of a block of 2 × 2 pixels is that of its top left one. Rows have
/// `paddingBytes` of other bytes between them.
[[nodiscard]] platform::PixelBufferPtr
videoFrame(platform::SizePx size, const std::function<YCbCr(int x, int y)>& colourAt,
           int paddingBytes = 0);

/// A frame of one colour.
[[nodiscard]] platform::PixelBufferPtr flatFrame(platform::SizePx size, YCbCr colour);

/// What the shader and the framebuffer make of a colour: red, green, blue and alpha.
[[nodiscard]] std::array<int, 4> shownColour(YCbCr colour);
