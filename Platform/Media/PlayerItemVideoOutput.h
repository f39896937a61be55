#pragma once

#include "Platform/Foundation/Object.h"
#include "Platform/Imaging/PixelBuffer.h"
#include "Platform/Media/MediaTime.h"

#include <cstdint>
#include <memory>

namespace platform {

class PlayerItem;

/// The requested format of frames. 0 × 0 means their natural size.
struct PixelBufferAttributes {
    std::uint32_t pixelFormatType = PixelBuffer::kBiPlanarVideoRange;
    double width = 0;
    double height = 0;
};

/// Provides an item's frames, each when its time has come.
///
/// Frames have their natural size and are in video range, whatever the attributes request.
///
/// Owner:  its creator, and the item that it was added to; it references the item weakly.
/// Thread: main.
class PlayerItemVideoOutput : public Object {
public:
    explicit PlayerItemVideoOutput(PixelBufferAttributes attributes) : attributes_(attributes) {}
    [[nodiscard]] const PixelBufferAttributes& attributes() const { return attributes_; }

    /// The item's position when the host's clock shows that many seconds; invalid without an item.
    [[nodiscard]] MediaTime itemTimeForHostTime(double hostSeconds) const;
    /// Whether the frame for that time differs from the one that was copied last.
    [[nodiscard]] bool hasNewPixelBufferForItemTime(MediaTime itemTime);
    /// The frame for that time, shared and not copied. Null when there is none or none that is new.
    [[nodiscard]] PixelBufferPtr copyPixelBufferForItemTime(MediaTime itemTime);

private:
    friend class PlayerItem;
    void attachToItem(std::weak_ptr<PlayerItem> item) { item_ = std::move(item); }
    [[nodiscard]] PixelBufferPtr newBufferAt(MediaTime itemTime);

    PixelBufferAttributes attributes_;
    std::weak_ptr<PlayerItem> item_;
    std::uint64_t copied_ = 0; // identity of the last frame
};

} // namespace platform
