#include "Platform/Foundation/NotificationCenter.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Object.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace platform {
namespace {

/// Moves the matching entries out of the list. They are destroyed with the result, when the list is
/// consistent again: a handler may own an observer that removes itself in its destructor.
template <class Entries, class Predicate>
Entries takeOut(Entries& entries, Predicate matches) {
    const auto first =
        std::stable_partition(entries.begin(), entries.end(), std::not_fn(std::move(matches)));
    Entries taken(std::make_move_iterator(first), std::make_move_iterator(entries.end()));
    entries.erase(first, entries.end());
    return taken;
}

} // namespace

NotificationCenter& NotificationCenter::defaultCenter() {
    return Environment::current().part<NotificationCenter>();
}

void NotificationCenter::addObserver(const std::shared_ptr<Object>& observer, std::string_view name,
                                     Handler handler, const Object* fromObject) {
    entries_.push_back(
        {nextId_++, observer.get(), observer, std::string(name), std::move(handler), fromObject});
}

void NotificationCenter::removeObserver(const Object* observer) {
    takeOut(entries_, [&](const Entry& entry) { return entry.key == observer; });
}

void NotificationCenter::post(std::string_view name, UserInfo userInfo, const Object* fromObject) {
    takeOut(entries_, [](const Entry& entry) { return entry.observer.expired(); });
    const Notification notification{std::string(name), std::move(userInfo), fromObject};
    // By id, because a handler may add and remove entries during the iteration.
    std::vector<std::uint64_t> ids;
    for (const Entry& entry : entries_) {
        const bool isWanted = entry.sender == nullptr || entry.sender == fromObject;
        if (entry.name == name && isWanted)
            ids.push_back(entry.id);
    }
    for (const std::uint64_t id : ids)
        deliver(id, notification);
}

void NotificationCenter::deliver(std::uint64_t id, const Notification& notification) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& candidate) { return candidate.id == id; });
    if (entry == entries_.end())
        return;
    const auto alive = entry->observer.lock();
    if (!alive)
        return;
    const Handler handler = entry->handler;
    handler(notification);
}

} // namespace platform
