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

/// The library's player of one address: told what to do from the main thread, doing it on another.
///
/// Owner:  whoever opened it, who closes it; it lives on until it has stopped.
/// Thread: main. Events come as the sink brings them, none once `close` has returned, but for those
///         that are on their way.
class Playbin final : public std::enable_shared_from_this<Playbin>, private BusListener {
public:
    struct Kind {
        MediaPacing pacing = MediaPacing::Machine;
        /// Paced by the host sound is left out, unless this is set; it is never heard then.
        bool withSound = false;
    };
    [[nodiscard]] static std::shared_ptr<Playbin> open(const URL& url, Kind kind,
                                                       PipelineEventSink events);

    /// Answered by `Described`.
    void describe();
    /// Whether time runs; answered by `Playing` with the order's number if so.
    void setPlaying(bool playing, int order);
    /// Answered by `DurationKnown`.
    void askDuration();
    /// Where a seek goes to.
    struct SeekTarget {
        Instant time{0};
        /// Held within the duration, and at its end that much before it: there is no picture at
        /// the very end. None: as it is, even beyond the duration that is known so far.
        std::optional<Instant> pictureLength;
        /// What the library counts as that when the media begins.
        Instant origin{0};
    };
    /// Answered by `SeekBegun`, and then by `Prerolled` or `SeekRefused`.
    void seek(const SeekTarget& target);
    void setVolume(double volume);

    /// From now on silence for too long is answered by `Silent`; a new wait replaces an earlier
    /// one.
    void beginWait(int wait);
    void endWait();

    /// Only after `Described`.
    [[nodiscard]] std::optional<ClockReading> reading() const;
    /// Before pictures are taken: the next one is reported again.
    void takesPictures() { isPictureReported_ = false; }

    void close();

    Playbin(URL url, Kind kind, PipelineEventSink events);
    ~Playbin() override = default;
    Playbin(const Playbin&) = delete;
    Playbin& operator=(const Playbin&) = delete;

private:
    // On the worker.
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

    // On threads of the pipeline.
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
    std::atomic<bool> isOpen_{false}; // its first picture has been seen
    std::atomic<bool> isPictureReported_{false};
    std::atomic<bool> isDurationAsked_{false};
    std::atomic<bool> hasSound_{false};
    std::atomic<bool> hasVideo_{false};
    std::atomic<bool> isStill_{false};
    std::atomic<bool> isAnswered_{false};
    std::atomic<bool> handsOutParts_{false};
    std::atomic<bool> isShort_{false}; // of data
    std::atomic<int> httpStatus_{0};
    std::atomic<int> prerolls_{0};
    std::atomic<int> order_{0};
    std::atomic<int> wait_{0};
    std::atomic<unsigned> life_{0};
    std::mutex mutex_; // guards what follows
    std::string missingDecoder_;
    bool isSettled_ = false; // opening, or the last seek, has come to something
    std::condition_variable settled_;

    // On the worker only.
    bool isIdle_ = false;
    unsigned lastLife_ = 0;
    std::chrono::steady_clock::time_point lastLifeAt_;

    PipelineWorker worker_; // last: its blocks use the rest
};

} // namespace platform
