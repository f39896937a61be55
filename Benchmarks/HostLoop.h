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

/// A loop as a host application has it, in real time: turns of the library, drawing when it says
/// so, and sleep until its deadline or its wake-up.
///
/// Thread: one.
class HostLoop {
public:
    explicit HostLoop(platform::SizePx size);
    ~HostLoop();
    HostLoop(const HostLoop&) = delete;
    HostLoop& operator=(const HostLoop&) = delete;

    [[nodiscard]] EmbeddedHost& embedded() { return host_->embedded(); }
    [[nodiscard]] const platform::OffscreenTarget& target() const { return *target_; }

    /// Takes turns until the condition holds, looked at after each of them; false when it has not
    /// within `longest`.
    bool runUntil(const std::function<bool()>& condition, platform::Instant longest);
    void runFor(platform::Instant duration) {
        runUntil([] { return false; }, duration);
    }

    /// Forgets what has been counted so far.
    void startCounting();
    [[nodiscard]] int turns() const { return turns_; }
    [[nodiscard]] int draws() const { return draws_; }
    /// When the drawings began whose planes had been uploaded since the one before: frames.
    [[nodiscard]] const std::vector<platform::Instant>& newFrames() const { return newFrames_; }
    /// The longest `runDueWork()`, without the drawing.
    [[nodiscard]] LongestCall& longestTurn() { return longestTurn_; }

private:
    void sleep(platform::Instant longest);
    void draw();

    std::unique_ptr<HeadlessHost> host_;
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
