#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <vector>

namespace platform {

/// Reduces a picture by area averaging while its rows arrive, so that a source far larger than
/// memory can be reduced as it is decoded.
///
/// Each target pixel is the mean of the source area under it, fractions of pixels included; colour
/// is weighted by alpha, so that what transparent pixels hide does not bleed into edges. Sums are
/// integers: a flat colour comes out exactly as it went in.
///
/// Units:  sizes in pixels, 1 to `kMaxSourceSidePx`; the target is nowhere larger than the source.
/// Thread: any, one at a time for each scaler.
///
///     PictureScaler scaler(source, targetSizeToFit(source, 4096));
///     for (int y = 0; y < source.height; ++y)
///         scaler.addRow(rowOf(y));
///     PixelStorage reduced = scaler.take();
class PictureScaler {
public:
    /// The side from which on the sums could leave 63 bits.
    static constexpr int kMaxSourceSidePx = 500'000;

    PictureScaler(SizePx source, SizePx target);

    /// Takes the next row from the top, straight-alpha RGBA8; exactly `source.height` times.
    void addRow(const std::uint8_t* rgba);

    /// The reduced picture, once after the last row.
    [[nodiscard]] PixelStorage take();

private:
    /// The source pixels under one target column; the outer two may lie there in part.
    struct Column {
        int first;
        int last;
        std::int64_t firstWeight;
        std::int64_t lastWeight;
    };
    /// Sums over an area. `weight` is that of the colours: 256 alpha + 1, where the 1 leaves wholly
    /// transparent areas their mean colour.
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
    std::vector<Sums> row_;       // of the latest source row, per target column
    std::vector<Sums> targetRow_; // of the source rows so far under the target row
    int sourceY_ = 0;
    int targetY_ = 0;
    PixelStorage pixels_;
};

/// The largest size within `maxSidePx` that keeps the proportions, each side at least 1; the size
/// itself where it fits already or `maxSidePx` is 0 or less.
[[nodiscard]] SizePx targetSizeToFit(SizePx size, int maxSidePx);

/// The picture reduced to `target`.
[[nodiscard]] PixelStorage scaledDown(const PixelStorage& pixels, SizePx target);

/// A copy of the image within `maxSidePx`, of the same size in points but for the rounding to whole
/// pixels. An image that fits is copied too, so ask first.
[[nodiscard]] ImagePtr scaledDownToFit(const Image& image, int maxSidePx);

} // namespace platform
