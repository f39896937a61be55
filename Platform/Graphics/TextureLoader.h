#pragma once

#include "Platform/Graphics/TextureInfo.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace platform {

class GLContext;

/// Turns pictures into textures: linear filtering, clamped to the edge, no mipmaps, the picture's
/// first row at v = 0. A picture over the context's limit is scaled down to fit, with a log line.
///
/// A picture becomes one texture however many loaders are asked for it.
///
/// Thread: main.
class TextureLoader {
public:
    /// The texture; or null, and what went wrong.
    struct Upload {
        std::shared_ptr<TextureInfo> texture;
        /// GL's error code; 0 where the picture has no pixels, or none any more.
        std::uint32_t glError = 0;
        /// The loader's context is no longer the host's: nothing was tried.
        bool contextIsGone = false;
    };
    using Completion = std::function<void(Upload)>;

    explicit TextureLoader(std::shared_ptr<GLContext> context);

    /// Uploads in a later turn of the main queue and completes there, even when the loader has
    /// gone by then. The picture's pixels are given back once the texture holds them.
    void textureWithImage(ImagePtr image, Completion completion);

    /// A picture whose colours are multiplied by its alpha, so that filtering does not bring in
    /// what lies under transparent parts; made at once. The context is current.
    [[nodiscard]] static Upload premultipliedTexture(const std::shared_ptr<GLContext>& context,
                                                     const Image& image);

    /// One transparent pixel, made at once. The context is current.
    [[nodiscard]] static std::shared_ptr<TextureInfo>
    transparentTexture(const std::shared_ptr<GLContext>& context);

private:
    std::shared_ptr<GLContext> context_;
};

} // namespace platform
