#pragma once

#include "Backends/GStreamer/FrameQueue.h"
#include "Backends/GStreamer/MediaTimeline.h"
#include "Backends/GStreamer/PipelineEvent.h"
#include "Backends/GStreamer/Playbin.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Media/MediaPipeline.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

/// Implements a media pipeline's opening, seeking, playing, ending and failing. The two subclasses
/// decide how time passes.
///
/// Owner:  the pipeline. A call to the listener may close the pipeline, so such a call is the last
///         statement of an event handler, or a check of `isClosed()` follows it.
/// Thread: main.
class Playback : public std::enable_shared_from_this<Playback> {
public:
    Playback(URL url, std::weak_ptr<MediaPipelineListener> listener);
    virtual ~Playback();
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

    void open();
    void close();

    void play();
    void pause();
    void seek(Instant to);
    void setVolume(double volume);
    [[nodiscard]] virtual Instant positionAt(Instant host) = 0;
    [[nodiscard]] virtual std::optional<MediaFrame> frameAt(Instant itemTime) = 0;
    [[nodiscard]] virtual bool isDecodedTo(Instant itemTime) = 0;

protected:
    using Work = std::shared_ptr<MainQueue::Work>;

    [[nodiscard]] virtual MediaPacing pacing() const = 0;
    /// Called when anything that playing depends on has changed: starts or stops the timeline.
    virtual void update() = 0;
    /// The sink may hold more frames. Not called while opening or seeking.
    virtual void picturesArrived() {}
    /// The pipeline has executed the play or pause order with this number.
    virtual void plays(int /*order*/) {}
    virtual void streamsEnded() {}
    virtual void buffered(bool /*isEnough*/) {}
    /// Returns whether the first frame has arrived, or will never arrive.
    [[nodiscard]] virtual bool isFirstPictureSettled() = 0;
    /// The playbin has been replaced by a new one, which is at the start.
    virtual void reopened() {}
    /// Playback closes and no more frames will come: discard everything that is being waited for.
    virtual void stopWaiting() {}
    /// Keeps virtual time from advancing while an operation is in progress; null if virtual time is
    /// not used.
    [[nodiscard]] virtual Work beginWork() const { return nullptr; }

    [[nodiscard]] bool isClosed() const { return !playbin_; }
    [[nodiscard]] bool isReady() const { return phase_ == Phase::Ready; }
    [[nodiscard]] bool hasFailed() const { return phase_ == Phase::Failed; }
    [[nodiscard]] bool isSeeking() const { return isReady() && (seek_ || pending_); }
    [[nodiscard]] bool wantsToPlay() const { return wantsToPlay_; }
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }
    /// The duration as far as it is known: it grows for media whose header does not declare it.
    [[nodiscard]] std::optional<Instant> duration() const { return media_->duration; }
    [[nodiscard]] bool isSoundAlone() const { return media_->hasSound && !media_->hasVideo; }
    /// Extends the duration to `time`, because the media has been seen to last that long.
    void reach(Instant time);
    void reachPictures();
    /// The end of the last frame decoded so far, or of the sound if that lasts longer.
    [[nodiscard]] Instant end() const;
    [[nodiscard]] Playbin& playbin() { return *playbin_; }
    [[nodiscard]] FrameQueue& frames() { return frames_; }
    [[nodiscard]] MediaTimeline& timeline() { return timeline_; }

    void setEnded() { hasEnded_ = true; }
    /// `mediaDidStart` must be sent once after each call of `play()` and after each stall.
    void oweStart() { owesStart_ = true; }
    [[nodiscard]] bool owesStart() const { return owesStart_; }
    [[nodiscard]] bool takeOwedStart() { return std::exchange(owesStart_, false); }
    void beginWait() { playbin_->beginWait(++wait_); }
    void endWait();

    void tell(void (MediaPipelineListener::*what)());
    /// Runs the block in a later iteration of the main queue, unless the pipeline has been closed
    /// by then.
    void later(std::function<void()> block);

private:
    enum class Phase { Opening, Ready, Failed };
    struct Seek {
        Instant target{0};
        std::optional<int> flushesBefore = {}; ///< nullopt until it has begun
        bool hasLanded = false;
        bool isHeld = false; ///< limited to the duration
        bool isReopened = false;
    };

    void handle(const PipelineEvent& event);
    void on(const pipeline_event::Prerolled& event);
    void on(const pipeline_event::Described& event);
    void on(const pipeline_event::Overtaken& event);
    void on(const pipeline_event::SoundLeftOut& event);
    void on(const pipeline_event::Playing& event) { plays(event.order); }
    void on(const pipeline_event::PictureArrived& /*event*/) { settle(); }
    void on(const pipeline_event::StreamsEnded& /*event*/) { streamsEnded(); }
    void on(const pipeline_event::Buffered& event) { buffered(event.enough); }
    void on(const pipeline_event::DurationKnown& event);
    void on(const pipeline_event::SeekBegun& event);
    void on(const pipeline_event::SeekRefused& event);
    void on(const pipeline_event::Silent& event);
    void on(const pipeline_event::Failed& event) { fail(event.error); }

    void openPlaybin();
    void reopen();
    void settle();
    [[nodiscard]] std::optional<Error> refusal() const;
    void finishOpening();
    void startAtFirst();
    void lookForPictures();
    void setDuration(std::optional<Instant> duration);
    void beginNextSeek();
    void seekHeld();
    void landSilentSeek();
    void landSeek();
    void finishSeek();
    void tellOfSeek();
    void refuseSeek(const std::string& reason);
    void fail(const Error& error);

    const URL url_;
    const std::weak_ptr<MediaPipelineListener> listener_;
    std::shared_ptr<Playbin> playbin_; // null once closed
    int run_ = 0;                      // number of the current playbin; events carry theirs
    int newStarts_ = 0;
    bool isDescribed_ = false; // whether the current playbin is
    bool withSound_ = false;   // play sound, even if the host paces playback
    std::optional<double> volume_;
    FrameQueue frames_;
    MediaTimeline timeline_;
    Phase phase_ = Phase::Opening;
    std::optional<pipeline_event::Described> media_;
    bool wantsToPlay_ = false;
    bool owesStart_ = false;
    bool hasEnded_ = false;
    bool owesDuration_ = false;
    int wait_ = 0;
    std::optional<Seek> seek_;       // the seek in progress
    std::optional<Instant> pending_; // the target of the next seek
    Work openWork_;
    Work seekWork_;
    bool owesSeek_ = false; // a finished seek has not been reported yet
};

} // namespace platform
