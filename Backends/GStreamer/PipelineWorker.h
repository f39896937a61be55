#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

/// The worker thread that operates one pipeline, because calls to a pipeline may block for long.
///
/// The destructor does not join the thread: the thread ends by itself after its last block. At
/// process exit such threads are waited for, for 3 s at most.
///
/// Thread: any; thread-safe. The worker itself may call it too.
class PipelineWorker {
public:
    using Block = std::function<void()>;

    PipelineWorker();
    PipelineWorker(const PipelineWorker&) = delete;
    PipelineWorker& operator=(const PipelineWorker&) = delete;
    /// The same as `finish(nullptr)`.
    ~PipelineWorker();

    /// Queues the block behind earlier ones.
    void async(Block block);
    /// Runs the block after the delay, by the machine's steady clock.
    void asyncAfter(std::chrono::nanoseconds delay, Block block);
    /// Drops all blocks that have not begun, runs this block, and ends the thread.
    void finish(Block last);

private:
    struct State;
    static void run(const std::shared_ptr<State>& state);
    std::shared_ptr<State> state_;
};

} // namespace platform
