#pragma once

#include "Backends/GStreamer/GStreamerLibrary.h"
#include "Platform/Media/MediaPipeline.h"

#include <gst/app/gstappsink.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

namespace platform {

/// A pair of simultaneous times: of the machine's steady clock and of the media.
struct ClockReading {
    std::chrono::steady_clock::time_point at;
    Instant position{0};
};

/// The video sink of a pipeline: converts frames to 8-bit 4:2:0 in video range (NV12) and keeps a
/// few of them.
///
/// It converts range, depth and layout, but never the matrix: the renderer has its own.
///
/// Thread: streaming thread, except `flushes` and `reading`, which are any; thread-safe.
class VideoSink {
public:
    /// `onPicture` is called on a streaming thread when another frame is available or the stream
    /// has ended.
    VideoSink(MediaPacing pacing, std::function<void()> onPicture);
    /// Stops reports of frames. The pipeline must have been stopped before.
    ~VideoSink();
    VideoSink(const VideoSink&) = delete;
    VideoSink& operator=(const VideoSink&) = delete;

    /// The element for the pipeline, which takes the floating reference.
    [[nodiscard]] GstElement* element() const { return bin_; }
    [[nodiscard]] GStreamerPtr<GstAppSink> newSinkReference() const;

    /// The number of flushes by seeks.
    [[nodiscard]] int flushes() const { return flushes_; }
    /// The latest clock reading; only for machine-paced playback.
    [[nodiscard]] std::optional<ClockReading> reading() const;

private:
    void build();
    void watchPads();
    static GstPadProbeReturn onCaps(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn onBuffer(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn onFlush(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn onAllocation(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstFlowReturn onSample(GstAppSink* sink, gpointer self);
    static void onEnd(GstAppSink* sink, gpointer self);
    void readClock();

    const MediaPacing pacing_;
    std::function<void()> onPicture_;
    GstElement* bin_ = nullptr;
    GStreamerPtr<GstElement> converter_;
    GStreamerPtr<GstAppSink> sink_;
    bool isFullRange_ = false; // of the input; streaming thread only
    std::atomic<int> flushes_{0};
    mutable std::mutex mutex_; // guards reading_
    std::optional<ClockReading> reading_;
};

} // namespace platform
