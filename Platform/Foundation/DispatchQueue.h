#pragma once

#include <functional>
#include <memory>
#include <string_view>

namespace platform {

/// A serial queue: runs blocks on a worker thread, one after the other, in the order of queueing.
///
/// A block whose work must hold up virtual time owns a `MainQueue::Work`, and delivers its result
/// with `MainQueue::async`. While a block runs, the environment of the call that queued it is
/// current. No caller waits for a queued block, so that a platform without threads can run the
/// blocks on the main thread.
///
/// Thread: any; thread-safe.
/// Errors: a block must not throw.
class DispatchQueue {
public:
    using Block = std::function<void()>;

    /// The queue of the current environment, for decoding and similar work. The environment stops
    /// it when its host ends.
    [[nodiscard]] static DispatchQueue& background();

    DispatchQueue();
    ~DispatchQueue();
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;

    void async(Block block);

    /// Runs the block at once on the calling thread, because the block may need what only that
    /// thread has, such as a GL context. `label` names the work for platforms that can display it.
    static void sync(std::string_view label, const Block& block);

    /// Waits for the block that is running and drops the others. The destructor does so too.
    void stop();

private:
    struct Worker;
    std::unique_ptr<Worker> worker_;
    bool stopsAtRelease_ = false;
};

} // namespace platform
