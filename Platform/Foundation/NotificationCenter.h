#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

class Object;

/// A value that a notification carries beside its name.
using UserInfoValue = std::variant<bool, std::int64_t, double, std::string, Rect>;
using UserInfo = std::map<std::string, UserInfoValue>;

struct Notification {
    std::string name;
    UserInfo userInfo;
    /// The sender; null where it does not matter.
    const Object* object = nullptr;

    /// Returns the entry under `key` if it exists and has that type, else `fallback`.
    template <class T>
    [[nodiscard]] T value(const std::string& key, T fallback = {}) const {
        const auto entry = userInfo.find(key);
        const T* found = entry == userInfo.end() ? nullptr : std::get_if<T>(&entry->second);
        return found ? *found : fallback;
    }
};

/// Delivers notifications to the observers that are registered for their name, in the order of
/// registration.
///
/// Owner:  observers are held weakly; an observer that has been destroyed is skipped.
/// Thread: main. Handlers run inside `post`; they may add and remove observers.
class ZANTO_EXPORT NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    [[nodiscard]] static NotificationCenter& defaultCenter();

    /// An observer that registers twice for a name is called twice. `handler` runs only while the
    /// observer lives, so it may capture the observer by pointer. `fromObject`: the only sender to
    /// be observed; null for every sender.
    void addObserver(const std::shared_ptr<Object>& observer, std::string_view name,
                     Handler handler, const Object* fromObject = nullptr);

    /// Removes all registrations of the observer; safe to call from its destructor.
    void removeObserver(const Object* observer);

    void post(std::string_view name, UserInfo userInfo = {}, const Object* fromObject = nullptr);

private:
    struct Entry {
        std::uint64_t id;
        const Object* key; // can be compared even when `observer` can no longer be locked
        std::weak_ptr<Object> observer;
        std::string name;
        Handler handler;
        const Object* sender; // only compared, never dereferenced
    };
    void deliver(std::uint64_t id, const Notification& notification);

    std::vector<Entry> entries_;
    std::uint64_t nextId_ = 0;
};

} // namespace platform
