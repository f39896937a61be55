#pragma once

#include "Platform/Foundation/Clock.h"

#include <condition_variable>
#include <mutex>
#include <optional>

namespace zanto {

/// Lets a loop sleep until a thread has something for it. A ring that comes before the wait ends
/// the wait at once.
///
/// Thread: any; thread-safe.
class WakeUpSignal {
public:
    void ring() {
        {
            const std::scoped_lock lock(mutex_);
            rung_ = true;
        }
        condition_.notify_one();
    }
    /// Returns after a ring or after `longest`; `nullopt`: only after a ring.
    void wait(std::optional<platform::Instant> longest = std::nullopt) {
        std::unique_lock lock(mutex_);
        if (longest)
            condition_.wait_for(lock, *longest, [this] { return rung_; });
        else
            condition_.wait(lock, [this] { return rung_; });
        rung_ = false;
    }

private:
    std::mutex mutex_; // guards rung_
    std::condition_variable condition_;
    bool rung_ = false;
};

} // namespace zanto
