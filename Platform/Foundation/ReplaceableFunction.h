#pragma once

#include "Platform/Foundation/Export.h"

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace platform {

/// An address that identifies the calling thread among the threads that run.
///
/// Thread: any; thread-safe.
[[nodiscard]] ZANTO_EXPORT const void* currentThreadMark();

/// A function that any thread may call while another thread replaces it.
///
/// Once `replace` has returned, the earlier function runs on no other thread, now or later, so what
/// it refers to may be destroyed. The function is called without a lock.
///
/// Thread: any; thread-safe. A function may replace itself, and several threads may run it at the
///         same time. The caller of `replace` must not hold a lock that the earlier function
///         acquires, because that is a deadlock.
template <class... Arguments>
class ReplaceableFunction {
public:
    using Function = std::function<void(Arguments...)>;

    explicit ReplaceableFunction(Function function = {})
        : entry_(std::make_shared<Entry>(std::move(function))) {}

    void operator()(Arguments... arguments) {
        const Call call(*this);
        if (call.entry->function)
            call.entry->function(arguments...);
    }

    /// Returns the earlier function, once no other thread runs it.
    Function replace(Function function) {
        auto entry = std::make_shared<Entry>(std::move(function));
        std::unique_lock lock(mutex_);
        entry_.swap(entry);
        ended_.wait(lock, [&entry] {
            return std::all_of(entry->callers.begin(), entry->callers.end(),
                               [](const void* caller) { return caller == currentThreadMark(); });
        });
        return entry->function;
    }

private:
    struct Entry {
        explicit Entry(Function called) : function(std::move(called)) {}
        const Function function;
        std::vector<const void*> callers; // guarded by mutex_
    };

    /// Keeps the entry alive during the call, even if the function replaces itself.
    struct Call {
        explicit Call(ReplaceableFunction& of) : owner(of) {
            const std::scoped_lock lock(owner.mutex_);
            entry = owner.entry_;
            entry->callers.push_back(currentThreadMark());
        }
        ~Call() {
            std::shared_ptr<Entry>
                last; // destroyed after the unlock: its destructor may call this again
            const std::scoped_lock lock(owner.mutex_);
            auto& callers = entry->callers;
            callers.erase(std::find(callers.begin(), callers.end(), currentThreadMark()));
            // A thread that waits in `replace` destroys the function, never the thread of the call.
            if (entry.use_count() == 1)
                last.swap(entry);
            entry.reset();
            owner.ended_.notify_all();
        }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

        ReplaceableFunction& owner;
        std::shared_ptr<Entry> entry;
    };

    std::mutex mutex_; // guards entry_ and its callers
    std::condition_variable ended_;
    std::shared_ptr<Entry> entry_;
};

} // namespace platform
