#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <atomic>
#include <list>
#include <memory>
#include <mutex>

namespace platform {

[[nodiscard]] bool isPlaylistReader(gpointer object);

/// The readers of playlists (HLS, DASH) in one pipeline, and the segments that they fetch.
///
/// Those of GStreamer 1.22 end the process when they are made to seek in the instant in which
/// something that they asked for has come, and leak what they ask for when they are stopped. So
/// they are quietened before.
///
/// Owner:  the pipeline, and whoever asks.
/// Thread: any.
class PlaylistReaders {
public:
    /// Before the pipeline is set going.
    [[nodiscard]] static std::shared_ptr<PlaylistReaders> in(GstElement* pipeline);

    /// Where there is enough for a second, they ask for no segment after the one that is on its
    /// way; returns once nothing comes any more. That takes 40 ms, half a second at most; no time
    /// where there is no reader.
    void quieten();
    void goOn();

    // What the pipeline tells.
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
