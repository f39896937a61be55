#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/Image.h"

#include <array>
#include <cstdint>
#include <memory>

namespace platform {

/// A framebuffer with one 8-bit RGBA texture, without depth buffer and multisampling. It is
/// transparent black at first.
///
/// It is bound while it lives. The destructor restores the framebuffer that was bound before and
/// the viewport.
///
/// Thread: main, with the GL context current.
class ZANTO_EXPORT OffscreenTarget {
public:
    /// Errors: TooLarge (a side is 0 or over the context's limit), Unavailable (GL refuses it).
    [[nodiscard]] static Result<std::unique_ptr<OffscreenTarget>> create(SizePx size);
    ~OffscreenTarget();
    OffscreenTarget(const OffscreenTarget&) = delete;
    OffscreenTarget& operator=(const OffscreenTarget&) = delete;

    [[nodiscard]] std::uint32_t framebuffer() const { return framebuffer_; }
    [[nodiscard]] SizePx size() const { return size_; }

    /// Fills it with transparent black; binds the framebuffer.
    void clear() const;
    /// Returns what has been drawn, top row first, with the alpha that GL has written.
    [[nodiscard]] PixelStorage readPixels() const;

private:
    explicit OffscreenTarget(SizePx size);

    SizePx size_;
    std::uint32_t framebuffer_ = 0;
    std::uint32_t texture_ = 0;
    int previous_ = 0;
    std::array<int, 4> previousViewport_{};
    std::uint32_t generation_;
};

} // namespace platform
