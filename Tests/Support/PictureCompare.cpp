#include "Tests/Support/PictureCompare.h"

#include "Platform/Imaging/ImageEncoder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using platform::Image;
using platform::PixelStorage;

constexpr int kBlock = 4;

std::span<const std::uint8_t> pixelAt(const Image& image, int x, int y) {
    const auto offset = (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.widthPx()) +
                         static_cast<std::size_t>(x)) *
                        4;
    return image.pixels().subspan(offset, 4);
}

int difference(std::span<const std::uint8_t> a, std::span<const std::uint8_t> b) {
    int most = 0;
    for (std::size_t c = 0; c < 3; ++c)
        most = std::max(most, std::abs(int{a[c]} - int{b[c]}));
    return most;
}

/// Which pixels fail, and what there is to say about it.
struct Comparison {
    std::vector<bool> bad;
    long compared = 0;
    long failed = 0;
    int firstX = -1;
    int firstY = -1;
    bool wholeBlock = false;
};

bool isBadBlock(const Comparison& comparison, int width, int x, int y) {
    for (int dy = 0; dy < kBlock; ++dy) {
        for (int dx = 0; dx < kBlock; ++dx) {
            if (!comparison.bad[static_cast<std::size_t>((y + dy) * width + x + dx)])
                return false;
        }
    }
    return true;
}

Comparison compare(const Image& actual, const Image& expected, int limit) {
    const int width = expected.widthPx();
    const int height = expected.heightPx();
    Comparison result;
    result.bad.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto wanted = pixelAt(expected, x, y);
            if (wanted[3] == 0)
                continue;
            ++result.compared;
            if (difference(pixelAt(actual, x, y), wanted) <= limit)
                continue;
            result.bad[static_cast<std::size_t>(y * width + x)] = true;
            if (result.failed++ == 0)
                std::tie(result.firstX, result.firstY) = std::pair(x, y);
        }
    }
    for (int y = 0; y + kBlock <= height && !result.wholeBlock; ++y) {
        for (int x = 0; x + kBlock <= width && !result.wholeBlock; ++x)
            result.wholeBlock = isBadBlock(result, width, x, y);
    }
    return result;
}

Image differencePicture(const Image& actual, const Image& expected) {
    PixelStorage pixels(expected.widthPx(), expected.heightPx());
    for (int y = 0; y < expected.heightPx(); ++y) {
        for (int x = 0; x < expected.widthPx(); ++x) {
            const auto a = pixelAt(actual, x, y);
            const auto b = pixelAt(expected, x, y);
            std::uint8_t* out = pixels.row(y) + static_cast<std::ptrdiff_t>(x) * 4;
            // Amplified, because a difference of 5 is invisible.
            for (std::size_t c = 0; c < 3; ++c)
                out[c] = static_cast<std::uint8_t>(
                    b[3] == 0 ? 0 : std::min(255, 16 * std::abs(int{a[c]} - int{b[c]})));
            out[3] = 255;
        }
    }
    return Image(std::move(pixels));
}

void writePicture(const std::filesystem::path& path, const Image& image) {
    const auto encoded = platform::encodePng(image);
    if (!encoded)
        return;
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(encoded.value().data()),
               static_cast<std::streamsize>(encoded.value().size()));
}

std::string keep(const std::string& name, const Image& actual, const Image& expected) {
    const auto folder = std::filesystem::path(ZANTO_RENDER_DIR) / name;
    std::filesystem::create_directories(folder);
    writePicture(folder / "actual.png", actual);
    writePicture(folder / "expected.png", expected);
    writePicture(folder / "diff.png", differencePicture(actual, expected));
    return folder.string();
}

std::string describe(std::span<const std::uint8_t> pixel) {
    std::string text = "(";
    for (std::size_t c = 0; c < 4; ++c)
        text += (c ? ", " : "") + std::to_string(pixel[c]);
    return text + ")";
}

::testing::AssertionResult sameSize(const Image& actual, const Image& expected) {
    if (actual.widthPx() == expected.widthPx() && actual.heightPx() == expected.heightPx())
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "the picture is " << actual.widthPx() << " x " << actual.heightPx() << ", expected "
           << expected.widthPx() << " x " << expected.heightPx();
}

} // namespace

::testing::AssertionResult picturesMatch(const std::string& name, const Image& actual,
                                         const Image& expected, PictureTolerance tolerance) {
    if (const auto same = sameSize(actual, expected); !same)
        return same;
    const Comparison result = compare(actual, expected, tolerance.channel);
    if (result.compared == 0)
        return ::testing::AssertionFailure() << name << ": there is nothing to compare";
    const double limit = tolerance.fraction * static_cast<double>(result.compared);
    if (!result.wholeBlock && static_cast<double>(result.failed) <= limit)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << name << ": first at (" << result.firstX << ", " << result.firstY << ") "
           << describe(pixelAt(actual, result.firstX, result.firstY)) << ", expected "
           << describe(pixelAt(expected, result.firstX, result.firstY)) << "; " << result.failed
           << " of " << result.compared << " pixels differ by more than " << tolerance.channel
           << ", limit " << limit << (result.wholeBlock ? "; a whole block" : "")
           << "; pictures in " << keep(name, actual, expected);
}

::testing::AssertionResult picturesAreEqual(const std::string& name, const Image& actual,
                                            const Image& expected) {
    if (const auto same = sameSize(actual, expected); !same)
        return same;
    if (std::equal(actual.pixels().begin(), actual.pixels().end(), expected.pixels().begin()))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << name << ": the pictures are not the same; see " << keep(name, actual, expected);
}
