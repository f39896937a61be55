#include "Platform/Media/AudioSession.h"

#include "Platform/Foundation/Environment.h"

#include <utility>

namespace platform {

AudioSession& AudioSession::sharedInstance() {
    return Environment::current().part<AudioSession>();
}

std::optional<Error> AudioSession::setCategory(std::string_view category) {
    if (arbiter_) {
        if (auto refusal = arbiter_->setCategory(category))
            return refusal;
    }
    category_ = category;
    return std::nullopt;
}

std::optional<Error> AudioSession::setActive(bool active, ActiveOptions options) {
    if (arbiter_) {
        const bool notifyOthers = options == ActiveOptions::NotifyOthersOnDeactivation;
        if (auto refusal = arbiter_->setActive(active, notifyOthers))
            return refusal;
    }
    isActive_ = active;
    return std::nullopt;
}

void AudioSession::setArbiter(std::shared_ptr<AudioArbiter> arbiter) {
    arbiter_ = std::move(arbiter);
}

} // namespace platform
