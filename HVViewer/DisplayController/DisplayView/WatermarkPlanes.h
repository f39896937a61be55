#pragma once

#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/Model/QuadMask.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <functional>

namespace platform {
class Image;
}

/// The watermark as a video frame. It is added to the content, so its colours are those of the
/// image over black.
struct WatermarkPlanes {
    platform::PixelBufferPtr buffer;
    /// The quads of the sphere on which it is not black.
    QuadMask coverage;
};

/// Returns the built-in watermark, scaled down to `maxSidePx` if a side is longer. The first call
/// for a size makes it, and it is kept until the process ends. Do not call this while
/// `setWatermarkText` runs.
///
/// Thread: any; thread-safe.
/// Errors: returns null if the built-in text cannot be decoded.
[[nodiscard]] const WatermarkPlanes* builtInWatermarkPlanes(int maxSidePx = kWatermarkSidePx);

/// The same without blocking: the frame is made on a worker thread, and `completion` runs in a
/// later iteration of the main queue.
///
/// Thread: main.
void requestBuiltInWatermarkPlanes(int maxSidePx,
                                   std::function<void(const WatermarkPlanes*)> completion);

/// Converts an image over black into a video frame, with the inverse of the matrix that the frame
/// is shown with. Transparent pixels add nothing to the content.
[[nodiscard]] platform::PixelBufferPtr planesOverBlack(const platform::Image& picture);

/// Returns the quads of the sphere on which a frame that is wrapped over it, with linear filtering,
/// is not black.
[[nodiscard]] QuadMask quadsThatShow(const platform::PixelBuffer& frame);
