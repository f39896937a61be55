#pragma once

#include "Platform/Foundation/DataTask.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Transfer.h"

#include <memory>
#include <set>

namespace platform {

/// Downloads, over http and https and from files.
///
/// Its callback queue is the main queue: everything is heard between turns of the loop, one after
/// the other, and virtual time stands still while a download is under way. A server's status is
/// not looked at: what comes is the data. Nothing is kept and nothing is tried again.
///
/// ```cpp
/// auto task = platform::URLSession::sharedSession()->dataTaskWithURL(
///     url, [](std::optional<platform::Data> data, std::optional<platform::Error> error) { … });
/// task->resume();
/// ```
///
/// Owner:  whoever made it; the end of a session stops its tasks, and they complete never.
/// Thread: main; the work is done elsewhere, and no call waits for it.
class ZANTO_EXPORT URLSession final : public Object {
public:
    /// The session of the current environment, ended with it.
    [[nodiscard]] static const std::shared_ptr<URLSession>& sharedSession();

    URLSession();
    ~URLSession() override;

    /// A task that has not started. Errors of its completion: see `TransferService`; and Unreadable
    /// for a task that was cancelled.
    [[nodiscard]] std::shared_ptr<DataTask> dataTaskWithURL(const URL& url,
                                                            DataTask::Completion completion);

    /// Of the tasks that are resumed from now on.
    void setLimits(TransferLimits limits) { limits_ = std::move(limits); }
    [[nodiscard]] const TransferLimits& limits() const { return limits_; }

private:
    friend class DataTask;
    void run(const std::shared_ptr<DataTask>& task);
    void forget(const std::shared_ptr<DataTask>& task) { running_.erase(task); }

    TransferLimits limits_;
    std::unique_ptr<TransferService> service_;
    std::set<std::shared_ptr<DataTask>> running_; // their transfers go before the service
};

} // namespace platform
