#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <memory>
#include <optional>

namespace platform {

/// What a pipeline has found out when its media is open.
struct MediaDescription {
    /// The size at which the video is to be shown.
    SizePx naturalSize;
    /// As far as it is known by then, see `mediaDurationDidChange`; `nullopt` for a live stream.
    std::optional<Instant> duration;
};

/// One decoded frame and its presentation time, counted from the start of the media.
struct MediaFrame {
    Instant time{0};
    PixelBufferPtr pixels;
};

/// Observes a pipeline.
///
/// Thread: main. Each call has a loop iteration of its own: it is never inside a call to the
///         pipeline, and never after the pipeline's destruction.
class MediaPipelineListener {
public:
    virtual ~MediaPipelineListener() = default;

    /// Called once: the media is open and its first frame is decoded. Time stands still until
    /// `play()`.
    virtual void mediaIsReady(const MediaDescription& media) = 0;
    /// The duration has turned out to be a different one. A header that was written before the end
    /// was known contains no duration, or one that is too short, and each frame beyond it extends
    /// it.
    virtual void mediaDurationDidChange(Instant duration) = 0;
    /// Called at most once; no other call follows. The detail is one sentence that names the cause.
    virtual void mediaDidFail(const Error& error) = 0;
    /// Time begins to run: after `play()`, and again after a stall.
    virtual void mediaDidStart() = 0;
    /// The data has run out during playback: time stands still until `mediaDidStart()`.
    virtual void mediaDidStall() = 0;
    /// The latest seek has ended: position and frame are those of its target. A refused seek ends
    /// in the same way, after a log line, at the earlier position.
    virtual void mediaDidSeek() = 0;
    /// The time of the last frame is over. Time stands still at the end until a seek.
    virtual void mediaDidEnd() = 0;
    /// Decoding has reached the time of the latest call of `isDecodedTo`.
    virtual void mediaDidDecode() = 0;
};

/// The clock that drives a pipeline.
enum class MediaPacing {
    Machine, ///< its own clock, with sound; frames that come too late are dropped
    Host,    ///< the main queue's clock, which waits for decoding; silent, no frame is dropped
};

/// Opens, decodes and paces the media at one address, from its start.
///
/// Owner:  the player's item. The destructor stops everything; slow clean-up is done in the
///         background.
/// Thread: main. No call waits for the network, for a decoder or for another thread.
class MediaPipeline {
public:
    virtual ~MediaPipeline() = default;

    /// Without effect at the end of the media; seek first.
    virtual void play() = 0;
    virtual void pause() = 0;
    /// Seeks to the exact frame of that time, which is then available even while paused. Targets
    /// are clamped to the media, which may be longer than the duration that is known so far. Media
    /// that does not support seeking can still return to its start, because it is opened again. Of
    /// several seeks in a row only the last one counts, and `mediaDidSeek()` is called once.
    virtual void seek(Instant to) = 0;
    /// Linear, 0 to 1.
    virtual void setVolume(double volume) = 0;

    /// The playback position when the main queue's clock shows `hostTime`, an instant near now.
    [[nodiscard]] virtual Instant positionAt(Instant hostTime) const = 0;
    /// The newest frame whose time has come at `itemTime`, if it is decoded. It stays the same
    /// until the next frame's time comes. Older frames are released.
    [[nodiscard]] virtual std::optional<MediaFrame> frameAt(Instant itemTime) = 0;
    /// Whether it is known which frame belongs to `itemTime`. With `MediaPacing::Machine` it always
    /// is. With `MediaPacing::Host`, while it is not known, the main queue has outstanding work,
    /// and the listener receives `mediaDidDecode()` once it is.
    [[nodiscard]] virtual bool isDecodedTo(Instant itemTime) = 0;
};

/// Begins to open `url` and reports to the listener. A backend library defines this function.
///
/// Errors: none in this call, but `mediaDidFail` later: Missing (no such file or host, 404),
///         Unreadable (refused, truncated, certificate, time-out), Unsupported (no decoder, neither
///         video nor sound), Corrupt.
[[nodiscard]] std::unique_ptr<MediaPipeline>
openMediaPipeline(const URL& url, MediaPacing pacing,
                  std::weak_ptr<MediaPipelineListener> listener);

} // namespace platform
