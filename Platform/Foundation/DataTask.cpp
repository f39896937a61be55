#include "Platform/Foundation/DataTask.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/URLSession.h"

#include <mutex>
#include <utility>

namespace platform {

/// What the transfer's thread leaves for the main thread. Bytes arrive far more often than loop
/// iterations.
struct DataTask::Mailbox {
    std::mutex mutex; // guards everything below
    TransferProgress latest;
    bool isListenedTo = false;
    bool isTurnQueued = false;

    /// Returns whether a loop iteration has to be queued for it.
    [[nodiscard]] bool put(const TransferProgress& progress) {
        const std::scoped_lock lock(mutex);
        latest = progress;
        return isListenedTo && !std::exchange(isTurnQueued, true);
    }
};

DataTask::DataTask(std::weak_ptr<URLSession> session, URL url, Completion completion)
    : session_(std::move(session)), url_(std::move(url)), completion_(std::move(completion)),
      mailbox_(std::make_shared<Mailbox>()) {}

DataTask::~DataTask() = default;

void DataTask::resume() {
    if (std::exchange(wasResumed_, true) || hasEnded_)
        return;
    if (const auto session = session_.lock())
        session->run(shared(this));
}

void DataTask::start(TransferService& service, const TransferLimits& limits) {
    TransferRequest request{.url = url_, .limits = limits};
    request.progressed = [task = weak(this), mailbox = mailbox_,
                          environment = environment()](const TransferProgress& progress) {
        if (!mailbox->put(progress))
            return;
        environment->queue().async([task] {
            if (const auto self = task.lock())
                self->readMailbox();
        });
    };
    request.ended = [task = weak(this), environment = environment(),
                     work = environment()->queue().beginWork()](Result<Data> result) {
        // Shared, because a `std::function` must be copyable and the data should not be copied.
        auto kept = std::make_shared<Result<Data>>(std::move(result));
        environment->queue().async([task, work, kept] {
            const auto self = task.lock();
            if (self && !self->hasEnded_)
                self->end(std::move(*kept));
        });
    };
    transfer_ = service.start(std::move(request));
}

void DataTask::readMailbox() {
    TransferProgress latest;
    {
        const std::scoped_lock lock(mailbox_->mutex);
        mailbox_->isTurnQueued = false;
        latest = mailbox_->latest;
    }
    if (hasEnded_ || !listener_)
        return;
    // A copy, because the listener may set another one.
    const ProgressListener listener = listener_;
    listener(latest);
}

void DataTask::cancel() {
    if (hasEnded_)
        return;
    hasEnded_ = true;
    transfer_.reset();
    const auto self = shared(this);
    if (const auto session = session_.lock())
        session->forget(self);
    MainQueue& queue = environment()->queue();
    queue.async([self, work = queue.beginWork()] {
        self->end(Error{ErrorCode::Unreadable, "the download was cancelled"});
    });
}

void DataTask::end(Result<Data> result) {
    hasEnded_ = true;
    transfer_.reset();
    listener_ = nullptr;
    // The session forgets the task first: the completion may release the session, or start a task.
    const auto self = shared(this);
    if (const auto session = session_.lock())
        session->forget(self);
    const Completion completion = std::exchange(completion_, nullptr);
    if (!completion)
        return;
    if (result)
        completion(std::move(result).value(), std::nullopt);
    else
        completion(std::nullopt, result.error());
}

void DataTask::abandon() {
    hasEnded_ = true;
    transfer_.reset();
    listener_ = nullptr;
    completion_ = nullptr;
}

TransferProgress DataTask::progress() const {
    const std::scoped_lock lock(mailbox_->mutex);
    return mailbox_->latest;
}

void DataTask::setProgressListener(ProgressListener listener) {
    listener_ = std::move(listener);
    const std::scoped_lock lock(mailbox_->mutex);
    mailbox_->isListenedTo = listener_ != nullptr;
}

} // namespace platform
