#include "Tests/Support/PictureFiles.h"

#include <png.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <random>
#include <string>

namespace tests {
namespace {

/// A mistake in a test; the library must not be returned to, nor unwound.
[[noreturn]] void onError(png_structp, png_const_charp text) {
    std::fprintf(stderr, "PNG for a test: %s\n", text);
    std::abort();
}
void onWarning(png_structp, png_const_charp) {}

void onWrite(png_structp png, png_bytep data, std::size_t count) {
    auto* file = static_cast<Bytes*>(png_get_io_ptr(png));
    file->insert(file->end(), data, data + count);
}

/// Samples of one kind, one number each, and the chunks that give them their meaning.
struct Samples {
    std::vector<std::uint16_t> values;
    std::vector<png_color> palette;
    std::vector<png_byte> paletteAlpha;
    std::optional<png_color_16> transparentColour;
};

std::size_t channelsOf(int colourType) {
    switch (colourType) {
    case PNG_COLOR_TYPE_RGB:
        return 3;
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return 2;
    case PNG_COLOR_TYPE_RGB_ALPHA:
        return 4;
    default:
        return 1;
    }
}

Bytes packedRow(const std::uint16_t* values, std::size_t count, int bitDepth) {
    Bytes row;
    if (bitDepth == 16) {
        for (std::size_t i = 0; i < count; ++i) {
            row.push_back(static_cast<std::uint8_t>(values[i] >> 8));
            row.push_back(static_cast<std::uint8_t>(values[i]));
        }
        return row;
    }
    const std::size_t perByte = 8 / static_cast<std::size_t>(bitDepth);
    row.resize((count + perByte - 1) / perByte);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t shift = 8 - static_cast<std::size_t>(bitDepth) * (i % perByte + 1);
        row[i / perByte] = static_cast<std::uint8_t>(row[i / perByte] | values[i] << shift);
    }
    return row;
}

void describe(png_structp png, png_infop info, int widthPx, int heightPx, const PNGOptions& options,
              const Samples& samples) {
    png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_IHDR(png, info, static_cast<png_uint_32>(widthPx), static_cast<png_uint_32>(heightPx),
                 options.bitDepth, options.colourType,
                 options.isInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!samples.palette.empty())
        png_set_PLTE(png, info, samples.palette.data(), static_cast<int>(samples.palette.size()));
    if (!samples.paletteAlpha.empty()) {
        png_set_tRNS(png, info, samples.paletteAlpha.data(),
                     static_cast<int>(samples.paletteAlpha.size()), nullptr);
    }
    if (samples.transparentColour)
        png_set_tRNS(png, info, nullptr, 0, &*samples.transparentColour);
    if (!options.exif.empty()) {
        Bytes exif = options.exif;
        png_set_eXIf_1(png, info, static_cast<png_uint_32>(exif.size()), exif.data());
    }
}

void addText(png_structp png, png_infop info, std::size_t count) {
    std::string words(count, 'a');
    char key[] = "Comment";
    png_text text{};
    text.compression = PNG_TEXT_COMPRESSION_zTXt;
    text.key = key;
    text.text = words.data();
    text.text_length = count;
    png_set_text(png, info, &text, 1);
}

using RowSource = std::function<Bytes(int y)>;

Bytes writeFile(int widthPx, int heightPx, const PNGOptions& options, const Samples& samples,
                const RowSource& rowAt) {
    Bytes file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, onWrite, nullptr);
    describe(png, info, widthPx, heightPx, options, samples);
    if (options.textBytes > 0)
        addText(png, info, options.textBytes);
    png_write_info(png, info);
    const int passes = png_set_interlace_handling(png);
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < heightPx; ++y)
            png_write_row(png, rowAt(y).data());
    }
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

Samples randomSamples(std::size_t pixelCount, const PNGOptions& options) {
    std::mt19937 random(options.seed);
    const unsigned mask = (1U << options.bitDepth) - 1;
    Samples samples;
    samples.values.resize(pixelCount * channelsOf(options.colourType));
    for (std::uint16_t& value : samples.values)
        value = static_cast<std::uint16_t>(random() & mask);
    const auto level = [&] { return static_cast<png_byte>(random()); };
    if (options.colourType == PNG_COLOR_TYPE_PALETTE) {
        for (unsigned i = 0; i <= mask; ++i)
            samples.palette.push_back({level(), level(), level()});
        // Fewer than the palette has, as the format allows: the rest is opaque.
        for (unsigned i = 0; options.hasTransparency && i <= mask / 2; ++i)
            samples.paletteAlpha.push_back(level());
    } else if (options.hasTransparency) {
        // The first pixel's colour, so that at least one pixel has it.
        const auto value = [&](std::size_t i) {
            return samples.values[std::min(i, channelsOf(options.colourType) - 1)];
        };
        samples.transparentColour = png_color_16{0, value(0), value(1), value(2), value(0)};
    }
    return samples;
}

