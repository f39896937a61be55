#pragma once

#include "HVViewer/Model/QuadMask.h"
#include "Platform/Imaging/Image.h"

#include <functional>
#include <memory>
#include <string_view>

/// The longer side of the built-in watermark image, which is twice as wide as high.
inline constexpr int kWatermarkSidePx = 4096;

/// The image that is drawn over all content, on the same mesh. It is mostly transparent.
struct Watermark {
    platform::ImagePtr picture;
    /// The quads of the sphere on which any part of it shows.
    QuadMask coverage;
};

/// Returns the built-in watermark, scaled down to `maxSidePx` if a side is longer. The first call
/// for a size decodes it, and it is kept until the process ends. Do not call this while
/// `setWatermarkText` runs.
///
/// Thread: any; thread-safe.
/// Errors: returns null if the built-in text cannot be decoded.
[[nodiscard]] const Watermark* builtInWatermark(int maxSidePx = kWatermarkSidePx);

/// The same without blocking: the image is decoded on a worker thread, so that the content appears
/// without delay, and `completion` runs in a later iteration of the main queue.
///
/// Thread: main.
void requestBuiltInWatermark(int maxSidePx, std::function<void(const Watermark*)> completion);

/// Decodes the built-in watermark into a new image, scaled down to `maxSidePx`. Do not call this
/// while `setWatermarkText` runs.
///
/// Thread: any; thread-safe.
/// Errors: returns null if the built-in text cannot be decoded.
[[nodiscard]] platform::ImagePtr decodeBuiltInWatermark(int maxSidePx = kWatermarkSidePx);

/// The base64 text from which later requests decode the watermark.
[[nodiscard]] std::string_view watermarkText();
/// Replaces the text, which must stay valid until the process ends. An empty text restores the
/// built-in one. If the text is not an image there is no watermark.
///
/// Thread: main.
void setWatermarkText(std::string_view base64);

/// Decodes an image from base64 text and scales it down to `maxSidePx`.
///
/// Errors: returns null without logging.
[[nodiscard]] platform::ImagePtr decodeWatermark(std::string_view base64,
                                                 int maxSidePx = kWatermarkSidePx);

/// Returns the quads of the sphere on which an image that is wrapped over it, with linear
/// filtering, is not fully transparent.
[[nodiscard]] QuadMask opaqueQuads(const platform::Image& picture);

/// Marks the quads that are affected by the texel (x, y) of an image of that size, with linear
/// filtering.
void markQuadsAround(QuadMask& mask, platform::SizePx size, int x, int y);
