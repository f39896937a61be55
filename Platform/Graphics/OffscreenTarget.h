#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/Image.h"

#include <array>
#include <cstdint>
#include <memory>

namespace platform {

/// A framebuffer of our own with one 8-bit RGBA picture behind it, no depth, no multisampling,
/// transparent black at first.
///
/// While it lives it is bound; the framebuffer that was bound before comes back with its end, and
/// the viewport with it.
///
/// Thread: main, with the GL context current.
class ZANTO_EXPORT OffscreenTarget {
public:
    /// Errors: TooLarge (a side is 0 or over the context's limit), Unavailable (GL refused it).
    [[nodiscard]] static Result<std::unique_ptr<OffscreenTarget>> create(SizePx size);
    ~OffscreenTarget();
    OffscreenTarget(const OffscreenTarget&) = delete;
    OffscreenTarget& operator=(const OffscreenTarget&) = delete;

    [[nodiscard]] std::uint32_t framebuffer() const { return framebuffer_; }
    [[nodiscard]] SizePx size() const { return size_; }

    /// Transparent black all over; binds the framebuffer.
    void clear() const;
    /// What has been drawn, its top row first, alpha as GL left it.
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
