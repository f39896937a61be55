#pragma once

#include "Platform/Foundation/Geometry.h"

#include <cstdint>
#include <memory>

namespace platform {

class GLContext;

/// A texture that is deleted with its last holder, unless its context has gone before it: linear
/// filtering, clamped to the edge, no mipmaps.
///
/// Thread: main.
class TextureInfo {
public:
    /// A texture without pixels, bound to the active unit. The context is current.
    TextureInfo(std::shared_ptr<GLContext> context, SizePx size);
    ~TextureInfo();
    TextureInfo(const TextureInfo&) = delete;
    TextureInfo& operator=(const TextureInfo&) = delete;

    /// The GL texture name, never 0.
    [[nodiscard]] std::uint32_t name() const { return name_; }
    [[nodiscard]] SizePx size() const { return size_; }

    /// Makes the storage anew and fills it; `format` is GL's, such as GL_RGBA, of bytes. Rows begin
    /// at v = 0 and lie as the unpack row length says. The texture is bound to the active unit.
    ///
    /// Errors: GL's code, 0 for none.
    [[nodiscard]] std::uint32_t define(std::uint32_t format, const std::uint8_t* pixels) const;
    /// Fills the storage that a definition of the same format has made.
    void refill(std::uint32_t format, const std::uint8_t* pixels) const;

private:
    std::shared_ptr<GLContext> context_;
    std::uint32_t name_ = 0;
    SizePx size_;
};

} // namespace platform
