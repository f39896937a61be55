#pragma once

#include <functional>
#include <memory>
#include <string_view>

namespace platform {

/// Runs blocks away from the main thread, one after the other, in the order of queueing.
///
/// Whoever queues work that a waiting host must not overtake holds a `MainQueue::Work` in the
/// block, and brings the result back with `MainQueue::async`. While a block runs, the environment
/// of the call that queued it is current. A host with one thread only runs the blocks on it, in
/// later turns; so nothing may wait for one.
///
/// Thread: any.
/// Errors: a block lets no exception out.
class DispatchQueue {
public:
    using Block = std::function<void()>;

    /// The queue of the current environment, for decoding and the like. Its end waits for the block
    /// that runs and drops the rest.
    [[nodiscard]] static DispatchQueue& background();

    DispatchQueue();
    ~DispatchQueue();
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;

    void async(Block block);

    /// Runs the block at once, on the calling thread: what waits for its result may need what that
    /// thread alone has, such as a GL context. The label names the work where a machine shows it.
    static void sync(std::string_view label, const Block& block);

private:
    struct Worker;
    std::unique_ptr<Worker> worker_;
};

} // namespace platform
