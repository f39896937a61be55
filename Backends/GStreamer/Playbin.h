#pragma once

#include "Backends/GStreamer/BusMessages.h"
#include "Backends/GStreamer/KindSearch.h"
#include "Backends/GStreamer/PipelineEvent.h"
#include "Backends/GStreamer/PipelineLimits.h"
#include "Backends/GStreamer/PipelineWorker.h"
#include "Backends/GStreamer/PlaylistReaders.h"
#include "Backends/GStreamer/VideoSink.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Media/MediaPipeline.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace platform {

/// Wraps one GStreamer `playbin3` element for one URL. The main thread gives orders; a worker
/// thread executes them.
///
/// Owner:  the object that opened it, which must call `close`. It keeps itself alive until the
///         pipeline has stopped.
/// Thread: main. Events reach the main thread through the event sink. None is sent after `close`
///         has returned, but events that were sent before may still arrive.
class Playbin final : public std::enable_shared_from_this<Playbin>, private BusListener {
public:
    struct Kind {
        MediaPacing pacing = MediaPacing::Machine;
        /// Without this flag, host-paced playback leaves sound out. With it, host-paced sound is
        /// decoded but not heard.
        bool withSound = false;
    };
    [[nodiscard]] static std::shared_ptr<Playbin> open(const URL& url, Kind kind,
                                                       PipelineEventSink events);

    /// Requests a `Described` event.
    void describe();
    /// Plays or pauses. If it plays, `Playing` with this order number follows.
    void setPlaying(bool playing, int order);
    /// Requests a `DurationKnown` event.
    void askDuration();
    /// The target of a seek.
    struct SeekTarget {
        Instant time{0};
        /// If set, the seek is limited to the duration; at the end it goes this much before it,
        /// because there is no frame at the very end. If not set, the target is used as it is, even
        /// beyond the duration known so far.
        std::optional<Instant> pictureLength;
        /// The stream time at which the media begins.
        Instant origin{0};
    };
    /// Sends `SeekBegun`, and then `Prerolled` or `SeekRefused`.
    void seek(const SeekTarget& target);
    void setVolume(double volume);

    /// From now on, sends `Silent` if the pipeline shows no activity for too long. A new wait
    /// replaces an earlier one.
    void beginWait(int wait);
    void endWait();

    /// Valid only after `Described`.
    [[nodiscard]] std::optional<ClockReading> reading() const;
    /// Call this before frames are taken from the sink: the next frame is then reported again.
    void takesPictures() { isPictureReported_ = false; }

    void close();

    Playbin(URL url, Kind kind, PipelineEventSink events);
    ~Playbin() override = default;
    Playbin(const Playbin&) = delete;
    Playbin& operator=(const Playbin&) = delete;

private:
    // Worker.
    void start();
    [[nodiscard]] bool build();
    void setUpSource(GstElement* source);
    void queryMedia();
    [[nodiscard]] std::optional<Instant> duration();
    void seekNow(const SeekTarget& target);
    [[nodiscard]] std::string seekObstacle();
    void checkLife(int wait, std::chrono::milliseconds silence);
    void giveUp(int wait);
    void explain(const Error& error, bool mayBeUnreachable);
    void stop();

    // Streaming threads of the pipeline.
    void sawLife() override { ++life_; }
    void didPreroll() override;
    void isPlaying() override;
    void streamsEnded() override;
    void buffered(int percent) override;
    void durationChanged() override { askDuration(); }
    void failed(const GError& error) override;
    void overtookItself(const GError& error) override;
    void foundStreams(bool hasSound, bool hasVideo, bool isStill) override;
    void missesDecoder(const std::string& description) override;
    void answered(int httpStatus, bool handsOutParts) override;
    void pictureArrived();
    [[nodiscard]] int flushes() const;
    void setSettled(bool isSettled);
    [[nodiscard]] Error inWordsOf(const GError& error);

    [[nodiscard]] bool isRemote() const { return !url_.isFileURL(); }
    void post(PipelineEvent event);

    const URL url_;
    const MediaPacing pacing_;
    const bool withSound_;
    const PipelineLimits limits_;
    const PipelineEventSink events_;
    std::unique_ptr<VideoSink> videoSink_;
    GStreamerPtr<GstElement> pipeline_;
    std::shared_ptr<KindSearch> kindSearch_;
    std::shared_ptr<PlaylistReaders> playlists_;

    std::atomic<bool> isClosed_{false};
    std::atomic<bool> hasFailed_{false};
    std::atomic<bool> isOpen_{false}; // has prerolled for the first time
    std::atomic<bool> isPictureReported_{false};
    std::atomic<bool> isDurationAsked_{false};
    std::atomic<bool> hasSound_{false};
    std::atomic<bool> hasVideo_{false};
    std::atomic<bool> isStill_{false};
    std::atomic<bool> isAnswered_{false};
    std::atomic<bool> handsOutParts_{false};
    std::atomic<bool> isShort_{false}; // data is short; the pipeline is buffering
    std::atomic<int> httpStatus_{0};
    std::atomic<int> prerolls_{0};
    std::atomic<int> order_{0};
    std::atomic<int> wait_{0};
    std::atomic<unsigned> life_{0};
    std::mutex mutex_; // guards the next two members
    std::string missingDecoder_;
    bool isSettled_ = false; // opening or the last seek has succeeded or failed
    std::condition_variable settled_;

    // Worker only.
    bool isIdle_ = false;
    unsigned lastLife_ = 0;
    std::chrono::steady_clock::time_point lastLifeAt_;

    PipelineWorker worker_; // declared last, because its blocks use the other members
};

} // namespace platform
