#pragma once

#include "HVViewer/Model/QuadMask.h"
#include "Platform/Imaging/Image.h"

#include <functional>
#include <memory>
#include <string_view>

/// The picture drawn over all content, wrapped over the same mesh: 4096 × 2048, mostly transparent.
struct Watermark {
    platform::ImagePtr picture;
    /// The quads of the sphere on which any of it shows.
    QuadMask coverage;
};

/// The built-in watermark, decoded by the first call and kept as long as the program.
///
/// Thread: any.
/// Errors: null when the built-in text cannot be decoded.
[[nodiscard]] const Watermark* builtInWatermark();

/// The same for whoever cannot wait: it is decoded away from the main thread, so that the content
/// is not kept from the screen, and handed over in a later turn.
void requestBuiltInWatermark(std::function<void(const Watermark*)> completion);

/// The built-in watermark's picture once more, kept by nobody else.
///
/// Thread: any.
/// Errors: null when the built-in text cannot be decoded.
[[nodiscard]] platform::ImagePtr decodeBuiltInWatermark();

/// Decodes a picture from base64 text. Errors: null, without a word.
[[nodiscard]] platform::ImagePtr decodeWatermark(std::string_view base64);

/// The quads of the sphere on which a picture wrapped over it, linearly filtered, is not
/// transparent.
[[nodiscard]] QuadMask opaqueQuads(const platform::Image& picture);

/// Marks the quads that a texel of a picture of that size reaches when it is filtered.
void markQuadsAround(QuadMask& mask, platform::SizePx size, int x, int y);
