#include "Platform/Imaging/PictureOrientation.h"
#include "Tests/Support/PictureFiles.h"

#include <gtest/gtest.h>

namespace {

using platform::PixelStorage;
using platform::swapsSides;
using platform::turnedUpright;
using tests::Alpha;
using tests::TestPicture;

/// Where EXIF says that the stored first row and first column belong, read off one pixel at a time.
TestPicture uprightByDefinition(const TestPicture& stored, int orientation) {
    const bool rowsAreColumns = orientation >= 5;
    TestPicture upright(rowsAreColumns ? stored.heightPx : stored.widthPx,
                        rowsAreColumns ? stored.widthPx : stored.heightPx);
    const bool firstRowIsLast = orientation == 3 || orientation == 4 || orientation == 6 ||
                                orientation == 7; // at the bottom, or at the right
    const bool firstColumnIsLast = orientation == 2 || orientation == 3 || orientation == 7 ||
                                   orientation == 8; // at the right, or at the bottom
    for (int y = 0; y < stored.heightPx; ++y) {
        for (int x = 0; x < stored.widthPx; ++x) {
            const int row = firstRowIsLast ? stored.heightPx - 1 - y : y;
            const int column = firstColumnIsLast ? stored.widthPx - 1 - x : x;
            (rowsAreColumns ? upright.at(row, column) : upright.at(column, row)) = stored.at(x, y);
        }
    }
    return upright;
}

void expectAllOrientations(int widthPx, int heightPx) {
    const TestPicture stored = tests::noise(widthPx, heightPx, 7, Alpha::Random);
    for (int orientation = 1; orientation <= 8; ++orientation) {
        EXPECT_EQ(TestPicture(turnedUpright(stored.storage(), orientation)),
                  uprightByDefinition(stored, orientation))
            << widthPx << " x " << heightPx << ", orientation " << orientation;
    }
}

TEST(PictureOrientation, TurnsAllEightUpright) {
    expectAllOrientations(3, 2);
}

TEST(PictureOrientation, TurnsPicturesThatAreNoMultipleOfABlock) {
    expectAllOrientations(70, 33);
    expectAllOrientations(32, 64);
}

TEST(PictureOrientation, TurnsSinglePixelsRowsAndColumns) {
    expectAllOrientations(1, 1);
    expectAllOrientations(100, 1);
    expectAllOrientations(1, 100);
}

TEST(PictureOrientation, LeavesThePixelsWhereTheyAreWhenUpright) {
    for (const int orientation : {1, 0, -1, 9}) {
        PixelStorage pixels = tests::quadrants(4, 4).storage();
        const std::uint8_t* bytes = pixels.bytes.get();
        const PixelStorage upright = turnedUpright(std::move(pixels), orientation);
        EXPECT_EQ(upright.bytes.get(), bytes) << orientation;
        EXPECT_EQ(TestPicture(upright), tests::quadrants(4, 4)) << orientation;
    }
}

TEST(PictureOrientation, SwapsSidesFromFiveOn) {
    for (int orientation = 0; orientation <= 9; ++orientation)
        EXPECT_EQ(swapsSides(orientation), orientation >= 5 && orientation <= 8) << orientation;
}

} // namespace
