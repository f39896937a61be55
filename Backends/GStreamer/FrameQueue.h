#pragma once

#include "Backends/GStreamer/VideoSample.h"

#include <gst/app/gstappsink.h>

#include <deque>
#include <memory>
#include <optional>

namespace platform {

/// The pictures between the sink, which holds back the decoder while it is full, and whoever shows
/// them.
///
/// Thread: main. No call waits.
class FrameQueue {
public:
    /// Where pictures come from; without one there are none.
    void attach(std::shared_ptr<GstAppSink> sink) { sink_ = std::move(sink); }

    /// The first picture that was taken is the start of the media, whatever the sink counts from.
    void startAtFirst();
    [[nodiscard]] Instant origin() const { return origin_; }

    /// One frame for all times, for media that has none of its own.
    void standIn(PixelBufferPtr pixels);

    /// What is held comes from elsewhere in the media now; it is replaced by the next picture,
    /// whose time has come at `from` already, even if it is counted from a little later.
    void restart(Instant from);

    /// Takes one more picture from the sink; false when it has none at the moment.
    bool take();
    void takeAll();

    /// The newest whose time has come; older ones are let go of.
    [[nodiscard]] std::optional<MediaFrame> newestAt(Instant time);
    /// Whether the newest picture at that time can no longer be a later one.
    [[nodiscard]] bool isSettledAt(Instant time) const;
    /// Whether there has been a picture since the restart.
    [[nodiscard]] bool hasBegun() const { return standIn_ || !restartsFrom_; }

    /// Whether the sink will hold no further picture.
    [[nodiscard]] bool isOver() const;
    /// When the last picture's time is over, of those taken so far.
    [[nodiscard]] Instant end() const { return end_; }
    /// Of the latest picture in the media that was ever taken: its time, and when that is over.
    struct Furthest {
        Instant time{0};
        Instant end{0};
    };
    [[nodiscard]] const Furthest& furthest() const { return furthest_; }
    /// How long a picture is shown: of those taken so far, the longest.
    [[nodiscard]] Instant pictureLength() const;
    [[nodiscard]] SizePx shownSize() const { return shownSize_; }

    /// Lets go of the sink and of all pictures.
    void close();

private:
    [[nodiscard]] GStreamerPtr<GstSample> nextSample();
    void append(VideoSample sample);

    std::shared_ptr<GstAppSink> sink_;
    std::deque<MediaFrame> frames_; // by time
    std::optional<MediaFrame> standIn_;
    std::optional<Instant> restartsFrom_ = Instant::zero();
    Instant origin_{0};
    std::optional<Instant> firstTaken_;
    Instant lastTaken_{0}; // as the sink had it
    Instant end_{0};
    Furthest furthest_;
    Instant longest_{0};
    SizePx shownSize_;
};

} // namespace platform
