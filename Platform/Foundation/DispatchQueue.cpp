#include "Platform/Foundation/DispatchQueue.h"

#include "Platform/Foundation/Environment.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace platform {

/// The thread and its blocks. The first block starts the thread.
struct DispatchQueue::Worker {
    std::mutex mutex; // guards blocks and stopping
    std::condition_variable changed;
    std::deque<Block> blocks;
    bool stopping = false;
    std::thread thread;

    void run() {
        for (;;) {
            Block block;
            {
                std::unique_lock lock(mutex);
                changed.wait(lock, [this] { return stopping || !blocks.empty(); });
                if (stopping)
                    return;
                block = std::move(blocks.front());
                blocks.pop_front();
            }
            block();
        }
    }
};

DispatchQueue& DispatchQueue::background() {
    Environment& environment = Environment::current();
    auto& queue = environment.part<DispatchQueue>();
    if (!std::exchange(queue.stopsAtRelease_, true))
        environment.atRelease([&queue] { queue.stop(); });
    return queue;
}

DispatchQueue::DispatchQueue() : worker_(std::make_unique<Worker>()) {}

DispatchQueue::~DispatchQueue() {
    stop();
}

void DispatchQueue::stop() {
    std::deque<Block> dropped;
    {
        const std::scoped_lock lock(worker_->mutex);
        worker_->stopping = true;
        dropped.swap(worker_->blocks);
    }
    worker_->changed.notify_one();
    if (worker_->thread.joinable())
        worker_->thread.join();
    const std::scoped_lock lock(worker_->mutex);
    worker_->stopping = false;
}

void DispatchQueue::sync(std::string_view /*label*/, const Block& block) {
    block();
}

void DispatchQueue::async(Block block) {
    auto inEnvironment = [environment = &Environment::current(), block = std::move(block)] {
        const Environment::ThreadScope scope(*environment);
        block();
    };
    {
        const std::scoped_lock lock(worker_->mutex);
        worker_->blocks.emplace_back(std::move(inEnvironment));
        if (!worker_->thread.joinable())
            worker_->thread = std::thread([worker = worker_.get()] { worker->run(); });
    }
    worker_->changed.notify_one();
}

} // namespace platform
