#include "Platform/Motion/AttitudeTracePlayer.h"

#include "Platform/Foundation/MainQueue.h"

#include <cstddef>
#include <utility>

namespace platform {

/// One run through the trace; queued blocks are no-ops once it is destroyed.
class AttitudeTracePlayer::Run : public std::enable_shared_from_this<Run> {
public:
    explicit Run(std::shared_ptr<const AttitudeTrace> trace) : trace_(std::move(trace)) {}

    void scheduleNext() {
        const auto& samples = trace_->samples();
        if (next_ == samples.size())
            return;
        auto& queue = MainQueue::main();
        const auto block = [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->publishDue();
        };
        // A delay of zero would make the queue wait for the next frame time.
        const Instant delay = start_ + samples[next_].at - queue.now();
        if (delay > Instant::zero())
            queue.asyncAfter(delay, block);
        else
            queue.async(block);
    }

private:
    void publishDue() {
        const auto& samples = trace_->samples();
        const Instant passed = MainQueue::main().now() - start_;
        const std::size_t before = next_;
        while (next_ < samples.size() && samples[next_].at <= passed)
            ++next_;
        if (next_ > before)
            AttitudeSource::shared().publish(samples[next_ - 1].attitude);
        scheduleNext();
    }

    std::shared_ptr<const AttitudeTrace> trace_;
    Instant start_ = MainQueue::main().now();
    std::size_t next_ = 0;
};

AttitudeTracePlayer::AttitudeTracePlayer(AttitudeTrace trace)
    : trace_(std::make_shared<const AttitudeTrace>(std::move(trace))) {}

AttitudeTracePlayer::~AttitudeTracePlayer() = default;

void AttitudeTracePlayer::start() {
    AttitudeSource::shared().setAvailable(true);
    run_ = std::make_shared<Run>(trace_);
    run_->scheduleNext();
}

} // namespace platform
