#include "Platform/Imaging/PixelBuffer.h"

#include <atomic>
#include <utility>

namespace platform {
namespace {

std::uint64_t nextIdentity() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

} // namespace

PixelBuffer::PixelBuffer(SizePx size, std::array<Plane, 2> planes,
                         std::shared_ptr<const void> memory)
    : size_(size), planes_(planes), memory_(std::move(memory)), identity_(nextIdentity()) {}

std::shared_ptr<const PixelBuffer> PixelBuffer::wrap(SizePx size, Plane luma, Plane chroma,
                                                     std::shared_ptr<const void> memory) {
    return std::shared_ptr<const PixelBuffer>(
        new PixelBuffer(size, {luma, chroma}, std::move(memory)));
}

} // namespace platform
