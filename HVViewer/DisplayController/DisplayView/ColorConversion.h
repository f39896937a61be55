#pragma once

#include <array>

/// The conversion matrix of all videos from luma, Cb and Cr (with 16 and 128 already subtracted) to
/// RGB, in the column-major order of GL: each line has the three weights for one output channel.
inline constexpr std::array<float, 9> ColorConversation709Apple{
    1.1643F, 0.0F,     1.2802F,  // red
    1.1643F, -0.2148F, -0.3806F, // green
    1.1643F, 2.128F,   0.0F};    // blue
