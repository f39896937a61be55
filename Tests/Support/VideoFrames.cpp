#include "Tests/Support/VideoFrames.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr std::uint8_t kPadding = 0xA5;

} // namespace

platform::PixelBufferPtr videoFrame(platform::SizePx size,
                                    const std::function<YCbCr(int x, int y)>& colourAt,
                                    int paddingBytes) {
    struct Bytes {
        std::vector<std::uint8_t> luma;
        std::vector<std::uint8_t> chroma;
    };
    const platform::SizePx blocks{(size.width + 1) / 2, (size.height + 1) / 2};
    const int lumaStride = size.width + paddingBytes;
    const int chromaStride = blocks.width * 2 + paddingBytes;
    const auto bytes = std::make_shared<Bytes>();
    bytes->luma.assign(static_cast<std::size_t>(lumaStride * size.height), kPadding);
    bytes->chroma.assign(static_cast<std::size_t>(chromaStride * blocks.height), kPadding);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x)
            bytes->luma[static_cast<std::size_t>(y * lumaStride + x)] = colourAt(x, y)[0];
    }
    for (int y = 0; y < blocks.height; ++y) {
        for (int x = 0; x < blocks.width; ++x) {
            const YCbCr colour = colourAt(2 * x, 2 * y);
            const auto at = static_cast<std::size_t>(y * chromaStride + 2 * x);
            bytes->chroma[at] = colour[1];
            bytes->chroma[at + 1] = colour[2];
        }
    }
    return platform::PixelBuffer::wrap(size, {bytes->luma.data(), lumaStride},
                                       {bytes->chroma.data(), chromaStride}, bytes);
}

platform::PixelBufferPtr flatFrame(platform::SizePx size, YCbCr colour) {
    return videoFrame(size, [colour](int, int) { return colour; });
}

std::array<int, 4> shownColour(YCbCr colour) {
    const double y = colour[0] - 16.0;
    const double cb = colour[1] - 128.0;
    const double cr = colour[2] - 128.0;
    const auto channel = [](double value) {
        return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
    };
    return {channel(1.1643 * y + 1.2802 * cr), channel(1.1643 * y - 0.2148 * cb - 0.3806 * cr),
            channel(1.1643 * y + 2.128 * cb), 255};
}
