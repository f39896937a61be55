#include "Platform/Media/PlayerItemVideoOutput.h"

#include "Platform/Media/PlayerItem.h"

namespace platform {

MediaTime PlayerItemVideoOutput::itemTimeForHostTime(double hostSeconds) const {
    const auto item = item_.lock();
    return item ? item->timeAtHostTime(hostSeconds) : MediaTime{};
}

PixelBufferPtr PlayerItemVideoOutput::newBufferAt(MediaTime itemTime) {
    const auto item = item_.lock();
    const auto frame = item ? item->frameAt(itemTime) : std::nullopt;
    return frame && frame->pixels->identity() != copied_ ? frame->pixels : nullptr;
}

bool PlayerItemVideoOutput::hasNewPixelBufferForItemTime(MediaTime itemTime) {
    return newBufferAt(itemTime) != nullptr;
}

PixelBufferPtr PlayerItemVideoOutput::copyPixelBufferForItemTime(MediaTime itemTime) {
    auto buffer = newBufferAt(itemTime);
    if (buffer)
        copied_ = buffer->identity();
    return buffer;
}

} // namespace platform
