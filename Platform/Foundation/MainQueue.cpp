#include "Platform/Foundation/MainQueue.h"

#include "Platform/Foundation/Environment.h"
namespace platform {

MainQueue& MainQueue::main() {
    return Environment::current().queue();
}

/// Blocks may hold work, whose destructor calls the wake-up, so they are destroyed before any
/// member.
MainQueue::~MainQueue() {
    reset();
}

void MainQueue::async(Block block) {
    add(now(), std::move(block));
}

void MainQueue::asyncAfter(Instant delay, Block block) {
    const Instant from = now();
    add(delay > Instant::zero() ? from + delay : frameGrid().after(from), std::move(block));
}

void MainQueue::add(Instant deadline, Block block) {
    {
        const std::scoped_lock lock(mutex_);
        blocks_.emplace(std::pair(deadline, order_++), std::move(block));
    }
    wakeUp();
}

std::shared_ptr<MainQueue::Work> MainQueue::beginWork() {
    return std::make_shared<Work>(*this);
}

MainQueue::Work::Work(MainQueue& queue) : queue_(queue) {
    const std::scoped_lock lock(queue_.mutex_);
    ++queue_.outstanding_;
}

MainQueue::Work::~Work() {
    {
        const std::scoped_lock lock(queue_.mutex_);
        --queue_.outstanding_;
    }
    queue_.wakeUp();
}

int MainQueue::outstandingWork() const {
    const std::scoped_lock lock(mutex_);
    return outstanding_;
}

void MainQueue::runDue() {
    const Instant until = now();
    std::uint64_t bound = 0;
    {
        const std::scoped_lock lock(mutex_);
        bound = order_;
    }
    while (const auto block = takeDue(until, bound))
        (*block)();
}

std::optional<MainQueue::Block> MainQueue::takeDue(Instant now, std::uint64_t bound) {
    const std::scoped_lock lock(mutex_);
    const auto first = blocks_.begin();
    // A block that was queued in this call sorts after all blocks that are due, so the first one
    // decides.
    if (first == blocks_.end() || first->first.first > now || first->first.second >= bound)
        return std::nullopt;
    Block block = std::move(first->second);
    blocks_.erase(first);
    return block;
}

std::optional<Instant> MainQueue::nextDeadline() const {
    const std::scoped_lock lock(mutex_);
    if (blocks_.empty())
        return std::nullopt;
    return blocks_.begin()->first.first;
}

void MainQueue::setClock(std::shared_ptr<const Clock> clock) {
    const std::scoped_lock lock(mutex_);
    // Blocks that were queued with the earlier clock keep the rest of their delay, whatever the
    // zeros of the two clocks are.
    const Instant shift = clock->now() - clock_->now();
    decltype(blocks_) shifted;
    while (!blocks_.empty()) {
        auto block = blocks_.extract(blocks_.begin());
        block.key().first += shift;
        shifted.insert(std::move(block));
    }
    blocks_ = std::move(shifted);
    clock_ = std::move(clock);
}

void MainQueue::setFrameGrid(FrameGrid grid) {
    const std::scoped_lock lock(mutex_);
    frameGrid_ = grid;
}

void MainQueue::setWakeUp(std::function<void()> wakeUp) {
    wakeUp_.replace(std::move(wakeUp));
}

bool MainQueue::isTimeVirtual() const {
    const std::scoped_lock lock(mutex_);
    return clock_->isVirtual();
}

Instant MainQueue::now() const {
    const std::scoped_lock lock(mutex_);
    return clock_->now();
}

FrameGrid MainQueue::frameGrid() const {
    const std::scoped_lock lock(mutex_);
    return frameGrid_;
}

void MainQueue::wakeUp() {
    wakeUp_();
}

void MainQueue::reset() {
    setWakeUp(nullptr);
    // Destroyed outside of the lock, and repeatedly, because the destructor of an object that a
    // block owns may queue another block.
    decltype(blocks_) dropped;
    do {
        dropped.clear();
        const std::scoped_lock lock(mutex_);
        dropped.swap(blocks_);
    } while (!dropped.empty());
}

} // namespace platform
