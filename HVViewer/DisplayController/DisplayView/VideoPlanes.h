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

/// What a drawer shows of a video: the two planes of the frame, and those of the watermark, as
/// textures.
///
/// Owner:  the drawer.
/// Thread: main, with the GL context current.
class VideoPlanes {
public:
    /// Errors: a log line when the cache cannot be made; frames are refused then.
    void prepareTextureCacheIfNeeded(const std::shared_ptr<platform::GLContext>& context);
    [[nodiscard]] bool hasTextureCache() const { return videoTextureCache_ != nullptr; }

    /// Takes a frame in place of the earlier one, to units 0 and 1, and the watermark to 2 and 3.
    ///
    /// Errors: a log line for a plane that cannot be turned into a texture.
    void upload(const platform::PixelBufferPtr& frame);
    /// From now on there is a watermark.
    void setWatermark(const WatermarkPlanes& watermark);
    /// Lets go of the four textures.
    void cleanUpTextures();
    /// Lets go of everything.
    void reset();

    /// Both planes of a frame are there.
    [[nodiscard]] bool hasFrame() const { return frame_[0] && frame_[1]; }
    [[nodiscard]] bool hasWatermark() const {
        return watermarkTextures_[0] && watermarkTextures_[1];
    }
    /// Where the watermark shows; null while there is none.
    [[nodiscard]] const QuadMask* watermarkCoverage() const;
    /// Binds the frame to units 0 and 1, the watermark to 2 and 3: others may have used the units.
    void bindTextures() const;

private:
    /// Luma and chroma.
    using Textures = std::array<std::shared_ptr<platform::TextureInfo>, 2>;
    [[nodiscard]] Textures texturesOf(const platform::PixelBufferPtr& buffer,
                                      std::uint32_t firstUnit) const;

    std::unique_ptr<platform::TextureCache> videoTextureCache_;
    Textures frame_;
    Textures watermarkTextures_;
    const WatermarkPlanes* watermark_ = nullptr; // the program's
};
