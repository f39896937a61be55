#pragma once

#include "Benchmarks/LongestCall.h"
#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Graphics/OffscreenTarget.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/// The loop of a host application in real time: iterations of the library, drawing when it asks for
/// it, and sleeping until its deadline or its wake-up.
///
/// Thread: main.
class HostLoop {
public:
    explicit HostLoop(platform::SizePx size);
    ~HostLoop();
    HostLoop(const HostLoop&) = delete;
    HostLoop& operator=(const HostLoop&) = delete;

    [[nodiscard]] zanto::EmbeddedHost& embedded() { return host_->embedded(); }
    [[nodiscard]] const platform::OffscreenTarget& target() const { return *target_; }

    /// Iterates until the condition holds; it is checked after each iteration. Returns false if it
    /// does not hold within `longest`.
    bool runUntil(const std::function<bool()>& condition, platform::Instant longest);
    void runFor(platform::Instant duration) {
        runUntil([] { return false; }, duration);
    }

    /// Resets all counters.
    void startCounting();
    [[nodiscard]] int turns() const { return turns_; }
    [[nodiscard]] int draws() const { return draws_; }
    /// The start times of those draws that showed a new frame, that is, planes uploaded since the
    /// draw before.
    [[nodiscard]] const std::vector<platform::Instant>& newFrames() const { return newFrames_; }
    /// The longest `runDueWork()`, without drawing.
    [[nodiscard]] LongestCall& longestTurn() { return longestTurn_; }

private:
    void sleep(platform::Instant longest);
    void draw();

    std::unique_ptr<zanto::HeadlessHost> host_;
    std::unique_ptr<platform::OffscreenTarget> target_;
    std::mutex mutex_; // guards isAwake_
    std::condition_variable wakeUp_;
    bool isAwake_ = false;
    int turns_ = 0;
    int draws_ = 0;
    std::uint64_t drawnPlanes_ = 0;
    std::vector<platform::Instant> newFrames_;
    LongestCall longestTurn_;
};
