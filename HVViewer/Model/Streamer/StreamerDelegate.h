#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/PixelBuffer.h"

class ZNTStreamer;

/// The observer of a streamer.
///
/// Thread: main.
class ZANTO_EXPORT StreamerDelegate {
public:
    virtual ~StreamerDelegate() = default;

    /// A new frame is due. `buffer` may be null.
    virtual void hasNewFrame(ZNTStreamer& streamer, const platform::PixelBufferPtr& buffer) = 0;
    /// Loading or buffering begins, and ends.
    virtual void streamerWillStartLoadingItem(ZNTStreamer& /*streamer*/) {}
    virtual void streamerDidFinishLoadingItem(ZNTStreamer& /*streamer*/) {}
    virtual void didFailToLoadItemWithError(ZNTStreamer& /*streamer*/,
                                            const platform::Error& /*error*/) {}
    virtual void streamerDidPaused(ZNTStreamer& /*streamer*/) {}
    virtual void streamerDidStartPlaying(ZNTStreamer& /*streamer*/) {}
    virtual void streamerDidFinishStreamingItem(ZNTStreamer& /*streamer*/) {}
    /// Called in every tick of the player, before the frame of that tick.
    virtual void didPlayedToTime(ZNTStreamer& /*streamer*/, double /*seconds*/) {}
};
