#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/ReplaceableFunction.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// What the players of one host share: the main queue, and one object of each type that `part` is
/// called with (screen, notification centre, GL device, shared textures, …).
///
/// `MainQueue::main()`, `Screen::mainScreen()` and similar accessors use the current environment. A
/// host makes its environment current for the duration of each of its calls, and so does an object
/// of the library for its destructor. Outside of such calls the environment of the process is
/// current. It belongs to the first host; a further host that is alive at the same time gets a new
/// one.
///
/// Owner:  the host, and every object that was created in the environment.
/// Thread: main, except where a function says otherwise.
class ZANTO_EXPORT Environment final : public std::enable_shared_from_this<Environment> {
public:
    [[nodiscard]] static std::shared_ptr<Environment> create();
    ~Environment();
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    /// The environment of the innermost scope on this thread, else the environment of the process.
    ///
    /// Thread: any; thread-safe.
    [[nodiscard]] static Environment& current();

    /// Returns the current environment if no host has claimed it, else a new one. It stays claimed
    /// until `release`.
    [[nodiscard]] static std::shared_ptr<Environment> claim();
    /// Called when the host ends: drops the queued blocks and runs what was given to `atRelease`.
    /// The parts stay, because objects that outlive the host refer to them.
    void release();
    /// Adds an action that `release` runs once. The environment of the process, which has another
    /// host later, runs it when the process exits. For parts that own objects, because an object
    /// keeps its environment alive, and for parts that own a thread.
    void atRelease(std::function<void()> action);
    /// Runs these actions now.
    void runReleaseActions();

    /// Thread: any; thread-safe.
    [[nodiscard]] MainQueue& queue() { return queue_; }

    /// The environment's only T, which is created by the first call. Only the source file that
    /// defines an accessor such as `Screen::mainScreen()` may call this, because every shared
    /// library that calls it for a type gets a part of its own.
    template <class T>
    [[nodiscard]] T& part() {
        static const std::size_t index = nextPartIndex();
        auto& part = parts_.at(index);
        if (!part) {
            part = std::make_unique<Part<T>>(); // its constructor may access other parts
            order_.push_back(index);
        }
        return static_cast<Part<T>&>(*part).value;
    }

    /// The entry is called whenever this environment becomes current in place of another one,
    /// because the host's GL context has to become current too. It may be empty.
    void setEntry(std::function<void()> entry) { entry_ = std::move(entry); }

    /// The sink receives the log lines of this environment in place of the process's sink; an empty
    /// function removes it. Lines from threads that work for no environment go to the process's
    /// sink.
    void setLogSink(LogSink sink);
    /// Returns whether this environment has a sink, which has received the line then.
    ///
    /// Thread: any; thread-safe.
    [[nodiscard]] bool log(LogLevel level, std::string_view text);

    /// Makes an environment current on the main thread while the scope lives.
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

    /// Makes an environment current on another thread, which has no GL context.
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
    std::vector<std::function<void()>> releaseActions_;
    /// By the index of their type. The array never moves, so another thread may use a part while
    /// the main thread creates one.
    std::array<std::unique_ptr<AnyPart>, 64> parts_;
    std::vector<std::size_t> order_; // in which the parts were created
};

} // namespace platform
