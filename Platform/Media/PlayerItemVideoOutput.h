#pragma once

#include "Platform/Foundation/Object.h"
#include "Platform/Imaging/PixelBuffer.h"
#include "Platform/Media/MediaTime.h"

#include <cstdint>
#include <memory>

namespace platform {

class PlayerItem;

/// What pictures are asked for. 0 x 0 means their natural size.
struct PixelBufferAttributes {
    std::uint32_t pixelFormatType = PixelBuffer::kBiPlanarVideoRange;
    double width = 0;
    double height = 0;
};

/// Hands out an item's pictures, each when its time has come.
///
/// The pictures come in their natural size and in video range whatever is asked for.
///
/// Owner:  the item that it was added to, which it holds weakly, and whoever made it.
/// Thread: main.
class PlayerItemVideoOutput : public Object {
public:
    explicit PlayerItemVideoOutput(PixelBufferAttributes attributes) : attributes_(attributes) {}
    [[nodiscard]] const PixelBufferAttributes& attributes() const { return attributes_; }

    /// Where the item is when the host's clock shows that many seconds; invalid without an item.
    [[nodiscard]] MediaTime itemTimeForHostTime(double hostSeconds) const;
    /// Whether the picture for that time is another one than was copied last.
    [[nodiscard]] bool hasNewPixelBufferForItemTime(MediaTime itemTime);
    /// The picture for that time, shared, not copied. Null when there is none, or none that is new.
    [[nodiscard]] PixelBufferPtr copyPixelBufferForItemTime(MediaTime itemTime);

private:
    friend class PlayerItem;
    void attachToItem(std::weak_ptr<PlayerItem> item) { item_ = std::move(item); }
    [[nodiscard]] PixelBufferPtr newBufferAt(MediaTime itemTime);

    PixelBufferAttributes attributes_;
    std::weak_ptr<PlayerItem> item_;
    std::uint64_t copied_ = 0; // identity of the last picture
};

} // namespace platform
