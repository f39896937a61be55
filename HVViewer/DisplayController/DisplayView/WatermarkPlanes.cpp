#include "HVViewer/DisplayController/DisplayView/WatermarkPlanes.h"

#include "HVViewer/DisplayController/DisplayView/ColorConversion.h"
#include "HVViewer/DisplayController/DisplayView/WatermarkStore.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Imaging/Image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr std::uint8_t kBlackLuma = 16;
constexpr std::uint8_t kNoColour = 128;

/// Red, green and blue; or luma, Cb and Cr without their offsets. The range is that of a byte, 0 to
/// 255.
using Triple = std::array<double, 3>;

constexpr Triple cross(const Triple& a, const Triple& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

constexpr double dot(const Triple& a, const Triple& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

constexpr Triple weightsOf(std::size_t channel) {
    return {ColorConversation709Apple[3 * channel], ColorConversation709Apple[3 * channel + 1],
            ColorConversation709Apple[3 * channel + 2]};
}

/// The weights of red, green and blue in luma, Cb and Cr: the inverse of the matrix, column by
/// column.
constexpr std::array<Triple, 3> kInverse = [] {
    const Triple red = weightsOf(0);
    const Triple green = weightsOf(1);
    const Triple blue = weightsOf(2);
    std::array<Triple, 3> columns{cross(green, blue), cross(blue, red), cross(red, green)};
    const double determinant = dot(red, columns[0]);
    for (Triple& column : columns) {
        for (double& weight : column)
            weight /= determinant;
    }
    return columns;
}();

std::uint8_t component(const Triple& colour, std::size_t index, std::uint8_t offset) {
    const Triple weights{kInverse[0][index], kInverse[1][index], kInverse[2][index]};
    return static_cast<std::uint8_t>(
        std::clamp(std::lround(offset + dot(colour, weights)), 0L, 255L));
}

Triple overBlack(const std::uint8_t* rgba) {
    const double opacity = rgba[3] / 255.0;
    return {rgba[0] * opacity, rgba[1] * opacity, rgba[2] * opacity};
}

/// A frame under construction.
struct Planes {
    explicit Planes(platform::SizePx frameSize)
        : size(frameSize), chromaSize{(size.width + 1) / 2, (size.height + 1) / 2},
          luma(count(size), kBlackLuma), chroma(2 * count(chromaSize), kNoColour) {}

    static std::size_t count(platform::SizePx size) {
        return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    }

    /// Converts the 2 × 2 pixels that share one Cb and Cr, or fewer pixels at an edge.
    void fillBlock(std::span<const std::uint8_t> rgba, int column, int row) {
        Triple sum{};
        int pixels = 0;
        for (int y = 2 * row; y < std::min(2 * row + 2, size.height); ++y) {
            for (int x = 2 * column; x < std::min(2 * column + 2, size.width); ++x, ++pixels) {
                const std::size_t place = count({size.width, y}) + static_cast<std::size_t>(x);
                const std::uint8_t* pixel = &rgba[4 * place];
                if (pixel[3] == 0)
                    continue;
                const Triple colour = overBlack(pixel);
                luma[place] = component(colour, 0, kBlackLuma);
                for (std::size_t i = 0; i < sum.size(); ++i)
                    sum[i] += colour[i];
            }
        }
        if (sum == Triple{})
            return;
        for (double& channel : sum)
            channel /= pixels;
        const std::size_t place =
            2 * (count({chromaSize.width, row}) + static_cast<std::size_t>(column));
        chroma[place] = component(sum, 1, kNoColour);
        chroma[place + 1] = component(sum, 2, kNoColour);
    }

    platform::SizePx size;
    platform::SizePx chromaSize;
    std::vector<std::uint8_t> luma;
    std::vector<std::uint8_t> chroma;
};

/// Marks the quads on which the bytes of a plane that differ from `nothing` show.
void markPlane(QuadMask& mask, const platform::PixelBuffer::Plane& plane, platform::SizePx size,
               int texelBytes, std::uint8_t nothing) {
    for (int y = 0; y < size.height; ++y) {
        const std::uint8_t* row = plane.bytes + static_cast<std::ptrdiff_t>(y) * plane.strideBytes;
        for (int i = 0; i < size.width * texelBytes; ++i) {
            if (row[i] != nothing)
                markQuadsAround(mask, size, i / texelBytes, y);
        }
    }
}

} // namespace

platform::PixelBufferPtr planesOverBlack(const platform::Image& picture) {
    const auto planes =
        std::make_shared<Planes>(platform::SizePx{picture.widthPx(), picture.heightPx()});
    const auto pixels = picture.pixels();
    for (int row = 0; row < planes->chromaSize.height; ++row) {
        for (int column = 0; column < planes->chromaSize.width; ++column)
            planes->fillBlock(pixels, column, row);
    }
    return platform::PixelBuffer::wrap(planes->size, {planes->luma.data(), planes->size.width},
                                       {planes->chroma.data(), 2 * planes->chromaSize.width},
                                       planes);
}

QuadMask quadsThatShow(const platform::PixelBuffer& frame) {
    QuadMask mask;
    const platform::SizePx size = frame.size();
    markPlane(mask, frame.plane(0), size, 1, kBlackLuma);
    markPlane(mask, frame.plane(1), {size.width / 2, size.height / 2}, 2, kNoColour);
    return mask;
}

namespace {

const WatermarkPlanes* keptPlanes(std::string_view text, int maxSidePx) {
    // Never destroyed: the worker may still use it while the process exits.
    static auto& store = *new WatermarkStore<WatermarkPlanes>;
    const int side = std::min(maxSidePx, kWatermarkSidePx);
    return store.findOrMake(text, side, [&]() -> std::unique_ptr<WatermarkPlanes> {
        const platform::ImagePtr picture = decodeWatermark(text, side);
        if (!picture)
            return nullptr;
        auto buffer = planesOverBlack(*picture);
        const QuadMask coverage = quadsThatShow(*buffer);
        return std::make_unique<WatermarkPlanes>(WatermarkPlanes{std::move(buffer), coverage});
    });
}

} // namespace

const WatermarkPlanes* builtInWatermarkPlanes(int maxSidePx) {
    return keptPlanes(watermarkText(), maxSidePx);
}

void requestBuiltInWatermarkPlanes(int maxSidePx,
                                   std::function<void(const WatermarkPlanes*)> completion) {
    platform::DispatchQueue::background().async([completion = std::move(completion), maxSidePx,
                                                 text = watermarkText(),
                                                 work = platform::MainQueue::main().beginWork()] {
        const WatermarkPlanes* planes = keptPlanes(text, maxSidePx);
        platform::MainQueue::main().async([completion, planes, work] { completion(planes); });
    });
}
