#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <atomic>
#include <list>
#include <memory>
#include <mutex>

namespace platform {

[[nodiscard]] bool isPlaylistReader(gpointer object);

/// Makes the playlist demuxers (`hlsdemux2`, `dashdemux2`) of one pipeline safe to seek and to
/// stop.
///
/// Workaround for GStreamer 1.22. Symptoms: a crash (use after free) if a seek arrives while a
/// fragment download completes, and a leak of running downloads at a stop. Cause: a race between
/// the thread that seeks or stops and the demuxers' download thread. The workaround lowers the
/// demuxers' read-ahead and waits, on the worker, until no download is running; `goOn` restores the
/// read-ahead. Remove once the minimum version is free of both faults.
///
/// Owner:  shared by the pipeline and the object that seeks and stops it.
/// Thread: any; thread-safe.
class PlaylistReaders {
public:
    /// Starts to observe a pipeline. Call this before the pipeline is started.
    [[nodiscard]] static std::shared_ptr<PlaylistReaders> in(GstElement* pipeline);

    /// Stops the demuxers from requesting another segment if one second is buffered, and blocks
    /// until no data arrives any more. Takes 40 ms, half a second at most; returns at once if there
    /// is no demuxer.
    void quieten();
    void goOn();

    // Called by the pipeline's signal handlers and probes.
    void add(GstElement* reader);
    void remove(GstElement* reader);
    void pieceCame();

private:
    struct Reader {
        GStreamerPtr<GstElement> element;
        guint64 ahead; // nanoseconds
    };

    [[nodiscard]] bool hold();

    std::mutex mutex_; // guards readers_
    std::list<Reader> readers_;
    std::atomic<unsigned> pieces_{0};
};

} // namespace platform
