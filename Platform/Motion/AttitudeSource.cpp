#include "Platform/Motion/AttitudeSource.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"

#include <cmath>
#include <utility>

namespace platform {

namespace {

/// Whether it can be normalised in single precision without loss; false for NaN.
bool isRotation(const Attitude& q) {
    const double length = std::hypot(std::hypot(q.x, q.y), std::hypot(q.z, q.w));
    return length >= 0.01 && length <= 100;
}

/// A handler, and whether a call of it is queued in the main queue.
class Listener : public std::enable_shared_from_this<Listener> {
public:
    explicit Listener(std::function<void()> handler) : handler_(std::move(handler)) {}

    void cancel() { cancelled_ = true; }

    void callInNextTurn() {
        if (!waiting_.expired())
            return;
        const auto call = std::make_shared<const Call>(Call{weak_from_this()});
        waiting_ = call;
        MainQueue::main().async([call] {
            if (const auto listener = call->listener.lock())
                listener->call();
        });
    }

private:
    // Owned by the queued block alone. When the queue drops its blocks, no listener keeps waiting
    // for a call that never comes.
    struct Call {
        std::weak_ptr<Listener> listener;
    };

    void call() {
        waiting_.reset();
        if (!cancelled_ && AttitudeSource::shared().hasNews())
            handler_();
    }

    std::function<void()> handler_;
    std::weak_ptr<const Call> waiting_;
    bool cancelled_ = false;
};

} // namespace

class AttitudeSource::Subscription {
public:
    Subscription(AttitudeSource& source, std::function<void()> handler)
        : source_(source), listener_(std::make_shared<Listener>(std::move(handler))) {}
    ~Subscription() {
        listener_->cancel();
        source_.remove(*this);
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    void callInNextTurn() { listener_->callInNextTurn(); }

private:
    AttitudeSource& source_;
    // Separate from the token, so that a handler that releases its token still exists when it
    // returns.
    std::shared_ptr<Listener> listener_;
};

AttitudeSource& AttitudeSource::shared() {
    return Environment::current().part<AttitudeSource>();
}

void AttitudeSource::setAvailable(bool available) {
    const bool goesAway = available_ && !available;
    available_ = available;
    hasGone_ = goesAway || (hasGone_ && !available);
    if (goesAway)
        tellListeners();
}

void AttitudeSource::publish(const Attitude& attitude) {
    if (!isRotation(attitude)) {
        if (!std::exchange(hasRefused_, true))
            log(LogLevel::Warning, "attitude: the sample is ignored, it is not a rotation");
        return;
    }
    hasRefused_ = false;
    latest_ = attitude;
    available_ = true;
    hasGone_ = false;
    tellListeners();
}

void AttitudeSource::tellListeners() {
    for (Subscription* subscription : subscriptions_)
        subscription->callInNextTurn();
}

std::shared_ptr<AttitudeSource::Subscription>
AttitudeSource::subscribe(std::function<void()> handler) {
    auto subscription = std::make_shared<Subscription>(*this, std::move(handler));
    subscriptions_.push_back(subscription.get());
    if (available_ && latest_)
        subscription->callInNextTurn();
    if (subscriptions_.size() == 1)
        tellDemand();
    return subscription;
}

void AttitudeSource::remove(const Subscription& subscription) {
    std::erase(subscriptions_, &subscription);
    if (subscriptions_.empty())
        tellDemand();
}

void AttitudeSource::setDemandListener(std::function<void(bool)> listener) {
    demandListener_ = std::move(listener);
    tellDemand();
}

void AttitudeSource::tellDemand() {
    // A copy, because the listener may replace or remove itself.
    if (const auto listener = demandListener_)
        listener(isWanted());
}

void AttitudeSource::reset() {
    available_ = false;
    hasGone_ = false;
    hasRefused_ = false;
    latest_.reset();
    demandListener_ = nullptr;
}

} // namespace platform
