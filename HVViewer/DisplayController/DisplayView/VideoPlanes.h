#pragma once

#include "Platform/Graphics/TextureCache.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <array>
#include <cstdint>
#include <memory>

class QuadMask;
struct WatermarkPlanes;

namespace platform {
class GLContext;
}

/// The textures that a drawer shows of a video: the two planes of the current frame, and the two
/// planes of the watermark.
///
/// Owner:  the drawer. The GL context must be current for every call.
/// Thread: main.
class VideoPlanes {
public:
    /// Errors: logs an error if the cache cannot be created; frames are refused then.
    void prepareTextureCacheIfNeeded(const std::shared_ptr<platform::GLContext>& context);
    [[nodiscard]] bool hasTextureCache() const { return videoTextureCache_ != nullptr; }

    /// Uploads a frame to texture units 0 and 1 in place of the previous one, and the watermark to
    /// units 2 and 3.
    ///
    /// Errors: logs an error if no texture can be made of a plane.
    void upload(const platform::PixelBufferPtr& frame);
    /// Sets the watermark, which is uploaded with the current frame and each later one.
    void setWatermark(const WatermarkPlanes& watermark);
    /// Releases the four textures.
    void cleanUpTextures();
    /// Releases the textures, the watermark and the cache.
    void reset();

    /// Whether both planes of a frame are uploaded.
    [[nodiscard]] bool hasFrame() const { return frame_[0] && frame_[1]; }
    [[nodiscard]] bool hasWatermark() const {
        return watermarkTextures_[0] && watermarkTextures_[1];
    }
    /// The quads on which the watermark shows; null if there is no watermark.
    [[nodiscard]] const QuadMask* watermarkCoverage() const;
    /// Binds the frame to units 0 and 1 and the watermark to units 2 and 3, because others may have
    /// used the units.
    void bindTextures() const;

private:
    /// Luma and chroma.
    using Textures = std::array<std::shared_ptr<platform::TextureInfo>, 2>;
    [[nodiscard]] Textures texturesOf(const platform::PixelBufferPtr& buffer,
                                      std::uint32_t firstUnit) const;

    std::unique_ptr<platform::TextureCache> videoTextureCache_;
    Textures frame_;
    Textures watermarkTextures_;
    const WatermarkPlanes* watermark_ = nullptr; // kept until the process ends
};
