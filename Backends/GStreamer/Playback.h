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

/// What a pipeline is about: opening, seeking, playing, ending, failing. How time passes is up to
/// its two kinds.
///
/// Owner:  the pipeline; a call to the listener may end it, so each is the last thing that a
///         reaction does, or is followed by a look at `isClosed()`.
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
    /// Something has changed that playing hangs on: time runs or stands by it.
    virtual void update() = 0;
    /// The sink may hold more pictures, while nothing is being opened or sought.
    virtual void picturesArrived() {}
    /// The pipeline does as it was told by that order.
    virtual void plays(int /*order*/) {}
    virtual void streamsEnded() {}
    virtual void buffered(bool /*isEnough*/) {}
    /// Whether the first picture is there, or will never be.
    [[nodiscard]] virtual bool isFirstPictureSettled() = 0;
    /// The library's player is another one, which stands at the start.
    virtual void reopened() {}
    /// Nothing more comes; nobody waits for it.
    virtual void stopWaiting() {}
    /// What keeps virtual time from passing over something under way; null where it passes anyway.
    [[nodiscard]] virtual Work beginWork() const { return nullptr; }

    [[nodiscard]] bool isClosed() const { return !playbin_; }
    [[nodiscard]] bool isReady() const { return phase_ == Phase::Ready; }
    [[nodiscard]] bool hasFailed() const { return phase_ == Phase::Failed; }
    [[nodiscard]] bool isSeeking() const { return isReady() && (seek_ || pending_); }
    [[nodiscard]] bool wantsToPlay() const { return wantsToPlay_; }
    [[nodiscard]] bool hasEnded() const { return hasEnded_; }
    /// As far as it is known: it grows with media whose header does not say it.
    [[nodiscard]] std::optional<Instant> duration() const { return media_->duration; }
    [[nodiscard]] bool isSoundAlone() const { return media_->hasSound && !media_->hasVideo; }
    /// The media has been seen to last until then.
    void reach(Instant time);
    void reachPictures();
    /// When the last picture's time is over, of those decoded so far, or the sound after it.
    [[nodiscard]] Instant end() const;
    [[nodiscard]] Playbin& playbin() { return *playbin_; }
    [[nodiscard]] FrameQueue& frames() { return frames_; }
    [[nodiscard]] MediaTimeline& timeline() { return timeline_; }

    void setEnded() { hasEnded_ = true; }
    /// That time runs is owed to the listener once after a call of `play()` and after a stall.
    void oweStart() { owesStart_ = true; }
    [[nodiscard]] bool owesStart() const { return owesStart_; }
    [[nodiscard]] bool takeOwedStart() { return std::exchange(owesStart_, false); }
    void beginWait() { playbin_->beginWait(++wait_); }
    void endWait();

    void tell(void (MediaPipelineListener::*what)());
    /// In a turn of its own, unless the pipeline has ended by then.
    void later(std::function<void()> block);

private:
    enum class Phase { Opening, Ready, Failed };
    struct Seek {
        Instant target{0};
        std::optional<int> flushesBefore = {}; ///< none until it has begun
        bool hasLanded = false;
        bool isHeld = false; ///< within the duration
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
    int run_ = 0;                      // counts the players that were opened; events name theirs
    int newStarts_ = 0;
    bool isDescribed_ = false; // the present one
    bool withSound_ = false;   // also where the host paces it
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
    std::optional<Seek> seek_;       // in flight
    std::optional<Instant> pending_; // after it
    Work openWork_;
    Work seekWork_;
};

} // namespace platform
