#pragma once

#include "Backends/GStreamer/VideoSample.h"

#include <gst/app/gstappsink.h>

#include <deque>
#include <memory>
#include <optional>

namespace platform {

/// The frames between the sink and the player. A full sink blocks the decoder.
///
/// Thread: main. No call blocks.
class FrameQueue {
public:
    /// Sets the sink to take frames from; without a sink there are none.
    void attach(std::shared_ptr<GstAppSink> sink) { sink_ = std::move(sink); }

    /// Makes the first frame taken the start of the media, whatever time stamp the sink gives it.
    void startAtFirst();
    [[nodiscard]] Instant origin() const { return origin_; }

    /// Uses one frame for all times, for media that has no video.
    void standIn(PixelBufferPtr pixels);

    /// Called after a seek: the frames held are out of date. The next frame replaces them and
    /// counts as due at `from`, even if its time stamp is slightly later.
    void restart(Instant from);

    /// Takes one more frame from the sink; returns false if the sink has none at the moment.
    bool take();
    void takeAll();

    /// Returns the newest frame that is due at `time`, and drops older ones.
    [[nodiscard]] std::optional<MediaFrame> newestAt(Instant time);
    /// Whether no frame that arrives later can be the newest one at `time`.
    [[nodiscard]] bool isSettledAt(Instant time) const;
    /// Whether a frame has arrived since the last restart.
    [[nodiscard]] bool hasBegun() const { return standIn_ || !restartsFrom_; }

    /// Whether the sink has reached the end of its stream.
    [[nodiscard]] bool isOver() const;
    /// The end of the last frame taken so far.
    [[nodiscard]] Instant end() const { return end_; }
    /// The start and end of the frame with the latest time of all frames ever taken.
    struct Furthest {
        Instant time{0};
        Instant end{0};
    };
    [[nodiscard]] const Furthest& furthest() const { return furthest_; }
    /// The longest duration of the frames taken so far; 40 ms if unknown.
    [[nodiscard]] Instant pictureLength() const;
    [[nodiscard]] SizePx shownSize() const { return shownSize_; }

    /// Drops the sink and all frames.
    void close();

private:
    [[nodiscard]] GStreamerPtr<GstSample> nextSample();
    void append(VideoSample sample);

    std::shared_ptr<GstAppSink> sink_;
    std::deque<MediaFrame> frames_; // sorted by time
    std::optional<MediaFrame> standIn_;
    std::optional<Instant> restartsFrom_ = Instant::zero();
    Instant origin_{0};
    std::optional<Instant> firstTaken_;
    Instant lastTaken_{0}; // the sink's time stamp
    Instant end_{0};
    Furthest furthest_;
    Instant longest_{0};
    SizePx shownSize_;
};

} // namespace platform
