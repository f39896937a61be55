#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <vector>

namespace platform {

/// Scales an image down by area averaging while its rows arrive, so that a source far larger than
/// the memory can be scaled as it is decoded.
///
/// Each target pixel is the mean of the source area that it covers, including fractions of pixels.
/// Colour is weighted by alpha, so that the colours of transparent pixels do not bleed into edges.
/// The sums are integers: a uniform colour does not change at all.
///
/// Units:  sizes in pixels, 1 to `kMaxSourceSidePx`; no side of the target is longer than the
///         source's.
/// Thread: any; not thread-safe, one thread at a time.
///
///     PictureScaler scaler(source, targetSizeToFit(source, 4096));
///     for (int y = 0; y < source.height; ++y)
///         scaler.addRow(rowOf(y));
///     PixelStorage reduced = scaler.take();
class PictureScaler {
public:
    /// The longest side for which the sums cannot exceed 63 bits.
    static constexpr int kMaxSourceSidePx = 500'000;

    PictureScaler(SizePx source, SizePx target);

    /// Adds the next row from the top, straight-alpha RGBA8. It is called exactly `source.height`
    /// times.
    void addRow(const std::uint8_t* rgba);

    /// Moves the scaled image out. It is called once, after the last row.
    [[nodiscard]] PixelStorage take();

private:
    /// The source pixels that one target column covers; it may cover the first and the last in
    /// part.
    struct Column {
        int first;
        int last;
        std::int64_t firstWeight;
        std::int64_t lastWeight;
    };
    /// Sums over an area. `weight` is the weight of the colours: 256 alpha + 1, where the 1 gives
    /// fully transparent areas their mean colour.
    struct Sums {
        std::int64_t red = 0;
        std::int64_t green = 0;
        std::int64_t blue = 0;
        std::int64_t weight = 0;
        void add(const Sums& other, std::int64_t times);
    };

    static Sums sumsOf(const std::uint8_t* rgba);
    [[nodiscard]] Sums sumsUnder(const Column& column, const std::uint8_t* rgba) const;
    void addToTargetRow(std::int64_t weight);
    void finishTargetRow();

    SizePx source_;
    SizePx target_;
    std::vector<Column> columns_;
    std::vector<Sums> row_;       // of the latest source row, one per target column
    std::vector<Sums> targetRow_; // of the source rows so far that the target row covers
    int sourceY_ = 0;
    int targetY_ = 0;
    PixelStorage pixels_;
};

/// The largest size within `maxSidePx` that keeps the proportions, each side at least 1. It is the
/// size itself if that fits already or if `maxSidePx` is 0 or less.
[[nodiscard]] SizePx targetSizeToFit(SizePx size, int maxSidePx);

/// The image scaled down to `target`.
[[nodiscard]] PixelStorage scaledDown(const PixelStorage& pixels, SizePx target);

/// A copy of the image within `maxSidePx`, of the same size in points except for the rounding to
/// whole pixels. An image that fits is copied too, so callers check that first.
[[nodiscard]] ImagePtr scaledDownToFit(const Image& image, int maxSidePx);

} // namespace platform
