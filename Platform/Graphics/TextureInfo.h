#pragma once

#include "Platform/Foundation/Geometry.h"

#include <cstdint>
#include <memory>

namespace platform {

class GLContext;

/// A texture with linear filtering, clamped to the edge, without mipmaps. The last reference
/// deletes its GL name, unless its context has been lost before.
///
/// Thread: main.
class TextureInfo {
public:
    /// Creates a texture without pixels and binds it to the active unit. Precondition: the context
    /// is current.
    TextureInfo(std::shared_ptr<GLContext> context, SizePx size);
    ~TextureInfo();
    TextureInfo(const TextureInfo&) = delete;
    TextureInfo& operator=(const TextureInfo&) = delete;

    /// The GL texture name, never 0.
    [[nodiscard]] std::uint32_t name() const { return name_; }
    [[nodiscard]] SizePx size() const { return size_; }

    /// Allocates the storage and fills it. `format` is GL's, such as GL_RGBA, of bytes. The first
    /// row is at v = 0; the unpack row length applies. Precondition: the texture is bound to the
    /// active unit.
    ///
    /// Errors: GL's error code, 0 for none.
    [[nodiscard]] std::uint32_t define(std::uint32_t format, const std::uint8_t* pixels) const;
    /// Fills the storage that `define` has allocated with the same format. It has the same
    /// precondition.
    void refill(std::uint32_t format, const std::uint8_t* pixels) const;

private:
    std::shared_ptr<GLContext> context_;
    std::uint32_t name_ = 0;
    SizePx size_;
};

} // namespace platform
