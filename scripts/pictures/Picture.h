#pragma once

#include "Colour.h"
#include "Sphere.h"

#include <cstddef>
#include <vector>

namespace pictures {

/// An equirectangular image. Columns wrap around, rows do not.
class Picture {
public:
    Picture() : pixels_(static_cast<std::size_t>(kWidthPx) * kHeightPx) {}

    [[nodiscard]] Colour& at(int column, int row) { return pixels_[index(column, row)]; }
    [[nodiscard]] const Colour& at(int column, int row) const {
        return pixels_[index(column, row)];
    }

private:
    static std::size_t index(int column, int row) {
        const int wrapped = (column % kWidthPx + kWidthPx) % kWidthPx;
        return static_cast<std::size_t>(row) * kWidthPx + static_cast<std::size_t>(wrapped);
    }

    std::vector<Colour> pixels_;
};

} // namespace pictures
