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

/// What a notification carries beside its name.
using UserInfoValue = std::variant<bool, std::int64_t, double, std::string, Rect>;
using UserInfo = std::map<std::string, UserInfoValue>;

struct Notification {
    std::string name;
    UserInfo userInfo;
    /// Who posted it; null where that does not matter.
    const Object* object = nullptr;

    /// The entry under `key` if it is there and of that type, else `fallback`.
    template <class T>
    [[nodiscard]] T value(const std::string& key, T fallback = {}) const {
        const auto entry = userInfo.find(key);
        const T* found = entry == userInfo.end() ? nullptr : std::get_if<T>(&entry->second);
        return found ? *found : fallback;
    }
};

/// Hands notifications to whoever has asked for their name, in the order of asking.
///
/// Owner:  observers are held weakly; one that has gone receives nothing.
/// Thread: main. Handlers run inside `post`; they may add and remove observers.
class ZANTO_EXPORT NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    [[nodiscard]] static NotificationCenter& defaultCenter();

    /// An observer that asks twice for a name is told twice. `handler` runs only while the observer
    /// lives, so it may capture it by pointer. `fromObject`: null for notifications of any sender.
    void addObserver(const std::shared_ptr<Object>& observer, std::string_view name,
                     Handler handler, const Object* fromObject = nullptr);

    /// Forgets everything that the observer asked for; safe from its destructor.
    void removeObserver(const Object* observer);

    void post(std::string_view name, UserInfo userInfo = {}, const Object* fromObject = nullptr);

private:
    struct Entry {
        std::uint64_t id;
        const Object* key; // still comparable when `observer` can no longer be locked
        std::weak_ptr<Object> observer;
        std::string name;
        Handler handler;
        const Object* sender; // only compared
    };
    void deliver(std::uint64_t id, const Notification& notification);

    std::vector<Entry> entries_;
    std::uint64_t nextId_ = 0;
};

} // namespace platform
