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

/// Which moment of the machine's clock belongs to which of the media's.
struct ClockReading {
    std::chrono::steady_clock::time_point at;
    Instant position{0};
};

/// The end of a pipeline's video: brings pictures into 8-bit 4:2:0 in video range and keeps a few.
///
/// Range, depth and layout are converted, the matrix never is: what shows the picture has its own.
///
/// Thread: the pipeline's, one after the other; `flushes` and `reading` any.
class VideoSink {
public:
    /// `onPicture`: another picture is there, or will never be; from a thread of the pipeline.
    VideoSink(MediaPacing pacing, std::function<void()> onPicture);
    /// No picture is reported any longer. The pipeline has been stopped before.
    ~VideoSink();
    VideoSink(const VideoSink&) = delete;
    VideoSink& operator=(const VideoSink&) = delete;

    /// For the pipeline; it takes the reference.
    [[nodiscard]] GstElement* element() const { return bin_; }
    [[nodiscard]] GStreamerPtr<GstAppSink> newSinkReference() const;

    /// How often seeks have emptied it.
    [[nodiscard]] int flushes() const { return flushes_; }
    /// The latest, of a pipeline that the machine paces.
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
    bool isFullRange_ = false; // what comes in; on the pipeline's thread only
    std::atomic<int> flushes_{0};
    mutable std::mutex mutex_; // guards reading_
    std::optional<ClockReading> reading_;
};

} // namespace platform
