#pragma once

#include "HVViewer/Model/QuadMask.h"
#include "Platform/Imaging/Image.h"

#include <functional>
#include <memory>
#include <string_view>

/// The longer side of the built-in picture, which is twice as wide as high.
inline constexpr int kWatermarkSidePx = 4096;

/// The picture drawn over all content, wrapped over the same mesh; mostly transparent.
struct Watermark {
    platform::ImagePtr picture;
    /// The quads of the sphere on which any of it shows.
    QuadMask coverage;
};

/// The built-in watermark, scaled down where a side would exceed `maxSidePx`. The first call for a
/// size decodes it; it is kept until the process ends.
///
/// Thread: any, but not while `setWatermarkText` runs.
/// Errors: null when the built-in text cannot be decoded.
[[nodiscard]] const Watermark* builtInWatermark(int maxSidePx = kWatermarkSidePx);

/// The same without blocking: it is decoded on another thread, so that the content appears at
/// once, and passed to `completion` in a later turn. Thread: main.
void requestBuiltInWatermark(int maxSidePx, std::function<void(const Watermark*)> completion);

/// Decodes the built-in watermark into a picture of its own, scaled down to `maxSidePx`.
///
/// Thread: any, but not while `setWatermarkText` runs.
/// Errors: null when the built-in text cannot be decoded.
[[nodiscard]] platform::ImagePtr decodeBuiltInWatermark(int maxSidePx = kWatermarkSidePx);

/// The base64 text that is decoded for watermarks requested from now on.
[[nodiscard]] std::string_view watermarkText();
/// Replaces it; an empty text restores the built-in one. Text that is no picture means no
/// watermark. It must stay valid until the process ends. Thread: main.
void setWatermarkText(std::string_view base64);

/// Decodes a picture from base64 text and scales it down to `maxSidePx`. Errors: null, and no log
/// line.
[[nodiscard]] platform::ImagePtr decodeWatermark(std::string_view base64,
                                                 int maxSidePx = kWatermarkSidePx);

/// The quads of the sphere on which a picture wrapped over it, linearly filtered, is not
/// transparent.
[[nodiscard]] QuadMask opaqueQuads(const platform::Image& picture);

/// Marks the quads on which linear filtering shows a texel of a picture of that size.
void markQuadsAround(QuadMask& mask, platform::SizePx size, int x, int y);
