#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// The thread on which one pipeline is told what to do, because being told may take it long.
///
/// Nobody waits for it: its owner goes at once, and the thread ends when it has done its last
/// block. The process waits for such threads at its end, but not for ever.
///
/// Thread: any, also its own.
class PipelineWorker {
public:
    using Block = std::function<void()>;

    PipelineWorker();
    PipelineWorker(const PipelineWorker&) = delete;
    PipelineWorker& operator=(const PipelineWorker&) = delete;
    /// As `finish` without a block.
    ~PipelineWorker();

    /// Runs the block after those before it.
    void async(Block block);
    /// Runs the block once the delay has passed, by the machine's clock.
    void asyncAfter(std::chrono::nanoseconds delay, Block block);
    /// Drops what has not begun, runs this block, and ends.
    void finish(Block last);

private:
    struct State;
    static void run(const std::shared_ptr<State>& state);
    std::shared_ptr<State> state_;
};

} // namespace platform
