#include "Fuzz/FilledMemory.h"
#include "Fuzz/Property.h"
#include "Fuzz/Targets.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <string_view>

namespace fuzz {
namespace {

using platform::DecodedPicture;
using platform::DecodeLimits;
using platform::ErrorCode;
using platform::PixelStorage;
using Decoded = platform::Result<DecodedPicture>;

constexpr DecodeLimits kRoomy{.maxSidePx = 0, .maxBytes = std::size_t{1} << 22};
constexpr DecodeLimits kTight{.maxSidePx = 16, .maxBytes = std::size_t{1} << 14};

/// libFuzzer treats these counters as coverage. The format libraries are not instrumented, so their
/// error messages tell how far an input has got in them.
[[gnu::section("__libfuzzer_extra_counters"), gnu::used]] std::array<std::uint8_t, 4096> complaints;

void countComplaint(std::string_view text) {
    std::uint32_t hash = 2'166'136'261; // FNV-1a
    for (const char c : text) {
        const auto byte = static_cast<std::uint8_t>(c);
        if (std::isdigit(byte) == 0)
            hash = (hash ^ byte) * 16'777'619;
    }
    ++complaints[hash % complaints.size()];
}

std::string_view formatOf(Bytes file) {
    for (const auto* const decoder : platform::imageDecoders()) {
        if (decoder->sniff(file))
            return decoder->name();
    }
    return {};
}

Decoded decodedOver(std::uint8_t fill, Bytes file, const DecodeLimits& limits) {
    const FilledMemory filled(fill);
    return platform::decodePicture(file, limits);
}

bool isSame(const PixelStorage& one, const PixelStorage& other) {
    return one.widthPx == other.widthPx && one.heightPx == other.heightPx &&
           std::memcmp(one.bytes.get(), other.bytes.get(), one.size()) == 0;
}

bool isOpaque(const PixelStorage& pixels) {
    for (std::size_t at = 3; at < pixels.size(); at += 4) {
        if (pixels.bytes[at] != 255)
            return false;
    }
    return true;
}

void checkPixels(const DecodedPicture& picture, const DecodeLimits& limits) {
    const PixelStorage& pixels = picture.pixels;
    require(pixels.bytes != nullptr, "a picture has pixels");
    require(pixels.widthPx >= 1 && pixels.heightPx >= 1, "no picture is empty");
    require(limits.maxSidePx == 0 || std::max(pixels.widthPx, pixels.heightPx) <= limits.maxSidePx,
            "no side is over the limit");
    require(pixels.size() <= limits.maxBytes, "a picture takes no more bytes than the limit");
    require(pixels.widthPx <= picture.sourceWidthPx && pixels.heightPx <= picture.sourceHeightPx,
            "no picture grows");
}

/// Checks that every byte of the pixels is readable and initialised.
void checkOnceMore(const DecodedPicture& picture, Bytes file, const DecodeLimits& limits) {
    const Decoded again = decodedOver(0xAA, file, limits);
    require(again.ok(), "what was decoded once is decoded again");
    require(isSame(picture.pixels, again.value().pixels), "decoded again, it is the same");
}

Decoded check(Bytes file, std::string_view format, const DecodeLimits& limits) {
    Decoded decoded = decodedOver(0x55, file, limits);
    if (!decoded) {
        countComplaint(decoded.error().detail);
        requireReadable(decoded.error(), format);
        return decoded;
    }
    const DecodedPicture& picture = decoded.value();
    checkPixels(picture, limits);
    checkOnceMore(picture, file, limits);
    require(format != "JPEG" || isOpaque(picture.pixels), "a JPEG is opaque");
    if (!picture.warning.empty()) {
        countComplaint(picture.warning);
        requireReadable({ErrorCode::Corrupt, picture.warning}, "");
    }
    return decoded;
}

} // namespace

void checkPicture(Bytes input) {
    const std::string_view format = formatOf(input);
    const Decoded whole = check(input, format, kRoomy);
    const Decoded reduced = check(input, format, kTight);
    if (!whole)
        return;
    const DecodedPicture& picture = whole.value();
    require(picture.pixels.widthPx == picture.sourceWidthPx &&
                picture.pixels.heightPx == picture.sourceHeightPx,
            "without a limit of sides nothing is scaled");
    require(reduced.ok() || reduced.error().code == ErrorCode::TooLarge,
            "what can be decoded can be reduced, or is too large");
    require(!reduced.ok() || (reduced.value().sourceWidthPx == picture.sourceWidthPx &&
                              reduced.value().sourceHeightPx == picture.sourceHeightPx),
            "the size in the file is the same, reduced or not");
}

} // namespace fuzz