/// What the format's text says a sample looks like in 8 bits.
std::uint8_t level(std::uint16_t value, int bitDepth) {
    const unsigned most = (1U << bitDepth) - 1;
    return static_cast<std::uint8_t>((2U * value * 255U + most) / (2U * most));
}

Colour colourOf(const std::uint16_t* value, const PNGOptions& options, const Samples& samples) {
    const auto at = [&](std::size_t i) { return level(value[i], options.bitDepth); };
    const auto& key = samples.transparentColour;
    switch (options.colourType) {
    case PNG_COLOR_TYPE_GRAY:
        return {at(0), at(0), at(0), std::uint8_t(key && key->gray == value[0] ? 0 : 255)};
    case PNG_COLOR_TYPE_RGB: {
        const bool isKey =
            key && key->red == value[0] && key->green == value[1] && key->blue == value[2];
        return {at(0), at(1), at(2), std::uint8_t(isKey ? 0 : 255)};
    }
    case PNG_COLOR_TYPE_PALETTE: {
        const png_color& entry = samples.palette[value[0]];
        const bool hasAlpha = value[0] < samples.paletteAlpha.size();
        return {entry.red, entry.green, entry.blue,
                hasAlpha ? samples.paletteAlpha[value[0]] : std::uint8_t{255}};
    }
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return {at(0), at(0), at(0), at(1)};
    default:
        return {at(0), at(1), at(2), at(3)};
    }
}

std::uint32_t checksum(const std::uint8_t* bytes, std::size_t count) {
    constexpr std::uint32_t polynomial = 0xEDB88320;
    std::uint32_t sum = ~std::uint32_t{0};
    for (std::size_t i = 0; i < count; ++i) {
        sum ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1) != 0 ? sum >> 1 ^ polynomial : sum >> 1;
    }
    return ~sum;
}

} // namespace

PNGVariant pngVariant(int widthPx, int heightPx, const PNGOptions& options) {
    TestPicture expected(widthPx, heightPx);
    const Samples samples = randomSamples(expected.pixels.size(), options);
    const std::size_t channels = channelsOf(options.colourType);
    for (std::size_t i = 0; i < expected.pixels.size(); ++i)
        expected.pixels[i] = colourOf(&samples.values[i * channels], options, samples);

    const std::size_t perRow = channels * static_cast<std::size_t>(widthPx);
    const auto rowAt = [&](int y) {
        return packedRow(&samples.values[perRow * static_cast<std::size_t>(y)], perRow,
                         options.bitDepth);
    };
    return {writeFile(widthPx, heightPx, options, samples, rowAt), expected};
}

Bytes pngFile(const TestPicture& picture, const PNGOptions& options) {
    const std::size_t rowBytes = std::size_t{4} * static_cast<std::size_t>(picture.widthPx);
    return writeFile(picture.widthPx, picture.heightPx, options, {}, [&](int y) {
        Bytes row(rowBytes);
        std::memcpy(row.data(), &picture.at(0, y), rowBytes);
        return row;
    });
}

Bytes flatGreyPNG(int widthPx, int heightPx, std::uint8_t level) {
    PNGOptions options;
    options.colourType = PNG_COLOR_TYPE_GRAY;
    const Bytes row(static_cast<std::size_t>(widthPx), level);
    return writeFile(widthPx, heightPx, options, {}, [&](int) { return row; });
}

void repairPNGChecksums(Bytes& file) {
    constexpr std::size_t signatureBytes = 8;
    constexpr std::size_t frameBytes = 12; // length, name and checksum
    for (std::size_t at = signatureBytes; at + frameBytes <= file.size();) {
        const std::size_t length = png_get_uint_32(&file[at]);
        if (length > file.size() - at - frameBytes)
            return;
        png_save_uint_32(&file[at + 8 + length], checksum(&file[at + 4], length + 4));
        at += length + frameBytes;
    }
}

} // namespace tests
