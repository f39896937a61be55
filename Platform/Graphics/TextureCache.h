#pragma once

#include "Platform/Graphics/TextureInfo.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <cstdint>
#include <memory>

namespace platform {

class GLContext;

/// Uploads the planes of pixel buffers to textures: linear filtering, clamped to the edge, first
/// row at v = 0.
///
/// A plane is uploaded once for all caches of the environment. Its texture is kept while the pixel
/// buffer lives, because the buffer may be shown again; afterwards the texture's storage is reused
/// for a plane of a later buffer. A caller that releases the textures of a frame, calls `flush()`
/// and then requests those of the next frame therefore alternates between two sets of textures: one
/// is filled while the other may still be drawn from.
///
/// Owner:  the code that shows the video. The destructor of the last cache also drops the textures
///         that are not in use.
/// Thread: main.
class TextureCache {
public:
    /// A status that is not a GL error code: the context has been removed.
    static constexpr std::int32_t kNoContext = -1;

    /// The cache, or null and a status.
    struct Creation;
    [[nodiscard]] static Creation create(const std::shared_ptr<GLContext>& context);
    ~TextureCache();
    TextureCache(const TextureCache&) = delete;
    TextureCache& operator=(const TextureCache&) = delete;

    /// The texture, or null and a status: a GL error code or `kNoContext`.
    struct Plane {
        std::shared_ptr<TextureInfo> texture;
        std::int32_t status = 0;
    };
    /// Returns a plane as a texture, which is bound to the active unit.
    ///
    /// `planeIndex` is 0 or 1; `format` is GL_LUMINANCE or GL_LUMINANCE_ALPHA, of bytes; `size` is
    /// at least 1 × 1 and at most the size of the plane.
    [[nodiscard]] Plane createTextureFromImage(const PixelBufferPtr& buffer, int planeIndex,
                                               std::uint32_t format, SizePx size);

    /// Frees storage that has not been reused for a while. Call it once per frame.
    void flush();

    /// The number of planes that the environment's caches have uploaded so far.
    [[nodiscard]] static std::uint64_t uploadedPlanes();

private:
    class Uploads;
    struct Shared;
    [[nodiscard]] static Shared& shared();
    explicit TextureCache(std::shared_ptr<GLContext> context);

    std::shared_ptr<GLContext> context_;
    std::shared_ptr<Uploads> uploads_;
};

struct TextureCache::Creation {
    std::unique_ptr<TextureCache> cache;
    std::int32_t status = 0;
};

} // namespace platform
