#pragma once

#include "Platform/Foundation/Clock.h"

namespace platform {

/// Where playback is at which moment of the host's clock: at a place, or moving on from it.
///
/// Thread: one.
class MediaTimeline {
public:
    /// Never backwards while it runs.
    [[nodiscard]] Instant at(Instant host) const;
    [[nodiscard]] bool isRunning() const { return isRunning_; }

    /// Another place; it runs on from there if it runs.
    void moveTo(Instant position, Instant host);
    void run(Instant host);
    void hold(Instant host);

    /// What another clock says that `host` means. Being ahead of it by a little is let be, for that
    /// clock may be read unsteadily.
    void correct(Instant host, Instant position);

private:
    [[nodiscard]] Instant onLine(Instant host) const { return position_ + (host - host_); }

    bool isRunning_ = false;
    Instant position_{0};
    Instant host_{0};
    Instant least_{0}; // what has been shown already
};

} // namespace platform
