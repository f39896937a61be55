#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Imaging/PixelBuffer.h"

#include <memory>
#include <optional>

namespace platform {

/// What a pipeline found when it opened its media.
struct MediaDescription {
    /// Of the video as it is to be shown.
    SizePx naturalSize;
    /// As far as it is known by then, see `mediaDurationDidChange`; none for a live stream.
    std::optional<Instant> duration;
};

/// One decoded picture and when its time comes, counted from the start of the media.
struct MediaFrame {
    Instant time{0};
    PixelBufferPtr pixels;
};

/// Hears what happens in a pipeline.
///
/// Thread: main, in a turn of its own: never inside a call to the pipeline, and never after the
///         pipeline's end.
class MediaPipelineListener {
public:
    virtual ~MediaPipelineListener() = default;

    /// Once: opened, and its first picture decoded. It stands still until it is told to play.
    virtual void mediaIsReady(const MediaDescription& media) = 0;
    /// The duration has turned out to be another one. Headers that were written before the end was
    /// known name none, or too short a one, and each frame beyond it proves more.
    virtual void mediaDurationDidChange(Instant duration) = 0;
    /// At most once; nothing else follows. The detail is one sentence naming the cause.
    virtual void mediaDidFail(const Error& error) = 0;
    /// Time runs from here: after `play()`, and again after a stall.
    virtual void mediaDidStart() = 0;
    /// The data ran out while playing: time stands until `mediaDidStart()`.
    virtual void mediaDidStall() = 0;
    /// The latest seek is over: position and picture are those of its target. One that was refused
    /// ends so too, after a line in the log, where playback was before.
    virtual void mediaDidSeek() = 0;
    /// The last picture's time is over. Time stands at the end; a seek leads away from it.
    virtual void mediaDidEnd() = 0;
    /// Decoding has caught up with the time that `isDecodedTo` was asked for last.
    virtual void mediaDidDecode() = 0;
};

/// Who moves a pipeline's time on.
enum class MediaPacing {
    Machine, ///< its own clock, with sound; pictures that come too late are dropped
    Host,    ///< the main queue's clock, which stands still for decoding; silent, nothing dropped
};

/// Opens, decodes and paces one address, from its start.
///
/// Owner:  the player's item. The end of a pipeline stops everything; what takes its time over
///         ending does so behind the caller's back.
/// Thread: main. No call waits for the network, for a decoder or for another thread.
class MediaPipeline {
public:
    virtual ~MediaPipeline() = default;

    /// At the end of the media it stays there; seek first.
    virtual void play() = 0;
    virtual void pause() = 0;
    /// To the very picture of that time, which then can be had also while paused. Targets are held
    /// within the media, which may be longer than the duration that is known so far. The start
    /// can be had even of media that cannot be moved about in: it is opened again. Of several in a
    /// row the last one counts, and ends once.
    virtual void seek(Instant to) = 0;
    /// Linear, 0 to 1.
    virtual void setVolume(double volume) = 0;

    /// Where playback is when the main queue's clock shows `hostTime`, a moment near now.
    [[nodiscard]] virtual Instant positionAt(Instant hostTime) const = 0;
    /// The newest picture whose time has come at `itemTime`, if it is decoded: the same one until
    /// the next one's time comes. Older ones are let go of.
    [[nodiscard]] virtual std::optional<MediaFrame> frameAt(Instant itemTime) = 0;
    /// Whether it is settled which picture belongs to `itemTime`. Paced by the machine: always.
    /// Paced by the host: while not, the main queue's work is outstanding, and the listener hears
    /// `mediaDidDecode()` once it is.
    [[nodiscard]] virtual bool isDecodedTo(Instant itemTime) = 0;
};

/// Starts to open `url`; what comes of it the listener hears. The definition is the backend's,
/// chosen by linking.
///
/// Errors: none here, `mediaDidFail` later: Missing (no such file or host, 404), Unreadable
///         (refused, cut, certificate, time-out), Unsupported (no decoder, neither video nor
///         sound), Corrupt.
[[nodiscard]] std::unique_ptr<MediaPipeline>
openMediaPipeline(const URL& url, MediaPacing pacing,
                  std::weak_ptr<MediaPipelineListener> listener);

} // namespace platform
