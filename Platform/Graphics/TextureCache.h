#pragma once

#include "Platform/Graphics/TextureInfo.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <cstdint>
#include <memory>

namespace platform {

class GLContext;

/// Turns the planes of pixel buffers into textures: linear filtering, clamped to the edge, the
/// first row at v = 0.
///
/// A plane is uploaded once for all caches of the process, and its texture is kept as long as the
/// buffer may be shown again; afterwards its storage takes a plane of a later buffer. So whoever
/// lets go of the textures of a frame, flushes, and asks for those of the next one, keeps two sets
/// going: one is filled while the other may still be drawn from.
///
/// Owner:  whoever shows video. With the last cache the textures that nobody holds go too.
/// Thread: main.
class TextureCache {
public:
    /// A status that is not GL's: the context has been taken away.
    static constexpr std::int32_t kNoContext = -1;

    /// The cache, or null and a status.
    struct Creation;
    [[nodiscard]] static Creation create(const std::shared_ptr<GLContext>& context);
    ~TextureCache();
    TextureCache(const TextureCache&) = delete;
    TextureCache& operator=(const TextureCache&) = delete;

    /// The texture, or null and a status: GL's error code, or `kNoContext`.
    struct Plane {
        std::shared_ptr<TextureInfo> texture;
        std::int32_t status = 0;
    };
    /// A plane as a texture, which is bound to the active unit.
    ///
    /// `planeIndex` is 0 or 1, `format` GL's, GL_LUMINANCE or GL_LUMINANCE_ALPHA, of bytes; `size`
    /// is at least 1 × 1 and at most what the plane holds.
    [[nodiscard]] Plane createTextureFromImage(const PixelBufferPtr& buffer, int planeIndex,
                                               std::uint32_t format, SizePx size);

    /// Frees storage that nothing has been put into for a while. Once a frame.
    void flush();

    /// How many planes the environment's caches have uploaded so far.
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
