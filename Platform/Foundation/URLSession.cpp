#include "Platform/Foundation/URLSession.h"

#include "Platform/Foundation/MainQueue.h"

#include <utility>

namespace platform {

const std::shared_ptr<URLSession>& URLSession::sharedSession() {
    static const std::shared_ptr<URLSession> session = make<URLSession>();
    return session;
}

URLSession::URLSession() {
    // At the end of the process the queue has to be there until the last transfer has gone.
    (void)MainQueue::main();
    service_ = makeTransferService();
}

URLSession::~URLSession() {
    for (const auto& task : running_)
        task->abandon();
}

std::shared_ptr<DataTask> URLSession::dataTaskWithURL(const URL& url,
                                                      DataTask::Completion completion) {
    return make<DataTask>(weak(this), url, std::move(completion));
}

void URLSession::run(const std::shared_ptr<DataTask>& task) {
    running_.insert(task);
    task->start(*service_, limits_);
}

} // namespace platform
