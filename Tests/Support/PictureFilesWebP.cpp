#include "Tests/Support/PictureFiles.h"

#include <webp/encode.h>

#include <cstring>
#include <stdexcept>
#include <string_view>

namespace tests {
namespace {

constexpr std::size_t kFileHeaderBytes = 12;
constexpr std::size_t kExtendedHeaderBytes = 18; // a VP8X chunk with its own header
constexpr std::uint8_t kHasAlpha = 0x10;
constexpr std::uint8_t kHasExif = 0x08;
constexpr std::uint8_t kIsAnimated = 0x02;

void appendNumber(Bytes& out, std::size_t value, int count) {
    for (int i = 0; i < count; ++i)
        out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

void appendChunk(Bytes& out, std::string_view name, const Bytes& payload) {
    out.insert(out.end(), name.begin(), name.end());
    appendNumber(out, payload.size(), 4);
    out.insert(out.end(), payload.begin(), payload.end());
    if (payload.size() % 2 != 0)
        out.push_back(0);
}

Bytes riffFile(const Bytes& chunks) {
    Bytes contents{'W', 'E', 'B', 'P'};
    contents.insert(contents.end(), chunks.begin(), chunks.end());
    Bytes file;
    appendChunk(file, "RIFF", contents);
    return file;
}

void appendExtendedHeader(Bytes& out, const TestPicture& picture, std::uint8_t flags) {
    Bytes payload{flags, 0, 0, 0};
    appendNumber(payload, static_cast<std::size_t>(picture.widthPx - 1), 3);
    appendNumber(payload, static_cast<std::size_t>(picture.heightPx - 1), 3);
    appendChunk(out, "VP8X", payload);
}

/// The chunks that hold the picture itself, without an extended header.
Bytes pictureChunks(const Bytes& file) {
    const bool isExtended = std::memcmp(&file[kFileHeaderBytes], "VP8X", 4) == 0;
    const std::size_t skipped = kFileHeaderBytes + (isExtended ? kExtendedHeaderBytes : 0);
    return {file.begin() + static_cast<std::ptrdiff_t>(skipped), file.end()};
}

int append(const std::uint8_t* data, std::size_t count, const WebPPicture* picture) {
    auto* file = static_cast<Bytes*>(picture->custom_ptr);
    file->insert(file->end(), data, data + count);
    return 1;
}

Bytes plainFile(const TestPicture& picture, const WebPOptions& options) {
    WebPConfig config;
    WebPPicture source;
    if (!WebPConfigPreset(&config, WEBP_PRESET_DEFAULT, options.quality) ||
        !WebPPictureInit(&source))
        throw std::runtime_error("another version of the WebP library");
    config.lossless = options.coding == WebPCoding::Lossless;
    config.exact = 1; // else the colours under transparent pixels are changed
    config.method = 2;
    source.use_argb = config.lossless;
    source.width = picture.widthPx;
    source.height = picture.heightPx;
    source.writer = append;
    Bytes file;
    source.custom_ptr = &file;
    const auto* rgba = reinterpret_cast<const std::uint8_t*>(picture.pixels.data());
    const bool isDone =
        WebPPictureImportRGBA(&source, rgba, 4 * picture.widthPx) && WebPEncode(&config, &source);
    WebPPictureFree(&source);
    if (!isDone)
        throw std::runtime_error("the WebP library does not encode this");
    return file;
}

} // namespace

Bytes webpFile(const TestPicture& picture, const WebPOptions& options) {
    const Bytes plain = plainFile(picture, options);
    if (options.exif.empty())
        return plain;
    Bytes chunks;
    appendExtendedHeader(chunks, picture, kHasAlpha | kHasExif);
    const Bytes pixels = pictureChunks(plain);
    chunks.insert(chunks.end(), pixels.begin(), pixels.end());
    appendChunk(chunks, "EXIF", options.exif);
    return riffFile(chunks);
}

Bytes animatedWebPFile(const TestPicture& picture) {
    Bytes frame;
    appendNumber(frame, 0, 3); // left
    appendNumber(frame, 0, 3); // top
    appendNumber(frame, static_cast<std::size_t>(picture.widthPx - 1), 3);
    appendNumber(frame, static_cast<std::size_t>(picture.heightPx - 1), 3);
    appendNumber(frame, 100, 3); // milliseconds
    appendNumber(frame, 0, 1);
    const Bytes pixels = pictureChunks(plainFile(picture, {}));
    frame.insert(frame.end(), pixels.begin(), pixels.end());

    Bytes chunks;
    appendExtendedHeader(chunks, picture, kHasAlpha | kIsAnimated);
    appendChunk(chunks, "ANIM", Bytes(6, 0));
    appendChunk(chunks, "ANMF", frame);
    return riffFile(chunks);
}

} // namespace tests
