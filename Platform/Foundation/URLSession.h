#pragma once

#include "Platform/Foundation/DataTask.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Transfer.h"

#include <memory>
#include <set>

namespace platform {

/// Downloads over http and https, and from files.
///
/// All callbacks run on the main queue, each in a loop iteration of its own, and virtual time
/// stands still while a download is in progress. A server's status is not checked: the body is the
/// data whatever the status is. Nothing is cached and nothing is retried.
///
/// ```cpp
/// auto task = platform::URLSession::sharedSession()->dataTaskWithURL(
///     url, [](std::optional<platform::Data> data, std::optional<platform::Error> error) { … });
/// task->resume();
/// ```
///
/// Owner:  its creator. The destructor stops the session's tasks, whose completions then never run.
/// Thread: main. Other threads do the work, and no call waits for it.
class ZANTO_EXPORT URLSession final : public Object {
public:
    /// The session of the current environment, which owns it.
    [[nodiscard]] static const std::shared_ptr<URLSession>& sharedSession();

    URLSession();
    ~URLSession() override;

    /// Creates a task that has not started. Errors of its completion: those of `TransferService`,
    /// and Unreadable for a task that was cancelled.
    [[nodiscard]] std::shared_ptr<DataTask> dataTaskWithURL(const URL& url,
                                                            DataTask::Completion completion);

    /// Applies to the tasks that are resumed from now on.
    void setLimits(TransferLimits limits) { limits_ = std::move(limits); }
    [[nodiscard]] const TransferLimits& limits() const { return limits_; }

private:
    friend class DataTask;
    void run(const std::shared_ptr<DataTask>& task);
    void forget(const std::shared_ptr<DataTask>& task) { running_.erase(task); }

    TransferLimits limits_;
    std::unique_ptr<TransferService> service_;
    std::set<std::shared_ptr<DataTask>>
        running_; // declared last: their transfers are destroyed before the service
};

} // namespace platform
