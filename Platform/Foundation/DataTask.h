#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Foundation/Transfer.h"

#include <functional>
#include <memory>
#include <optional>

namespace platform {

class URLSession;

/// The download of one address into memory.
///
/// Its completion is called exactly once, in a turn of its own, with the data or with an error. A
/// task that is cancelled completes too, with an error that says so: whoever began something on its
/// account, such as a bar that shows how far it is, hears of its end in one place. Whoever wants to
/// hear nothing, an object that has gone above all, is captured weakly.
///
/// Owner:  its session from `resume()` until it has ended; others keep it weakly. A task that is
///         dropped before it is resumed, and one whose session has gone, completes never.
/// Thread: main, completion and listener included.
class ZANTO_EXPORT DataTask final : public Object {
public:
    /// One of them: the data may be empty, the error's detail is the cause.
    using Completion = std::function<void(std::optional<Data> data, std::optional<Error> error)>;
    using ProgressListener = std::function<void(const TransferProgress& progress)>;

    /// For sessions.
    DataTask(std::weak_ptr<URLSession> session, URL url, Completion completion);
    ~DataTask() override;

    /// Starts it, once.
    void resume();
    /// Stops it at any moment, also before it is resumed; nothing once it has ended.
    void cancel();

    [[nodiscard]] const URL& originalURL() const { return url_; }
    [[nodiscard]] TransferProgress progress() const;
    /// Is told in turns of its own when bytes have come, at most once a turn, and of the last ones
    /// before the completion.
    void setProgressListener(ProgressListener listener);

private:
    friend class URLSession;
    struct Mailbox;

    void start(TransferService& service, const TransferLimits& limits);
    void readMailbox();
    void end(Result<Data> result);
    /// Drops what is under way and whoever waits for it.
    void abandon();

    std::weak_ptr<URLSession> session_;
    URL url_;
    Completion completion_; // empty once it has been called
    ProgressListener listener_;
    std::shared_ptr<Mailbox> mailbox_;
    std::unique_ptr<Transfer> transfer_;
    bool wasResumed_ = false;
    bool hasEnded_ = false; // nothing that comes later counts
};

} // namespace platform
