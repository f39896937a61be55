#include "Platform/Imaging/PictureScaler.h"

#include <algorithm>
#include <utility>

namespace platform {
namespace {

/// `side` scaled by `to` / `from`, rounded to the nearest integer and at least 1.
int reducedSide(int side, int from, int to) {
    const std::int64_t twice = std::int64_t{2} * side * to;
    return static_cast<int>(std::max<std::int64_t>(1, (twice + from) / (std::int64_t{2} * from)));
}

std::uint8_t rounded(double value) {
    // Never negative; lround would be a function call for every channel of every pixel.
    return static_cast<std::uint8_t>(value + 0.5); // NOLINT(bugprone-incorrect-roundings)
}

} // namespace

void PictureScaler::Sums::add(const Sums& other, std::int64_t times) {
    red += times * other.red;
    green += times * other.green;
    blue += times * other.blue;
    weight += times * other.weight;
}

// The unit of length is such that a source pixel is as wide as the target has pixels, and a target
// pixel is as wide as the source has pixels. Every overlap is then an integer.
PictureScaler::PictureScaler(SizePx source, SizePx target)
    : source_(source), target_(target), row_(static_cast<std::size_t>(target.width)),
      targetRow_(static_cast<std::size_t>(target.width)), pixels_(target.width, target.height) {
    const std::int64_t unit = target.width;
    columns_.reserve(static_cast<std::size_t>(target.width));
    for (std::int64_t x = 0; x < unit; ++x) {
        const std::int64_t begin = x * source.width;
        const std::int64_t end = begin + source.width;
        const std::int64_t first = begin / unit;
        const std::int64_t last = (end - 1) / unit;
        const std::int64_t firstWeight = std::min((first + 1) * unit, end) - begin;
        columns_.push_back(
            {static_cast<int>(first), static_cast<int>(last), firstWeight, end - last * unit});
    }
}

PictureScaler::Sums PictureScaler::sumsOf(const std::uint8_t* rgba) {
    const std::int64_t weight = 256 * rgba[3] + 1;
    return {rgba[0] * weight, rgba[1] * weight, rgba[2] * weight, weight};
}

PictureScaler::Sums PictureScaler::sumsUnder(const Column& column, const std::uint8_t* rgba) const {
    Sums sums;
    sums.add(sumsOf(rgba + std::size_t{4} * static_cast<std::size_t>(column.first)),
             column.firstWeight);
    if (column.last == column.first)
        return sums;
    Sums whole;
    for (int x = column.first + 1; x < column.last; ++x)
        whole.add(sumsOf(rgba + std::size_t{4} * static_cast<std::size_t>(x)), 1);
    sums.add(whole, target_.width);
    sums.add(sumsOf(rgba + std::size_t{4} * static_cast<std::size_t>(column.last)),
             column.lastWeight);
    return sums;
}

void PictureScaler::addRow(const std::uint8_t* rgba) {
    for (std::size_t x = 0; x < columns_.size(); ++x)
        row_[x] = sumsUnder(columns_[x], rgba);

    const std::int64_t begin = std::int64_t{sourceY_} * target_.height;
    const std::int64_t end = begin + target_.height;
    const std::int64_t boundary = std::int64_t{targetY_ + 1} * source_.height;
    addToTargetRow(std::min(end, boundary) - begin);
    if (end >= boundary)
        finishTargetRow();
    if (end > boundary)
        addToTargetRow(end - boundary);
    ++sourceY_;
}

void PictureScaler::addToTargetRow(std::int64_t weight) {
    for (std::size_t x = 0; x < row_.size(); ++x)
        targetRow_[x].add(row_[x], weight);
}

void PictureScaler::finishTargetRow() {
    const std::int64_t area = std::int64_t{source_.width} * source_.height;
    const double perAlpha = 1.0 / (256.0 * static_cast<double>(area));
    std::uint8_t* out = pixels_.row(targetY_++);
    for (Sums& sums : targetRow_) {
        const double perColour = 1.0 / static_cast<double>(sums.weight);
        *out++ = rounded(static_cast<double>(sums.red) * perColour);
        *out++ = rounded(static_cast<double>(sums.green) * perColour);
        *out++ = rounded(static_cast<double>(sums.blue) * perColour);
        *out++ = rounded(static_cast<double>(sums.weight - area) * perAlpha);
        sums = {};
    }
}

PixelStorage PictureScaler::take() {
    return std::move(pixels_);
}

SizePx targetSizeToFit(SizePx size, int maxSidePx) {
    const int longest = std::max(size.width, size.height);
    if (maxSidePx <= 0 || longest <= maxSidePx)
        return size;
    return {reducedSide(size.width, longest, maxSidePx),
            reducedSide(size.height, longest, maxSidePx)};
}

PixelStorage scaledDown(const PixelStorage& pixels, SizePx target) {
    PictureScaler scaler({pixels.widthPx, pixels.heightPx}, target);
    for (int y = 0; y < pixels.heightPx; ++y)
        scaler.addRow(pixels.row(y));
    return scaler.take();
}

ImagePtr scaledDownToFit(const Image& image, int maxSidePx) {
    const SizePx size{image.widthPx(), image.heightPx()};
    const SizePx target = targetSizeToFit(size, maxSidePx);
    PictureScaler scaler(size, target);
    const std::size_t rowBytes = std::size_t{4} * static_cast<std::size_t>(size.width);
    for (std::size_t y = 0; y < static_cast<std::size_t>(size.height); ++y)
        scaler.addRow(image.pixels().data() + y * rowBytes);
    const double scale = image.scale() * target.width / size.width;
    return std::make_shared<const Image>(scaler.take(), scale);
}

} // namespace platform
