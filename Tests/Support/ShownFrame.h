#pragma once

#include "Platform/Imaging/Image.h"
#include "Tests/Support/TestClips.h"

#include <cstddef>
#include <cstring>
#include <optional>
#include <vector>

namespace tests {

/// The number of the counter clip's frame that a window of 256 × 128 shows flat on a plane, which
/// leaves a margin around it. A dark window reads as 0.
[[nodiscard]] inline std::optional<int> shownFrameNumber(const platform::Image& window) {
    constexpr int kLeft = 15;
    constexpr int kRight = 241;
    platform::PixelStorage row(kRight - kLeft, 1);
    const auto start = (static_cast<std::size_t>(window.heightPx() / 2) *
                            static_cast<std::size_t>(window.widthPx()) +
                        kLeft) *
                       4;
    const auto pixels = window.pixels().subspan(start, std::size_t{4} * (kRight - kLeft));
    std::memcpy(row.row(0), pixels.data(), pixels.size());
    return readFrameNumber(platform::Image(std::move(row)));
}

} // namespace tests
