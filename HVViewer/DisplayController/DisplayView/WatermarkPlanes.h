#pragma once

#include "HVViewer/Model/QuadMask.h"
#include "Platform/Graphics/PixelBuffer.h"

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

/// The built-in watermark, made by the first call and kept as long as the program.
///
/// Thread: any.
/// Errors: null when the built-in text cannot be decoded.
[[nodiscard]] const WatermarkPlanes* builtInWatermarkPlanes();

/// The same for whoever cannot wait: it is made away from the main thread and handed over in a
/// later turn.
void requestBuiltInWatermarkPlanes(std::function<void(const WatermarkPlanes*)> completion);

/// A picture over black as a frame of video, by the inverse of the matrix that the frame is shown
/// with: where it is transparent it adds nothing.
[[nodiscard]] platform::PixelBufferPtr planesOverBlack(const platform::Image& picture);

/// The quads of the sphere on which a frame wrapped over it, linearly filtered, is not black.
[[nodiscard]] QuadMask quadsThatShow(const platform::PixelBuffer& frame);
