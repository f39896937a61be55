#include "Platform/Foundation/URLSession.h"

#include "Platform/Foundation/Environment.h"

#include <utility>

namespace platform {

const std::shared_ptr<URLSession>& URLSession::sharedSession() {
    Environment& environment = Environment::current();
    auto& session = environment.part<std::shared_ptr<URLSession>>();
    if (!session) {
        session = make<URLSession>();
        environment.atRelease([&session] { session.reset(); });
    }
    return session;
}

URLSession::URLSession() {
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
