#pragma once

#include "Platform/Imaging/ImageDecoder.h"
#include "Tests/Support/PictureFiles.h"

#include <functional>

/// What every picture decoder must stand, whatever its format.
namespace tests {

/// The decoded picture; a failed expectation and one white pixel where it is refused.
[[nodiscard]] TestPicture decodedBy(const platform::ImageDecoder& decoder, const Bytes& file,
                                    const platform::DecodeLimits& limits = {});

/// The code of the refusal; a failed expectation where the file is decoded.
[[nodiscard]] platform::ErrorCode refusalBy(const platform::ImageDecoder& decoder,
                                            const Bytes& file,
                                            const platform::DecodeLimits& limits = {});

/// Every file cut short is Corrupt, or no longer sniffed.
void expectCutShortIsCorrupt(const platform::ImageDecoder& decoder, const Bytes& file);

/// Orientations 1 to 8, of the EXIF block that `fileWith` puts into a file of that picture. A
/// channel may differ by `tolerance`.
void expectOrientationsApplied(
    const platform::ImageDecoder& decoder, int tolerance,
    const std::function<Bytes(const TestPicture& picture, const Bytes& exif)>& fileWith);

/// Overwrites bytes at random, `count` times anew: whatever comes out keeps the limits. `repair`
/// may put checksums right.
void expectMutationsAreHarmless(const platform::ImageDecoder& decoder, const Bytes& file, int count,
                                const std::function<void(Bytes&)>& repair = {});

} // namespace tests
