#include "Backends/GStreamer/PipelineWorker.h"

#include "Platform/Foundation/Environment.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace platform {
namespace {

using SteadyClock = std::chrono::steady_clock;

/// Counts the workers that are finishing, so that process exit can wait for them.
class Endings {
public:
    static Endings& shared() {
        // Never destroyed: a thread that outlasts the wait still calls `end`.
        static auto* const endings = new Endings;
        struct WaitAtExit {
            ~WaitAtExit() { endings->wait(std::chrono::seconds(3)); }
        };
        static const WaitAtExit waitAtExit;
        return *endings;
    }

    void begin() {
        const std::scoped_lock lock(mutex_);
        ++count_;
    }
    void end() {
        const std::scoped_lock lock(mutex_);
        --count_;
        changed_.notify_all();
    }

private:
    void wait(std::chrono::seconds longest) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, longest, [this] { return count_ == 0; });
    }

    std::mutex mutex_; // guards count_
    std::condition_variable changed_;
    int count_ = 0;
};

} // namespace

struct PipelineWorker::State {
    std::mutex mutex; // guards everything below
    std::condition_variable changed;
    std::multimap<SteadyClock::time_point, Block> blocks;
    bool finishing = false;

    /// Blocks until the next block is due and returns it; nullopt after the last block.
    std::optional<Block> next() {
        std::unique_lock lock(mutex);
        for (;;) {
            if (blocks.empty() && finishing)
                return std::nullopt;
            if (blocks.empty())
                changed.wait(lock);
            else if (blocks.begin()->first > SteadyClock::now())
                changed.wait_until(lock, SteadyClock::time_point(blocks.begin()->first));
            else
                return std::move(blocks.extract(blocks.begin()).mapped());
        }
    }
};

PipelineWorker::PipelineWorker() : state_(std::make_shared<State>()) {
    Endings::shared();
    std::thread([state = state_, environment = Environment::current().shared_from_this()] {
        const Environment::ThreadScope scope(*environment);
        run(state);
    }).detach();
}

PipelineWorker::~PipelineWorker() {
    finish(nullptr);
}

void PipelineWorker::run(const std::shared_ptr<State>& state) {
    while (auto block = state->next())
        (*block)();
    Endings::shared().end();
}

void PipelineWorker::async(Block block) {
    asyncAfter({}, std::move(block));
}

void PipelineWorker::asyncAfter(std::chrono::nanoseconds delay, Block block) {
    const std::scoped_lock lock(state_->mutex);
    if (state_->finishing)
        return;
    state_->blocks.emplace(SteadyClock::now() + delay, std::move(block));
    state_->changed.notify_one();
}

void PipelineWorker::finish(Block last) {
    // Destroyed after the lock is released: a block may own the last reference to the object that
    // owns the worker.
    decltype(state_->blocks) dropped;
    const std::scoped_lock lock(state_->mutex);
    if (state_->finishing)
        return;
    Endings::shared().begin();
    state_->finishing = true;
    state_->blocks.swap(dropped);
    if (last)
        state_->blocks.emplace(SteadyClock::time_point(), std::move(last));
    state_->changed.notify_one();
}

} // namespace platform
