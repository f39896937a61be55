#include "Platform/Foundation/Environment.h"

namespace platform {
namespace {

thread_local Environment* entered = nullptr;

/// Never destroyed, because threads that end late may still post to its queue.
Environment& environmentOfProcess() {
    static const auto* const environment = new std::shared_ptr<Environment>(Environment::create());
    static const struct ReleaseAtExit {
        ~ReleaseAtExit() { (*environment)->runReleaseActions(); }
    } releaseAtExit;
    return **environment;
}

} // namespace

std::shared_ptr<Environment> Environment::create() {
    return std::shared_ptr<Environment>(new Environment);
}

Environment::Environment() = default;

Environment::~Environment() {
    const ThreadScope scope(*this);
    // The destructor of a part may access another part, even one that is gone already.
    while (!order_.empty()) {
        const auto last = std::move(parts_[order_.back()]);
        order_.pop_back();
    }
}

Environment& Environment::current() {
    return entered ? *entered : environmentOfProcess();
}

std::shared_ptr<Environment> Environment::claim() {
    auto environment = current().isClaimed_ ? create() : current().shared_from_this();
    environment->isClaimed_ = true;
    return environment;
}

void Environment::release() {
    isClaimed_ = false;
    entry_ = nullptr;
    setLogSink(nullptr);
    queue_.reset();
    if (this != &environmentOfProcess())
        runReleaseActions();
}

void Environment::atRelease(std::function<void()> action) {
    releaseActions_.push_back(std::move(action));
}

void Environment::runReleaseActions() {
    const ThreadScope scope(*this);
    for (const auto& action : std::exchange(releaseActions_, {}))
        action();
}

std::size_t Environment::nextPartIndex() {
    static std::atomic<std::size_t> next{0};
    return next++;
}

void Environment::enter() const {
    if (entry_)
        entry_();
}

void Environment::setLogSink(LogSink sink) {
    hasLogSink_ = sink != nullptr;
    logSink_.replace(std::move(sink));
}

bool Environment::log(LogLevel level, std::string_view text) {
    if (!hasLogSink_)
        return false;
    logSink_(level, text);
    return true;
}

Environment::Scope::Scope(Environment& environment)
    : outer_(entered), changes_(&environment != &current()) {
    entered = &environment;
    if (changes_)
        environment.enter();
}

Environment::Scope::~Scope() {
    entered = outer_;
    if (changes_)
        current().enter();
}

Environment::ThreadScope::ThreadScope(Environment& environment) : outer_(entered) {
    entered = &environment;
}

Environment::ThreadScope::~ThreadScope() {
    entered = outer_;
}

} // namespace platform
