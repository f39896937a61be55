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

/// The main thread's work: blocks for the next turn, for the next frame instant, for later.
///
/// The library owns no loop. The host gives a clock and a wake-up, calls `runDue()` whenever it is
/// woken or `nextDeadline()` has come, and so decides when everything runs.
///
/// Thread: `async`, `asyncAfter`, `beginWork` and `wakeUp` any; the rest main.
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
    /// Thread: main. What posts from another thread keeps the queue of its environment.
    [[nodiscard]] static MainQueue& main();

    /// Runs the block in the next turn, never inside the call that queues it.
    void async(Block block);

    /// Runs the block once `delay` has passed. Zero or less: at the next frame instant, whether
    /// anything is to be drawn or not.
    void asyncAfter(Instant delay, Block block);

    /// Work under way elsewhere (a decode, an upload, a download) that a waiting host must not
    /// overtake: virtual time stands still while a token lives.
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

    /// Runs the blocks whose time has come, and of those queued for the next turn the ones that
    /// were there at the start of the call.
    void runDue();

    /// Calls the host's wake-up: something beside the queue wants a turn.
    void wakeUp();

    /// When `runDue()` has something to do next: now for waiting blocks, none for an empty queue.
    [[nodiscard]] std::optional<Instant> nextDeadline() const;

    /// Host set-up. The wake-up is called from the thread that queued something, outside any lock.
    /// Once it is replaced, or the queue reset, no thread is in the earlier one any more.
    void setClock(std::shared_ptr<const Clock> clock);
    void setFrameGrid(FrameGrid grid);
    void setWakeUp(std::function<void()> wakeUp);
    [[nodiscard]] Instant now() const;
    /// Whether the clock stands still for outstanding work, see `Clock::isVirtual`.
    [[nodiscard]] bool isTimeVirtual() const;
    [[nodiscard]] FrameGrid frameGrid() const;

    /// Drops every block without running it, for a host that ends and one that starts anew.
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
