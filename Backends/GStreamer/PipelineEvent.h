#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Result.h"

#include <gst/app/gstappsink.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace platform {

/// Events that the threads of a pipeline send to the main thread.
namespace pipeline_event {

/// The pipeline has its first frame after opening or a seek, or knows that there is none. `flushes`
/// is the number of flushes by seeks so far.
struct Prerolled {
    int flushes = 0;
};
/// The answer to `Playbin::describe`, which is called after the first preroll.
struct Described {
    std::optional<Instant> duration;
    bool hasSound = false;
    bool hasVideo = false;
    bool isStill = false;
    /// Time stamps start before the first frame.
    bool startsLate = false;
    /// The description of a missing decoder; empty if none is missing.
    std::string missingDecoder;
    /// The sink to pull frames from.
    std::shared_ptr<GstAppSink> sink;
};
/// Opening failed by a race, and another attempt may succeed: see `BusListener::overtookItself`.
struct Overtaken {
    Error error;
};
/// The media has only sound, and sound was left out.
struct SoundLeftOut {};
/// The pipeline plays, following the order with this number.
struct Playing {
    int order = 0;
};
/// The sink holds another frame, or has reached the end of the stream.
struct PictureArrived {};
/// All streams have ended.
struct StreamsEnded {};
/// Whether there is enough data to play on.
struct Buffered {
    bool enough = false;
};
/// The duration as known now; nullopt if the media does not declare one.
struct DurationKnown {
    std::optional<Instant> duration;
};
/// A seek begins. Prerolls with at most this number of flushes belong to earlier seeks.
struct SeekBegun {
    int flushes = 0;
    /// The target, and the duration as known at that moment.
    Instant target{0};
    std::optional<Instant> duration;
};
struct SeekRefused {
    std::string reason;
};
/// No activity for too long during the wait with this number.
struct Silent {
    int wait = 0;
};
struct Failed {
    Error error;
};

} // namespace pipeline_event

using PipelineEvent =
    std::variant<pipeline_event::Prerolled, pipeline_event::Described, pipeline_event::Overtaken,
                 pipeline_event::SoundLeftOut, pipeline_event::Playing,
                 pipeline_event::PictureArrived, pipeline_event::StreamsEnded,
                 pipeline_event::Buffered, pipeline_event::DurationKnown, pipeline_event::SeekBegun,
                 pipeline_event::SeekRefused, pipeline_event::Silent, pipeline_event::Failed>;

/// Posts an event to the main thread, which handles it in a later iteration of the main queue.
/// Thread: any; thread-safe.
using PipelineEventSink = std::function<void(PipelineEvent)>;

} // namespace platform
