#include "Platform/Foundation/KeyValueObserving.h"

#include <algorithm>

namespace platform {

void ObservableObject::addObserver(const std::shared_ptr<KeyValueObserver>& observer,
                                   std::string_view forKeyPath, ObservingOptions options) {
    entries_.push_back({observer.get(), observer, std::string(forKeyPath)});
    if (options == ObservingOptions::NewAndInitial)
        observer->observeValueForKeyPath(forKeyPath, *this);
}

void ObservableObject::removeObserver(const KeyValueObserver* observer,
                                      std::string_view forKeyPath) {
    std::erase_if(entries_, [&](const Entry& entry) {
        return entry.key == observer && entry.keyPath == forKeyPath;
    });
}

void ObservableObject::didChangeValueForKey(std::string_view key) {
    // An observer may release the last reference to this object, and change the list.
    const auto self = shared_from_this();
    const auto entries = entries_;
    for (const Entry& entry : entries) {
        const auto stillThere = [&](const Entry& other) {
            return other.key == entry.key && other.keyPath == entry.keyPath;
        };
        if (entry.keyPath != key || std::ranges::none_of(entries_, stillThere))
            continue;
        if (const auto observer = entry.observer.lock())
            observer->observeValueForKeyPath(key, *this);
    }
}

} // namespace platform
