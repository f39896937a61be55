#include "Backends/GStreamer/Playback.h"

#include "Backends/GStreamer/PipelineErrors.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace platform {

namespace {

/// Stands in for the video of media that has only sound. Small, because it is stretched to the
/// view.
PixelBufferPtr blackFrame() {
    constexpr SizePx kSize{16, 8};
    constexpr std::size_t kSamples = 128;
    const auto bytes = std::make_shared<std::vector<std::uint8_t>>(kSamples, std::uint8_t{16});
    bytes->resize(kSamples + kSamples / 2, std::uint8_t{128});
    return PixelBuffer::wrap(kSize, {bytes->data(), kSize.width},
                             {bytes->data() + kSamples, kSize.width}, bytes);
}

} // namespace

Playback::Playback(URL url, std::weak_ptr<MediaPipelineListener> listener)
    : url_(std::move(url)), listener_(std::move(listener)) {}

Playback::~Playback() {
    if (playbin_)
        playbin_->close();
}

void Playback::open() {
    openWork_ = beginWork();
    openPlaybin();
}

void Playback::openPlaybin() {
    auto events = [weak = weak_from_this(), run = ++run_,
                   environment = Environment::current().shared_from_this()](PipelineEvent event) {
        environment->queue().async([weak, run, event = std::move(event)] {
            if (const auto self = weak.lock(); self && self->run_ == run)
                self->handle(event);
        });
    };
    playbin_ = Playbin::open(url_, {pacing(), withSound_}, std::move(events));
    isDescribed_ = false;
    if (volume_)
        playbin_->setVolume(*volume_);
    beginWait();
}

void Playback::reopen() {
    frames_.attach(nullptr);
    playbin_->close();
    openPlaybin();
    reopened();
}

void Playback::close() {
    frames_.close();
    if (playbin_)
        playbin_->close();
    playbin_.reset();
    stopWaiting();
    openWork_.reset();
    seekWork_.reset();
}

void Playback::later(std::function<void()> block) {
    MainQueue::main().async([weak = weak_from_this(), block = std::move(block)] {
        const auto self = weak.lock();
        if (self && !self->isClosed())
            block();
    });
}

void Playback::tell(void (MediaPipelineListener::*what)()) {
    if (const auto listener = listener_.lock())
        (listener.get()->*what)();
}

void Playback::handle(const PipelineEvent& event) {
    if (isClosed() || hasFailed())
        return;
    std::visit([this](const auto& one) { on(one); }, event);
}

Instant Playback::end() const {
    // Containers count in coarser ticks, so a difference of one tick does not matter.
    constexpr Instant kTick = std::chrono::milliseconds(1);
    const Instant end = frames_.end();
    if (!media_->duration)
        return end;
    if (std::chrono::abs(*media_->duration - end) <= kTick)
        return *media_->duration;
    // Sound may last longer than the video, even if it is not played.
    return media_->hasSound ? std::max(*media_->duration, end) : end;
}

void Playback::endWait() {
    ++wait_;
    playbin_->endWait();
}

void Playback::on(const pipeline_event::Prerolled& event) {
    if (!isDescribed_)
        return playbin_->describe();
    if (!seek_ || !seek_->flushesBefore || event.flushes <= *seek_->flushesBefore ||
        seek_->hasLanded)
        return;
    seek_->hasLanded = true;
    frames_.restart(seek_->target);
    settle();
}

void Playback::on(const pipeline_event::Described& event) {
    if (std::exchange(isDescribed_, true))
        return;
    if (!media_)
        media_ = event;
    if (isSoundAlone())
        frames_.standIn(blackFrame());
    else
        frames_.attach(event.sink);
    if (seek_) {
        seek_->hasLanded = true;
        frames_.restart(seek_->target);
    }
    settle();
}

void Playback::on(const pipeline_event::Overtaken& event) {
    constexpr int kMostNewStarts = 3;
    if (newStarts_++ == kMostNewStarts)
        return fail(event.error);
    reopen();
}

/// Reopens with sound: without any selected stream, playbin3 fails.
void Playback::on(const pipeline_event::SoundLeftOut& /*event*/) {
    withSound_ = true;
    reopen();
}

void Playback::settle() {
    if (phase_ == Phase::Opening) {
        if (media_ && isFirstPictureSettled())
            finishOpening();
    } else if (seek_) {
        if (seek_->hasLanded && isFirstPictureSettled())
            landSeek();
    } else if (!owesSeek_) {
        picturesArrived();
    }
}

void Playback::reach(Instant time) {
    if (isClosed() || !media_ || !media_->duration || time <= *media_->duration)
        return;
    setDuration(time);
    playbin_->askDuration();
}

void Playback::reachPictures() {
    // The end of the last frame is a guess, but its start is exact.
    if (media_ && media_->duration && frames_.furthest().time > *media_->duration)
        reach(frames_.furthest().end);
}

void Playback::on(const pipeline_event::DurationKnown& event) {
    setDuration(event.duration);
}

void Playback::setDuration(std::optional<Instant> duration) {
    if (!duration)
        return;
    if (frames_.furthest().time > *duration)
        duration = frames_.furthest().end;
    if (std::exchange(media_->duration, duration) == duration || std::exchange(owesDuration_, true))
        return;
    later([this] {
        owesDuration_ = false;
        if (const auto listener = listener_.lock(); listener && isReady())
            listener->mediaDurationDidChange(*media_->duration);
    });
}

