#pragma once

namespace platform {

/// A colour with straight alpha; each channel is 0 to 1.
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 0;
    friend bool operator==(const Color&, const Color&) = default;
};

inline constexpr Color kClearColor{0, 0, 0, 0};
inline constexpr Color kBlackColor{0, 0, 0, 1};

} // namespace platform
