#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"

#include <atomic>
#include <chrono>
#include <list>
#include <memory>
#include <mutex>

namespace platform {

[[nodiscard]] bool isPlaylistReader(gpointer object);

/// The readers of playlists (HLS, DASH) in one pipeline, and the segments that they fetch.
///
/// Those of GStreamer 1.22 end the process when they are made to seek in the instant in which
/// something that they asked for has come. So they are held, and made to seek once nothing comes.
///
/// Owner:  the pipeline, and whoever asks.
/// Thread: any.
class PlaylistReaders {
public:
    /// Before the pipeline is set going.
    [[nodiscard]] static std::shared_ptr<PlaylistReaders> in(GstElement* pipeline);

    [[nodiscard]] bool areThere() const;
    /// From now on, where there is enough for a second, no segment is asked for after the one that
    /// is on its way.
    void hold();
    void goOn();
    /// They have been held for a while in which nothing came.
    [[nodiscard]] bool areQuiet() const;

    // What the pipeline tells.
    void add(GstElement* reader);
    void remove(GstElement* reader);
    void pieceCame();

private:
    using Moment = std::chrono::steady_clock::time_point;
    struct Reader {
        GStreamerPtr<GstElement> element;
        guint64 ahead; // nanoseconds
    };

    mutable std::mutex mutex_; // guards readers_
    std::list<Reader> readers_;
    std::atomic<Moment> lastPiece_{};
    std::atomic<Moment> heldSince_{};
};

} // namespace platform
