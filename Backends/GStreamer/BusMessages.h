#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <string>

namespace platform {

/// What the bus of a pipeline says, as far as it matters here.
///
/// Thread: whichever posts, several at once; no call may wait.
class BusListener {
public:
    virtual ~BusListener() = default;

    /// Any message at all.
    virtual void sawLife() = 0;
    virtual void didPreroll() = 0;
    virtual void isPlaying() = 0;
    virtual void streamsEnded() = 0;
    virtual void buffered(int percent) = 0;
    virtual void durationChanged() = 0;
    virtual void failed(const GError& error) = 0;
    /// All segments of a playlist have come and the reader says that they have not: GStreamer 1.22
    /// does so where the last comes before the first has a way out.
    virtual void overtookItself(const GError& error) = 0;
    /// There is sound or video; a still picture counts as video too.
    virtual void foundStreams(bool hasSound, bool hasVideo, bool isStill) = 0;
    /// For anything but sound.
    virtual void missesDecoder(const std::string& description) = 0;
    virtual void answered(int httpStatus, bool handsOutParts) = 0;
};

/// Passes the messages of `pipeline` to `listener`, and keeps none of them.
///
/// Owner: the listener outlives the pipeline, or `stopListening` comes first.
void listenToBus(GstElement* pipeline, BusListener& listener);
void stopListening(GstElement* pipeline);

} // namespace platform
