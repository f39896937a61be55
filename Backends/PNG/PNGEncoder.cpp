#include "Platform/Imaging/ImageEncoder.h"

#include <png.h>

#include <csetjmp>
#include <cstddef>
#include <new>
#include <utility>

namespace platform {
namespace {

/// Writes one PNG file. As in `PNGReader`, no function that libpng may leave with longjmp holds an
/// object with a destructor.
class PNGWriter {
public:
    PNGWriter() {
        png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
        if (png_ != nullptr)
            info_ = png_create_info_struct(png_);
    }
    ~PNGWriter() { png_destroy_write_struct(&png_, &info_); }
    PNGWriter(const PNGWriter&) = delete;
    PNGWriter& operator=(const PNGWriter&) = delete;

    [[nodiscard]] bool write(const Image& image) {
        if (info_ == nullptr)
            return false;
        if (setjmp(png_jmpbuf(png_)) != 0)
            return false;
        png_set_write_fn(png_, this, onWrite, nullptr);
        writeHeader(image);
        const std::uint8_t* row = image.pixels().data();
        for (int y = 0; y < image.heightPx(); ++y, row += std::ptrdiff_t{4} * image.widthPx())
            png_write_row(png_, row);
        png_write_end(png_, info_);
        return true;
    }

    [[nodiscard]] std::vector<std::uint8_t> takeBytes() { return std::move(bytes_); }

private:
    void writeHeader(const Image& image) {
        // A fixed level, so that the output does not depend on the default of the libpng version.
        constexpr int compressionLevel = 6;
        png_set_compression_level(png_, compressionLevel);
        // libpng's default limit is one million pixels a side.
        png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(png_, info_, static_cast<png_uint_32>(image.widthPx()),
                     static_cast<png_uint_32>(image.heightPx()), 8, PNG_COLOR_TYPE_RGB_ALPHA,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png_, info_);
    }

    bool append(const std::uint8_t* data, std::size_t count) try {
        bytes_.insert(bytes_.end(), data, data + count);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }

    static void onWrite(png_structp png, png_bytep data, std::size_t count) {
        if (!static_cast<PNGWriter*>(png_get_io_ptr(png))->append(data, count))
            png_error(png, "no memory");
    }

    static void onError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void onWarning(png_structp, png_const_charp) {}

    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    std::vector<std::uint8_t> bytes_;
};

} // namespace

Result<std::vector<std::uint8_t>> encodePng(const Image& image) {
    PNGWriter writer;
    if (!writer.write(image))
        return Error{ErrorCode::Unavailable, "PNG not written (no memory or no pixels)"};
    return writer.takeBytes();
}

} // namespace platform
