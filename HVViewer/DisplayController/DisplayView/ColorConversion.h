#pragma once

#include <array>

/// What weighs luma, Cb and Cr for red, for green and for blue, column by column as GL takes it; 16
/// and 128 are off the values by then. The matrix of every video.
inline constexpr std::array<float, 9> ColorConversation709Apple{
    1.1643F, 0.0F,     1.2802F,  // red
    1.1643F, -0.2148F, -0.3806F, // green
    1.1643F, 2.128F,   0.0F};    // blue
