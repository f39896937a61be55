#pragma once

#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/ReplaceableFunction.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace platform {

/// The event queue of the main thread: blocks for the next loop iteration, for the next frame time
/// or for later.
///
/// The library has no event loop of its own. The host supplies a clock and a wake-up function, and
/// calls `runDue()` whenever it is woken or `nextDeadline()` has come. Each such call is one loop
/// iteration, so the host decides when the blocks run.
///
/// Thread: main, except `async`, `asyncAfter`, `beginWork` and `wakeUp`, which are any;
///         thread-safe.
/// Errors: an `AssertionFailure` that a block throws leaves `runDue()`; later blocks stay queued.
class ZANTO_EXPORT MainQueue {
public:
    using Block = std::function<void()>;

    MainQueue() = default;
    ~MainQueue();
    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;

    /// The queue of the current environment.
    ///
    /// Thread: main. Code that posts from another thread keeps a pointer to its environment.
    [[nodiscard]] static MainQueue& main();

    /// Runs the block in the next loop iteration, never inside this call.
    void async(Block block);

    /// Runs the block once `delay` has passed. A delay of zero or less means the next frame time,
    /// whether or not anything is to be drawn.
    void asyncAfter(Instant delay, Block block);

    /// Work in progress elsewhere (a decode, an upload, a download). Virtual time stands still
    /// while a token lives, so that a waiting host does not overtake the work.
    class Work {
    public:
        explicit Work(MainQueue& queue);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

    private:
        MainQueue& queue_;
    };
    [[nodiscard]] std::shared_ptr<Work> beginWork();
    [[nodiscard]] int outstandingWork() const;

    /// Runs the blocks whose time has come, except those that are queued during this call.
    void runDue();

    /// Calls the host's wake-up function, for work outside of the queue that needs a loop
    /// iteration.
    void wakeUp();

    /// The deadline of the next block, which is not after now if the block can run at once;
    /// `nullopt` for an empty queue.
    [[nodiscard]] std::optional<Instant> nextDeadline() const;

    /// Host set-up. The wake-up is called on the thread that queued something, without a lock. Once
    /// it is replaced or the queue is reset, no other thread runs the earlier wake-up any more.
    void setClock(std::shared_ptr<const Clock> clock);
    void setFrameGrid(FrameGrid grid);
    void setWakeUp(std::function<void()> wakeUp);
    [[nodiscard]] Instant now() const;
    /// Whether the clock stands still for outstanding work, see `Clock::isVirtual`.
    [[nodiscard]] bool isTimeVirtual() const;
    [[nodiscard]] FrameGrid frameGrid() const;

    /// Removes the wake-up and drops every block without running it, when a host ends or starts
    /// again.
    void reset();

private:
    void add(Instant deadline, Block block);
    [[nodiscard]] std::optional<Block> takeDue(Instant now, std::uint64_t bound);

    mutable std::mutex mutex_; // guards everything below
    // Keyed by deadline, then by the order of queueing, so that equal deadlines keep their order.
    std::map<std::pair<Instant, std::uint64_t>, Block> blocks_;
    std::uint64_t order_ = 0;
    int outstanding_ = 0;
    std::shared_ptr<const Clock> clock_ = std::make_shared<SystemClock>();
    FrameGrid frameGrid_;
    ReplaceableFunction<> wakeUp_; // has a lock of its own
};

} // namespace platform
