#include "Platform/Imaging/PictureOrientation.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace platform {
namespace {

struct Pixel {
    std::uint8_t rgba[4];
};
static_assert(sizeof(Pixel) == 4 && alignof(Pixel) == 1);

/// Valid because a pixel consists of bytes only.
Pixel* pixelRow(PixelStorage& pixels, int y) {
    return reinterpret_cast<Pixel*>(pixels.row(y));
}

const Pixel* pixelRow(const PixelStorage& pixels, int y) {
    return reinterpret_cast<const Pixel*>(pixels.row(y));
}

void mirrorColumns(PixelStorage& pixels) {
    for (int y = 0; y < pixels.heightPx; ++y) {
        Pixel* row = pixelRow(pixels, y);
        std::reverse(row, row + pixels.widthPx);
    }
}

void mirrorRows(PixelStorage& pixels) {
    for (int top = 0, bottom = pixels.heightPx - 1; top < bottom; ++top, --bottom)
        std::swap_ranges(pixels.row(top), pixels.row(top) + pixels.rowBytes(), pixels.row(bottom));
}

void turnHalf(PixelStorage& pixels) {
    Pixel* first = pixelRow(pixels, 0);
    std::reverse(first, first + pixels.size() / sizeof(Pixel));
}

/// The sides of a square block whose source and target lines both fit into the first-level cache.
/// Row by row, a large image would miss that cache at every pixel.
constexpr int kBlockPx = 32;

/// Turns rows into columns, and mirrors them in the same pass.
class Transposition {
public:
    Transposition(const PixelStorage& stored, bool mirrorsColumns, bool mirrorsRows)
        : stored_(stored), turned_(stored.heightPx, stored.widthPx),
          mirrorsColumns_(mirrorsColumns), mirrorsRows_(mirrorsRows) {}

    PixelStorage result() && {
        for (int top = 0; top < turned_.heightPx; top += kBlockPx) {
            for (int left = 0; left < turned_.widthPx; left += kBlockPx)
                fillBlock(left, top);
        }
        return std::move(turned_);
    }

private:
    void fillBlock(int left, int top) {
        const int right = std::min(left + kBlockPx, turned_.widthPx);
        const int bottom = std::min(top + kBlockPx, turned_.heightPx);
        for (int y = top; y < bottom; ++y) {
            Pixel* out = pixelRow(turned_, y);
            const int column = mirrorsRows_ ? turned_.heightPx - 1 - y : y;
            for (int x = left; x < right; ++x)
                out[x] = pixelRow(stored_, mirrorsColumns_ ? turned_.widthPx - 1 - x : x)[column];
        }
    }

    const PixelStorage& stored_;
    PixelStorage turned_;
    bool mirrorsColumns_;
    bool mirrorsRows_;
};

void mirror(PixelStorage& pixels, bool columns, bool rows) {
    if (columns && rows)
        turnHalf(pixels);
    else if (columns)
        mirrorColumns(pixels);
    else if (rows)
        mirrorRows(pixels);
}

} // namespace

bool swapsSides(int orientation) {
    return orientation >= 5 && orientation <= 8;
}

// 1 to 4 are the four combinations of mirrorings; 5 to 8 are the same after a transposition.
PixelStorage turnedUpright(PixelStorage pixels, int orientation) {
    const bool columns =
        orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    const bool rows = orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    if (swapsSides(orientation))
        return Transposition(pixels, columns, rows).result();
    mirror(pixels, columns, rows);
    return pixels;
}

} // namespace platform
