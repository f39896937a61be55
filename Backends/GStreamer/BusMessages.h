#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <string>

namespace platform {

/// Receives those messages of a pipeline's bus that matter to `Playbin`.
///
/// Thread: streaming thread; several call concurrently. No call may block.
class BusListener {
public:
    virtual ~BusListener() = default;

    /// Called for every message: the pipeline is active.
    virtual void sawLife() = 0;
    virtual void didPreroll() = 0;
    virtual void isPlaying() = 0;
    virtual void streamsEnded() = 0;
    virtual void buffered(int percent) = 0;
    virtual void durationChanged() = 0;
    virtual void failed(const GError& error) = 0;
    /// Workaround for GStreamer 1.22. Symptom: opening a short playlist fails with "not found"
    /// although all of its segments were downloaded. Cause: a race in the playlist demuxer, in
    /// which the last segment arrives before the first one has an output pad. The pipeline is
    /// opened again when this happens. Remove once the minimum version is free of the fault.
    virtual void overtookItself(const GError& error) = 0;
    /// The media has sound or video; a still image counts as video too.
    virtual void foundStreams(bool hasSound, bool hasVideo, bool isStill) = 0;
    /// A decoder is missing, for a stream other than sound.
    virtual void missesDecoder(const std::string& description) = 0;
    virtual void answered(int httpStatus, bool handsOutParts) = 0;
};

/// Forwards the messages of `pipeline` to `listener`; none stays in the bus's queue.
///
/// Owner:  the listener must outlive the pipeline, or `stopListening` must be called first.
void listenToBus(GstElement* pipeline, BusListener& listener);
void stopListening(GstElement* pipeline);

} // namespace platform
