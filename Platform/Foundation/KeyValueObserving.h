#pragma once

#include "Platform/Foundation/Object.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Observes named properties of objects.
class KeyValueObserver {
public:
    virtual ~KeyValueObserver() = default;

    /// `keyPath` is the name of the property. The observer reads the new value from the object.
    virtual void observeValueForKeyPath(std::string_view keyPath, const Object& ofObject) = 0;
};

/// When an observer is notified: after each change; with `NewAndInitial` also inside the call that
/// registers it, for the initial value.
enum class ObservingOptions : unsigned { New = 1, NewAndInitial = 5 };

/// An object with named properties that can be observed.
///
/// Owner:  observers are held weakly; an observer that has been destroyed is skipped.
/// Thread: main. Observers are notified inside the call that changes the value; they may add and
///         remove observers.
class ObservableObject : public Object {
public:
    void addObserver(const std::shared_ptr<KeyValueObserver>& observer, std::string_view forKeyPath,
                     ObservingOptions options);
    /// No-op for an observer that is not registered; safe to call from the observer's destructor.
    void removeObserver(const KeyValueObserver* observer, std::string_view forKeyPath);

protected:
    /// Notifies the observers. Call it once the property has its new value.
    void didChangeValueForKey(std::string_view key);

private:
    struct Entry {
        const KeyValueObserver* key; // can be compared even when `observer` can no longer be locked
        std::weak_ptr<KeyValueObserver> observer;
        std::string keyPath;
    };
    std::vector<Entry> entries_;
};

} // namespace platform
