#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/ReplaceableFunction.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// The world that the players of one host live in: its main queue, and one of everything that
/// `part` is asked for (screen, notification centre, GL device, shared textures, …).
///
/// `MainQueue::main()`, `Screen::mainScreen()` and their like answer for the current environment.
/// A host makes its own current for the length of each of its calls, and so does an object of the
/// library when it is destroyed. Outside of any call the environment of the process is current. It
/// belongs to the first host; a further host that is alive at the same time gets a new one.
///
/// Owner:  hosts, and every object that was made in it.
/// Thread: main, except where a function says otherwise.
class ZANTO_EXPORT Environment final : public std::enable_shared_from_this<Environment> {
public:
    [[nodiscard]] static std::shared_ptr<Environment> create();
    ~Environment();
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    /// The environment of this thread's innermost scope, else the one of the process.
    ///
    /// Thread: any; thread-safe.
    [[nodiscard]] static Environment& current();

    /// The current environment if no host lives in it, else a new one. It is the caller's until
    /// `release`.
    [[nodiscard]] static std::shared_ptr<Environment> claim();
    /// The host ends: drops what is queued. An environment that is not the one of the process is
    /// cleared, too; the parts of the process's one are there for its next host.
    void release();
    /// Destroys the parts, the last one made first. Objects that live on find new parts.
    void clear();

    /// Thread: any; thread-safe.
    [[nodiscard]] MainQueue& queue() { return queue_; }

    /// The environment's one T, made when it is first asked for. Only the source file that defines
    /// an accessor such as `Screen::mainScreen()` may call this, because every shared library that
    /// calls it for a type has a part of its own.
    template <class T>
    [[nodiscard]] T& part() {
        static const std::size_t index = nextPartIndex();
        if (index >= parts_.size())
            parts_.resize(index + 1);
        if (!parts_[index]) {
            // Its constructor may ask for other parts.
            auto made = std::make_unique<Part<T>>();
            parts_[index] = std::move(made);
            order_.push_back(index);
        }
        return static_cast<Part<T>&>(*parts_[index]).value;
    }

    /// Runs whenever this environment becomes current in place of another one: the host's GL
    /// context has to become current, too. Empty: nothing.
    void setEntry(std::function<void()> entry) { entry_ = std::move(entry); }

    /// Receives the log lines of this environment in place of the process's sink; empty: none does.
    /// Lines of threads that work for no environment go to the sink of the process.
    void setLogSink(LogSink sink);
    /// Whether the line was received. Thread: any; thread-safe.
    [[nodiscard]] bool log(LogLevel level, std::string_view text);

    /// Makes an environment current on the main thread for as long as it lives.
    class ZANTO_EXPORT Scope {
    public:
        explicit Scope(Environment& environment);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        Environment* outer_;
        bool changes_;
    };

    /// The same on any other thread, where no GL context is.
    class ZANTO_EXPORT ThreadScope {
    public:
        explicit ThreadScope(Environment& environment);
        ~ThreadScope();
        ThreadScope(const ThreadScope&) = delete;
        ThreadScope& operator=(const ThreadScope&) = delete;

    private:
        Environment* outer_;
    };

private:
    struct AnyPart {
        virtual ~AnyPart() = default;
    };
    template <class T>
    struct Part final : AnyPart {
        T value{};
    };

    Environment();
    [[nodiscard]] static std::size_t nextPartIndex();
    void enter() const;

    MainQueue queue_;
    ReplaceableFunction<LogLevel, std::string_view> logSink_;
    std::atomic<bool> hasLogSink_ = false;
    bool isClaimed_ = false;
    std::function<void()> entry_;
    std::vector<std::unique_ptr<AnyPart>> parts_; // by the index of their type
    std::vector<std::size_t> order_;              // of making
};

} // namespace platform
