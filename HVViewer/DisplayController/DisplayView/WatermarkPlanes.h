#pragma once

#include "HVViewer/DisplayController/DisplayView/WatermarkPicture.h"
#include "HVViewer/Model/QuadMask.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <functional>

namespace platform {
class Image;
}

/// The watermark as a frame of video has to be: added to the content, it has the colours that the
/// picture has over black.
struct WatermarkPlanes {
    platform::PixelBufferPtr buffer;
    /// The quads of the sphere on which it adds anything.
    QuadMask coverage;
};

/// The built-in watermark, scaled down where a side would exceed `maxSidePx`. The first call for a
/// size makes it; it is kept until the process ends.
///
/// Thread: any, but not while `setWatermarkText` runs.
/// Errors: null when the built-in text cannot be decoded.
[[nodiscard]] const WatermarkPlanes* builtInWatermarkPlanes(int maxSidePx = kWatermarkSidePx);

/// The same without blocking: it is made on another thread and passed to `completion` in a later
/// turn. Thread: main.
void requestBuiltInWatermarkPlanes(int maxSidePx,
                                   std::function<void(const WatermarkPlanes*)> completion);

/// A picture over black as a frame of video, by the inverse of the matrix that the frame is shown
/// with: where it is transparent it adds nothing.
[[nodiscard]] platform::PixelBufferPtr planesOverBlack(const platform::Image& picture);

/// The quads of the sphere on which a frame wrapped over it, linearly filtered, is not black.
[[nodiscard]] QuadMask quadsThatShow(const platform::PixelBuffer& frame);
