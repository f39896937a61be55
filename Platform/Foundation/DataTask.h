#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Transfer.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

class URLSession;

/// Downloads one address into memory.
///
/// The completion is called exactly once, in a loop iteration of its own, with the data or with an
/// error. A cancelled task completes too, with an error that says so. Thus a caller can end
/// whatever it began for the download, such as a progress bar, in one place. A completion can
/// outlive its caller, so it captures objects weakly.
///
/// Owner:  the session, from `resume()` until the task has ended; others hold the task weakly. The
///         completion is never called if the task is released before `resume()` or if its session
///         is destroyed.
/// Thread: main, including completion and listener.
class ZANTO_EXPORT DataTask final : public Object {
public:
    /// Exactly one of the two is set. The data may be empty; the error's detail is the cause.
    using Completion = std::function<void(std::optional<Data> data, std::optional<Error> error)>;
    using ProgressListener = std::function<void(const TransferProgress& progress)>;

    /// For `URLSession`, which creates the tasks.
    DataTask(std::weak_ptr<URLSession> session, URL url, Completion completion);
    ~DataTask() override;

    /// Starts the download. Later calls are no-ops.
    void resume();
    /// Cancels the task, also before `resume()`. No-op once the task has ended.
    void cancel();

    [[nodiscard]] const URL& originalURL() const { return url_; }
    [[nodiscard]] TransferProgress progress() const;
    /// The listener is called in loop iterations of its own when bytes have arrived, at most once
    /// per iteration, and for the last bytes before the completion.
    void setProgressListener(ProgressListener listener);

private:
    friend class URLSession;
    struct Mailbox;

    void start(TransferService& service, const TransferLimits& limits);
    void readMailbox();
    void end(Result<Data> result);
    /// Ends the task and drops its completion and its listener.
    void abandon();

    std::weak_ptr<URLSession> session_;
    URL url_;
    Completion completion_; // empty once it has been called
    ProgressListener listener_;
    std::shared_ptr<Mailbox> mailbox_;
    std::unique_ptr<Transfer> transfer_;
    bool wasResumed_ = false;
    bool hasEnded_ = false; // later events are ignored
};

} // namespace platform
