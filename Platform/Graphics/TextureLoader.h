#pragma once

#include "Platform/Graphics/TextureInfo.h"
#include "Platform/Imaging/Image.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace platform {

class GLContext;

/// Uploads images to textures: linear filtering, clamped to the edge, no mipmaps, first row at v =
/// 0. An image over the context's limit is scaled down to fit, with a log line.
///
/// All loaders of the environment share one texture per image.
///
/// Thread: main.
class TextureLoader {
public:
    /// The texture, or null and the cause.
    struct Upload {
        std::shared_ptr<TextureInfo> texture;
        /// GL's error code; 0 where the image has no pixels or they cannot be decoded again.
        std::uint32_t glError = 0;
        /// The loader's context is no longer the host's, so nothing was uploaded.
        bool contextIsGone = false;
    };
    using Completion = std::function<void(Upload)>;

    explicit TextureLoader(std::shared_ptr<GLContext> context);

    /// Uploads in a later loop iteration of the main queue and calls the completion there, even if
    /// the loader has been destroyed by then. The image frees its pixels once the texture has them.
    void textureWithImage(ImagePtr image, Completion completion);

    /// Uploads an image at once, with its colours multiplied by its alpha, so that filtering does
    /// not blend in the colours of transparent pixels. Precondition: the context is current.
    [[nodiscard]] static Upload premultipliedTexture(const std::shared_ptr<GLContext>& context,
                                                     const Image& image);

    /// Creates a texture of one transparent pixel at once. Precondition: the context is current.
    [[nodiscard]] static std::shared_ptr<TextureInfo>
    transparentTexture(const std::shared_ptr<GLContext>& context);

private:
    std::shared_ptr<GLContext> context_;
};

} // namespace platform
