#pragma once

#include "Platform/Foundation/Clock.h"

namespace platform {

/// Maps host time to media time: either stopped at a position, or running on from it.
///
/// Thread: any; not thread-safe, one thread at a time.
class MediaTimeline {
public:
    /// Never decreases while the timeline runs, except after `moveTo`.
    [[nodiscard]] Instant at(Instant host) const;
    [[nodiscard]] bool isRunning() const { return isRunning_; }

    /// Jumps to a position; a running timeline continues from there.
    void moveTo(Instant position, Instant host);
    void run(Instant host);
    void hold(Instant host);

    /// Corrects the timeline by a reading of another clock: at `host` the media was at `position`.
    /// If the timeline is less than 5 ms ahead, nothing changes, because readings may jitter.
    void correct(Instant host, Instant position);

private:
    [[nodiscard]] Instant onLine(Instant host) const { return position_ + (host - host_); }

    bool isRunning_ = false;
    Instant position_{0};
    Instant host_{0};
    Instant least_{0}; // lower bound while running: a position that was already returned
};

} // namespace platform
