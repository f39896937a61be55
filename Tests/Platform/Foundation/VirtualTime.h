#pragma once

#include "Platform/Foundation/MainQueue.h"

#include <memory>

/// The process's main queue in virtual time while it lives, for what has no host.
class VirtualTime {
public:
    VirtualTime() { platform::MainQueue::main().setClock(clock_); }
    ~VirtualTime() {
        platform::MainQueue::main().reset();
        platform::MainQueue::main().setFrameGrid(platform::FrameGrid());
    }
    VirtualTime(const VirtualTime&) = delete;
    VirtualTime& operator=(const VirtualTime&) = delete;

    /// Jumps there without running what is due on the way.
    void jumpTo(platform::Instant instant) { clock_->advanceTo(instant); }

    /// Goes there through every deadline, running what is due at each.
    void runTo(platform::Instant instant) {
        auto& queue = platform::MainQueue::main();
        for (auto next = queue.nextDeadline(); next && *next <= instant;
             next = queue.nextDeadline()) {
            clock_->advanceTo(*next);
            queue.runDue();
        }
        clock_->advanceTo(instant);
    }

private:
    std::shared_ptr<platform::VirtualClock> clock_ = std::make_shared<platform::VirtualClock>();
};
