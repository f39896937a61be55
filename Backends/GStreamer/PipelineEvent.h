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

/// What the threads of a pipeline tell the main one.
namespace pipeline_event {

/// The pipeline has its first picture, after opening or a seek, or knows that there is none.
/// `flushes`: how often seeks had emptied it by then.
struct Prerolled {
    int flushes = 0;
};
/// What was asked for after the first preroll.
struct Described {
    std::optional<Instant> duration;
    bool hasSound = false;
    bool hasVideo = false;
    bool isStill = false;
    /// Times count from somewhere before the first picture.
    bool startsLate = false;
    /// In words; empty when none is missing.
    std::string missingDecoder;
    /// Where its pictures come from.
    std::shared_ptr<GstAppSink> sink;
};
/// It came to nothing, which another attempt need not: see `BusListener::overtookItself`.
struct Overtaken {
    Error error;
};
/// There is sound alone, and sound was left out.
struct SoundLeftOut {};
/// Time runs, as was asked for with that number.
struct Playing {
    int order = 0;
};
/// The sink holds another picture, or will never hold one more.
struct PictureArrived {};
/// All streams are over.
struct StreamsEnded {};
/// Whether there is enough data to play on.
struct Buffered {
    bool enough = false;
};
/// The duration as it is known now, none where the media does not say.
struct DurationKnown {
    std::optional<Instant> duration;
};
/// A seek begins; what came of earlier flushes is no answer to it.
struct SeekBegun {
    int flushes = 0;
    /// Where it goes to, and the duration as it is known at that moment.
    Instant target{0};
    std::optional<Instant> duration;
};
struct SeekRefused {
    std::string reason;
};
/// No sign of life for too long, while waiting for what had that number.
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

/// Takes an event to the main thread, in a turn of its own. Thread: any.
using PipelineEventSink = std::function<void(PipelineEvent)>;

} // namespace platform