std::optional<Error> Playback::refusal() const {
    if (media_->isStill)
        return Error{ErrorCode::Unsupported, "it holds no video, but a still picture"};
    if (frames_.hasBegun())
        return std::nullopt;
    if (!media_->missingDecoder.empty())
        return missingDecoderError(media_->missingDecoder);
    if (media_->hasVideo)
        return Error{ErrorCode::Corrupt, "its video holds no picture"};
    return unknownKindError();
}

void Playback::finishOpening() {
    if (const auto error = refusal())
        return fail(*error);
    phase_ = Phase::Ready;
    endWait();
    if (media_->startsLate)
        startAtFirst();
    const Work work = std::move(openWork_);
    if (const auto listener = listener_.lock())
        listener->mediaIsReady({frames_.shownSize(), media_->duration});
    if (isClosed())
        return;
    if (pending_ && !seek_)
        beginNextSeek();
    update();
    lookForPictures();
}

/// In machine-paced playback the time before the first frame would have to elapse, so a seek skips
/// it.
void Playback::startAtFirst() {
    frames_.startAtFirst();
    if (pacing() == MediaPacing::Machine && !pending_ && frames_.origin() > Instant::zero())
        pending_ = Instant::zero();
}

/// Checks the sink in a later iteration. A full sink sends no further reports, and its earlier
/// reports arrived when no frame was wanted.
void Playback::lookForPictures() {
    later([this] { settle(); });
}

void Playback::play() {
    if (wantsToPlay_ || isClosed() || hasFailed())
        return;
    wantsToPlay_ = true;
    oweStart();
    update();
}

void Playback::pause() {
    if (!wantsToPlay_ || isClosed() || hasFailed())
        return;
    wantsToPlay_ = false;
    owesStart_ = false;
    update();
}

void Playback::setVolume(double volume) {
    volume_ = std::clamp(volume, 0.0, 1.0);
    if (playbin_)
        playbin_->setVolume(*volume_);
}

void Playback::seek(Instant to) {
    if (isClosed() || hasFailed())
        return;
    pending_ = to;
    if (!seekWork_)
        seekWork_ = beginWork();
    if (isReady() && !seek_)
        beginNextSeek();
    update();
}

/// The known duration may be too short, so a target beyond it is tried unchanged. Only for files,
/// because some demuxers do not treat what a server sends past its end as the end.
void Playback::beginNextSeek() {
    seek_ = Seek{std::max(*std::exchange(pending_, std::nullopt), Instant::zero())};
    beginWait();
    if (isSoundAlone() && pacing() == MediaPacing::Host)
        return landSilentSeek();
    const bool isKnown = media_->duration && seek_->target <= *media_->duration;
    if (isKnown || isSoundAlone() || !url_.isFileURL())
        return seekHeld();
    playbin_->seek({seek_->target, std::nullopt, frames_.origin()});
}

/// Nothing needs to be decoded, because sound is left out.
void Playback::landSilentSeek() {
    seek_->target = std::min(seek_->target, media_->duration.value_or(seek_->target));
    seek_->hasLanded = true;
    frames_.restart(seek_->target);
    finishSeek();
}

void Playback::seekHeld() {
    seek_ = Seek{.target = seek_->target, .isHeld = true};
    playbin_->seek({seek_->target, frames_.pictureLength(), frames_.origin()});
}

void Playback::on(const pipeline_event::SeekBegun& event) {
    if (!seek_)
        return;
    seek_->flushesBefore = event.flushes;
    seek_->target = event.target;
    setDuration(event.duration);
}

void Playback::on(const pipeline_event::SeekRefused& event) {
    if (!seek_)
        return;
    if (!seek_->isHeld)
        return seekHeld();
    if (seek_->target > Instant::zero() || seek_->isReopened)
        return refuseSeek(event.reason);
    // Media that cannot seek can still restart at the beginning by being reopened.
    seek_->isReopened = true;
    reopen();
}

void Playback::refuseSeek(const std::string& reason) {
    log(LogLevel::Warning, "media: seek to " + std::to_string(toSeconds(seek_->target)) +
                               " s refused, " + reason + "; staying where it was");
    finishSeek();
}

/// Beyond the end there is no frame, but the seek has revealed where the end is.
void Playback::landSeek() {
    const bool isBeyondEnd = !frames_.hasBegun() && frames_.isOver();
    if (isBeyondEnd && !seek_->isHeld)
        return seekHeld();
    finishSeek();
}

void Playback::finishSeek() {
    if (seek_->hasLanded) {
        hasEnded_ = false;
        if (frames_.hasBegun())
            reach(seek_->target);
        timeline_.moveTo(seek_->target, MainQueue::main().now());
    }
    seek_.reset();
    if (pending_)
        return beginNextSeek();
    endWait();
    update();
    tellOfSeek();
}

/// Notifies in a later iteration: after a start that the seek may have allowed, and before a frame
/// of the new position, so that the listener receives them in the same order however soon the
/// frame arrives.
void Playback::tellOfSeek() {
    owesSeek_ = true;
    later([this, work = std::exchange(seekWork_, nullptr)] {
        owesSeek_ = false;
        if (seek_)
            return;
        tell(&MediaPipelineListener::mediaDidSeek);
        if (!isClosed())
            settle();
    });
}

void Playback::on(const pipeline_event::Silent& event) {
    if (event.wait != wait_)
        return;
    if (seek_ && !seek_->isReopened)
        return refuseSeek("it takes too long");
    fail({ErrorCode::Unreadable, "no data came in time"});
}

void Playback::fail(const Error& error) {
    phase_ = Phase::Failed;
    timeline_.hold(MainQueue::main().now());
    const auto listener = listener_.lock();
    close();
    if (listener)
        listener->mediaDidFail(error);
}

} // namespace platform
