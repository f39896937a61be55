#include "Platform/Imaging/Image.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <new>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace platform {
namespace {

/// No image within the limits comes near this size; a sparse or endless file would fill the memory.
constexpr std::uintmax_t kMaxFileBytes = std::uintmax_t{2} << 30;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

DecodeLimits& processLimits() {
    return Environment::current().part<DecodeLimits>();
}

Error fileError(ErrorCode code, const std::string& what, std::error_code cause) {
    return {code, what + " (" + cause.message() + ")"};
}

Error lastReadError() {
    return fileError(ErrorCode::Unreadable, "it cannot be read", {errno, std::generic_category()});
}

Error fileTooLarge() {
    return {ErrorCode::TooLarge, "the file is over " + std::to_string(kMaxFileBytes) + " bytes"};
}

/// Allows only files that can be opened and read to their end: opening a pipe would wait for a
/// writer.
std::optional<Error> refusalOfPath(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code cause;
    const fs::file_status status = fs::status(path, cause);
    switch (status.type()) {
    case fs::file_type::regular:
        break;
    case fs::file_type::not_found:
        return fileError(ErrorCode::Missing, "it is missing", cause);
    case fs::file_type::directory:
        return Error{ErrorCode::Unreadable, "it is a directory"};
    case fs::file_type::none:
    case fs::file_type::unknown:
        return fileError(ErrorCode::Unreadable, "it cannot be read", cause);
    default:
        return Error{ErrorCode::Unreadable, "it is not a regular file"};
    }
    if (const std::uintmax_t bytes = fs::file_size(path, cause); !cause && bytes > kMaxFileBytes)
        return fileTooLarge();
    return std::nullopt;
}

/// Reads to the end whatever size the system reports, because files made by the kernel report 0.
Result<std::vector<std::uint8_t>> readToEnd(std::FILE* file, std::size_t expectedBytes) {
    // One more than expected, so that the first read already reaches the end.
    std::vector<std::uint8_t> bytes(expectedBytes + 1);
    std::size_t filled = 0;
    for (;;) {
        filled += std::fread(bytes.data() + filled, 1, bytes.size() - filled, file);
        if (std::ferror(file))
            return lastReadError();
        if (filled < bytes.size())
            break;
        if (filled > kMaxFileBytes)
            return fileTooLarge();
        bytes.resize(2 * filled);
    }
    bytes.resize(filled);
    return bytes;
}

Result<std::vector<std::uint8_t>> readWholeFile(const std::string& path) try {
    if (auto refusal = refusalOfPath(path))
        return *std::move(refusal);
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return lastReadError();
    std::error_code ignored;
    const std::uintmax_t expected = std::filesystem::file_size(path, ignored);
    return readToEnd(file.get(), ignored ? 0 : static_cast<std::size_t>(expected));
} catch (const std::bad_alloc&) {
    return Error{ErrorCode::TooLarge, "there is no memory to read it"};
}

std::string pixelsText(int widthPx, int heightPx) {
    return std::to_string(widthPx) + " x " + std::to_string(heightPx);
}

ImagePtr refused(const std::string& subject, const Error& error) {
    log(LogLevel::Error, subject + " is not shown: " + error.detail);
    return nullptr;
}

void logLosses(const std::string& subject, const DecodedPicture& picture, int maxSidePx) {
    if (!picture.warning.empty())
        log(LogLevel::Warning, subject + " is shown although damaged: " + picture.warning);
    const PixelStorage& pixels = picture.pixels;
    if (pixels.widthPx == picture.sourceWidthPx && pixels.heightPx == picture.sourceHeightPx)
        return;
    log(LogLevel::Warning, subject + " is scaled down from " +
                               pixelsText(picture.sourceWidthPx, picture.sourceHeightPx) + " to " +
                               pixelsText(pixels.widthPx, pixels.heightPx) +
                               " pixels to fit the limit of " + std::to_string(maxSidePx));
}

using ReadAgain = std::function<Result<std::vector<std::uint8_t>>()>;

/// Decodes again and checks the size, because a file may have changed in the meantime.
PixelSource sourceOf(const std::string& subject, const ReadAgain& readAgain, DecodeLimits limits,
                     SizePx size) {
    return [=]() -> std::optional<PixelStorage> {
        const auto cannot = [&](const std::string& why) {
            log(LogLevel::Error, subject + " cannot be had again: " + why);
            return std::nullopt;
        };
        const Result<std::vector<std::uint8_t>> encoded = readAgain();
        if (!encoded)
            return cannot(encoded.error().detail);
        Result<DecodedPicture> picture = decodePicture(encoded.value(), limits);
        if (!picture)
            return cannot(picture.error().detail);
        PixelStorage pixels = std::move(picture).value().pixels;
        if (SizePx{pixels.widthPx, pixels.heightPx} != size)
            return cannot("it is of another size now");
        return pixels;
    };
}

ImagePtr decoded(const std::string& subject, std::span<const std::uint8_t> encoded,
                 const ReadAgain& readAgain) {
    const DecodeLimits limits = processLimits();
    Result<DecodedPicture> picture = decodePicture(encoded, limits);
    if (!picture)
        return refused(subject, picture.error());
    logLosses(subject, picture.value(), limits.maxSidePx);
    PixelStorage pixels = std::move(picture).value().pixels;
    PixelSource source = sourceOf(subject, readAgain, limits, {pixels.widthPx, pixels.heightPx});
    return std::make_shared<const Image>(std::move(pixels), std::move(source));
}

} // namespace

// Neither a vector nor make_unique: both would write every byte before the decoder does.
PixelStorage::PixelStorage(int width, int height)
    : widthPx(width), heightPx(height), bytes(new std::uint8_t[size()]) {}

Image::Image(PixelStorage pixels, double scale)
    : pixels_(std::move(pixels)), size_{pixels_.widthPx, pixels_.heightPx}, scale_(scale) {}

Image::Image(PixelStorage pixels, PixelSource source)
    : pixels_(std::move(pixels)), size_{pixels_.widthPx, pixels_.heightPx},
      source_(std::move(source)) {}

std::span<const std::uint8_t> Image::pixels() const {
    if (!pixels_.bytes && source_) {
        if (auto again = source_())
            pixels_ = *std::move(again);
    }
    if (!pixels_.bytes)
        return {};
    return {pixels_.bytes.get(), pixels_.size()};
}

void Image::giveBackPixels() const {
    if (source_)
        pixels_.bytes.reset();
}

ImagePtr Image::imageWithContentsOfFile(const std::string& path) {
    const std::string subject = "image \"" + path + "\"";
    const Result<std::vector<std::uint8_t>> encoded = readWholeFile(path);
    if (!encoded)
        return refused(subject, encoded.error());
    return decoded(subject, encoded.value(), [path] { return readWholeFile(path); });
}

ImagePtr Image::imageWithData(std::span<const std::uint8_t> encoded) {
    // A copy, because the caller's bytes need not outlive the call. It is a fraction of the pixels'
    // size.
    const auto kept =
        std::make_shared<const std::vector<std::uint8_t>>(encoded.begin(), encoded.end());
    return decoded("image in memory", encoded,
                   [kept] { return Result<std::vector<std::uint8_t>>(*kept); });
}

DecodeLimits Image::decodeLimits() {
    return processLimits();
}

void Image::setDecodeLimits(DecodeLimits limits) {
    processLimits() = limits;
}

} // namespace platform
