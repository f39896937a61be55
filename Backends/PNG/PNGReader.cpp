#include "Backends/PNG/PNGReader.h"

#include "Platform/Imaging/ImageDecoder.h"

#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <string>

namespace platform {
namespace {

/// Whether a chunk declares more bytes than the file has left: libpng would allocate memory for all
/// of them. IDAT chunks are exempt, because libpng reads those incrementally.
bool claimsTooMuch(std::span<const std::uint8_t> file) {
    constexpr std::size_t signatureBytes = 8;
    constexpr std::size_t frameBytes = 12; // length, name and checksum
    std::size_t at = signatureBytes;
    while (file.size() >= at + frameBytes) {
        const std::size_t length = png_get_uint_32(&file[at]);
        if (length > file.size() - at - frameBytes)
            return std::memcmp(&file[at + 4], "IDAT", 4) != 0;
        at += frameBytes + length;
    }
    return false;
}

} // namespace

PNGReader::PNGReader(std::span<const std::uint8_t> encoded) : encoded_(encoded) {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, onError, onWarning);
    if (png_ != nullptr)
        info_ = png_create_info_struct(png_);
}

PNGReader::~PNGReader() {
    png_destroy_read_struct(&png_, &info_, nullptr);
}

bool PNGReader::readHeader() {
    if (info_ == nullptr)
        return false;
    isCutShort_ = claimsTooMuch(encoded_);
    if (isCutShort_ || setjmp(png_jmpbuf(png_)) != 0)
        return false;
    png_set_read_fn(png_, this, onRead);
    // The decoder has its own limit with its own error message.
    png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    skipUnusedChunks();
    png_read_info(png_, info_);
    size_ = {static_cast<int>(png_get_image_width(png_, info_)),
             static_cast<int>(png_get_image_height(png_, info_))};
    isInterlaced_ = png_get_interlace_type(png_, info_) != PNG_INTERLACE_NONE;
    return true;
}

// These chunks are not used here, can be large once decompressed, and can be damaged or cause
// warnings.
void PNGReader::skipUnusedChunks() {
    constexpr png_byte names[] = "iCCP\0zTXt\0iTXt\0tEXt\0sPLT\0hIST";
    constexpr int nameBytes = 5;
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, names,
                                static_cast<int>(sizeof names) / nameBytes);
}

void PNGReader::convertToRGBA() {
    png_set_expand(png_);
    png_set_scale_16(png_);
    png_set_gray_to_rgb(png_);
    png_set_add_alpha(png_, 0xFF, PNG_FILLER_AFTER);
}

void PNGReader::readRow(std::uint8_t* row) {
    png_read_row(png_, row, nullptr);
}

bool PNGReader::readPixels(PixelStorage& pixels) {
    if (setjmp(png_jmpbuf(png_)) != 0)
        return false;
    convertToRGBA();
    const int passes = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < size_.height; ++y)
            readRow(pixels.row(y));
    }
    return true;
}

bool PNGReader::readPixels(PictureScaler& scaler) {
    row_.resize(std::size_t{4} * static_cast<std::size_t>(size_.width));
    if (setjmp(png_jmpbuf(png_)) != 0)
        return false;
    convertToRGBA();
    png_read_update_info(png_, info_);
    for (int y = 0; y < size_.height; ++y) {
        readRow(row_.data());
        scaler.addRow(row_.data());
    }
    return true;
}

bool PNGReader::readEnd() {
    if (setjmp(png_jmpbuf(png_)) != 0)
        return false;
    png_read_end(png_, info_);
    return true;
}

std::span<const std::uint8_t> PNGReader::exif() const {
    png_uint_32 count = 0;
    png_bytep bytes = nullptr;
    if (png_get_eXIf_1(png_, info_, &count, &bytes) == 0)
        return {};
    return {bytes, count};
}

Error PNGReader::error() const {
    if (info_ == nullptr)
        return {ErrorCode::Unavailable, "not decodable (no memory)"};
    if (isCutShort_)
        return refusalOfCutFile(encoded_.size());
    return {ErrorCode::Corrupt, std::string("damaged (") + message_.data() + ")"};
}

void PNGReader::onRead(png_structp png, png_bytep out, std::size_t count) {
    auto* reader = static_cast<PNGReader*>(png_get_io_ptr(png));
    if (count > reader->encoded_.size() - reader->position_) {
        reader->isCutShort_ = true;
        png_error(png, "end of file");
    }
    std::memcpy(out, reader->encoded_.data() + reader->position_, count);
    reader->position_ += count;
}

void PNGReader::onError(png_structp png, png_const_charp text) {
    auto* reader = static_cast<PNGReader*>(png_get_error_ptr(png));
    std::snprintf(reader->message_.data(), reader->message_.size(), "%s", text);
    png_longjmp(png, 1);
}

// Warnings only concern data other than pixels. Pixels are checksummed, and damage there is an
// error.
void PNGReader::onWarning(png_structp, png_const_charp) {}

} // namespace platform
