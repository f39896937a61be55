#pragma once

#include "Platform/Foundation/Object.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Is told when a named property of an object changes.
class KeyValueObserver {
public:
    virtual ~KeyValueObserver() = default;

    /// `keyPath`: the property's name. Ask the object for the new value.
    virtual void observeValueForKeyPath(std::string_view keyPath, const Object& ofObject) = 0;
};

/// When an observer is told: after each change, and, with the initial value, also in the call that
/// registers it.
enum class ObservingOptions : unsigned { New = 1, NewAndInitial = 5 };

/// An object whose named properties can be watched.
///
/// Owner:  observers are held weakly; one that has gone is told nothing.
/// Thread: main. Observers are told inside the turn in which the value changes; they may add and
///         remove observers.
class ObservableObject : public Object {
public:
    void addObserver(const std::shared_ptr<KeyValueObserver>& observer, std::string_view forKeyPath,
                     ObservingOptions options);
    /// Nothing for one that does not observe; safe from the observer's destructor.
    void removeObserver(const KeyValueObserver* observer, std::string_view forKeyPath);

protected:
    /// To be called once the property has its new value.
    void didChangeValueForKey(std::string_view key);

private:
    struct Entry {
        const KeyValueObserver* key; // still comparable when `observer` can no longer be locked
        std::weak_ptr<KeyValueObserver> observer;
        std::string keyPath;
    };
    std::vector<Entry> entries_;
};

} // namespace platform
