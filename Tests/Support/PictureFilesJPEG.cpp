#include "Tests/Support/PictureFiles.h"

// The library's header leaves this one to its user.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on

#include <cstdlib>

namespace tests {
namespace {

J_COLOR_SPACE inputColours(JPEGColours colours) {
    switch (colours) {
    case JPEGColours::Grey:
        return JCS_GRAYSCALE;
    case JPEGColours::CMYK:
    case JPEGColours::YCCK:
        return JCS_CMYK;
    default:
        return JCS_RGB;
    }
}

J_COLOR_SPACE fileColours(JPEGColours colours) {
    switch (colours) {
    case JPEGColours::YCbCr:
        return JCS_YCbCr;
    case JPEGColours::RGB:
        return JCS_RGB;
    case JPEGColours::Grey:
        return JCS_GRAYSCALE;
    case JPEGColours::CMYK:
        return JCS_CMYK;
    case JPEGColours::YCCK:
        return JCS_YCCK;
    }
    return JCS_UNKNOWN;
}

/// Grey takes the red channel; the fourth ink takes alpha's place, whatever that looks like.
Bytes rowOf(const TestPicture& picture, int y, int components) {
    Bytes row;
    for (int x = 0; x < picture.widthPx; ++x) {
        for (int c = 0; c < components; ++c)
            row.push_back(picture.at(x, y)[static_cast<std::size_t>(c)]);
    }
    return row;
}

void configure(jpeg_compress_struct& jpeg, const TestPicture& picture, const JPEGOptions& options) {
    jpeg.image_width = static_cast<JDIMENSION>(picture.widthPx);
    jpeg.image_height = static_cast<JDIMENSION>(picture.heightPx);
    jpeg.in_color_space = inputColours(options.colours);
    jpeg.input_components = jpeg.in_color_space == JCS_GRAYSCALE ? 1
                            : jpeg.in_color_space == JCS_CMYK    ? 4
                                                                 : 3;
    jpeg_set_defaults(&jpeg);
    jpeg_set_colorspace(&jpeg, fileColours(options.colours));
    jpeg_set_quality(&jpeg, options.quality, TRUE);
    for (int i = 0; i < jpeg.num_components; ++i) {
        jpeg.comp_info[i].h_samp_factor = i == 0 ? options.lumaAcross : 1;
        jpeg.comp_info[i].v_samp_factor = i == 0 ? options.lumaDown : 1;
    }
    jpeg.arith_code = options.coding == JPEGCoding::Arithmetic;
    if (options.coding == JPEGCoding::Progressive)
        jpeg_simple_progression(&jpeg);
}

} // namespace

Bytes jpegFile(const TestPicture& picture, const JPEGOptions& options) {
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors); // an error here is a mistake in a test: it may end it
    jpeg_create_compress(&jpeg);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &buffer, &size);
    configure(jpeg, picture, options);
    jpeg_start_compress(&jpeg, TRUE);
    if (!options.exif.empty()) {
        jpeg_write_marker(&jpeg, JPEG_APP0 + 1, options.exif.data(),
                          static_cast<unsigned>(options.exif.size()));
    }
    for (int y = 0; y < picture.heightPx; ++y) {
        Bytes row = rowOf(picture, y, jpeg.input_components);
        JSAMPROW rows[1] = {row.data()};
        jpeg_write_scanlines(&jpeg, rows, 1);
    }
    jpeg_finish_compress(&jpeg);
    Bytes file(buffer, buffer + size);
    jpeg_destroy_compress(&jpeg);
    std::free(buffer);
    return file;
}

} // namespace tests
